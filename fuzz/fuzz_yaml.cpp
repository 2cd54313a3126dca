// ReadYaml on any bytes, and WriteJson of every value it accepts.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "codec/json_writer.h"
#include "codec/yaml_reader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const wex::BindingProperty value = wex::ReadYaml(std::string_view(reinterpret_cast<const char*>(data), size));
    if (value.IsValid()) {
        const std::string text = wex::WriteJson(value);
        (void)text;
    }
    return 0;
}
