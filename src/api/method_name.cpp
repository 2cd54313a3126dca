#include "api/method_name.h"

#include <array>

namespace wex {

std::string_view MethodName(std::uint32_t code) {
    static constexpr std::array<std::string_view, 8> kNames = {"",        "DELETE", "GET",  "HEAD",
                                                               "OPTIONS", "PATCH",  "POST", "PUT"};
    return code < kNames.size() ? kNames[code] : std::string_view();
}

}  // namespace wex
