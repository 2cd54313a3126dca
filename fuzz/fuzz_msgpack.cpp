// ReadMessagePack on any bytes, and WriteJson of every value it accepts.
#include <cstddef>
#include <cstdint>
#include <string>

#include "codec/json_writer.h"
#include "codec/msgpack_reader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const wex::MessagePackResult result = wex::ReadMessagePack(data, size);
    if (result.consumed > size) {
        __builtin_trap();
    }
    if (result.value.IsValid()) {
        const std::string text = wex::WriteJson(result.value);
        (void)text;
    }
    return 0;
}
