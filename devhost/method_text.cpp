#include "method_text.h"

#include <iterator>

namespace tav::host {

const char* MethodText(std::uint32_t method) {
    static const char* const kMethods[] = {"ANY", "DELETE", "GET", "HEAD", "OPTIONS", "PATCH", "POST", "PUT"};
    return method < std::size(kMethods) ? kMethods[method] : "";
}

}  // namespace tav::host
