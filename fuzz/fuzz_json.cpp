// ParseJson on any bytes (as a zero-terminated text), and WriteJson of every
// value it accepts, whose output must read back.
#include <cstddef>
#include <cstdint>
#include <string>

#include "codec/json_reader.h"
#include "codec/json_writer.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const wex::BindingProperty value = wex::ParseJson(text.c_str());
    if (!value.IsValid()) {
        return 0;
    }
    const std::string compact = wex::WriteJson(value);
    if (!wex::ParseJson(compact).IsValid() || !wex::ParseJson(wex::WriteJson(value, nullptr, "\r\n")).IsValid()) {
        __builtin_trap();
    }
    return 0;
}
