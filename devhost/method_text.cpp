#include "method_text.h"

#include <iterator>
#include <string_view>

namespace tav::host {

namespace {

constexpr const char* kMethods[] = {"ANY", "DELETE", "GET", "HEAD", "OPTIONS", "PATCH", "POST", "PUT"};

}  // namespace

const char* MethodText(std::uint32_t method) {
    return method < std::size(kMethods) ? kMethods[method] : "";
}

std::uint32_t MethodCode(std::string_view text) {
    for (std::uint32_t code = 1; code < std::size(kMethods); ++code) {
        if (text == kMethods[code]) {
            return code;
        }
    }
    return kOtherMethod;
}

}  // namespace tav::host
