#include <unistd.h>

#include <array>
#include <string_view>

#include "platform/executable_name.h"

namespace wex::platform {

std::string ExecutableName() {
    std::array<char, 4096> path;
    ssize_t length = readlink("/proc/self/exe", path.data(), path.size());
    if (length <= 0 || static_cast<std::size_t>(length) >= path.size()) {
        return {};
    }
    std::string_view full(path.data(), static_cast<std::size_t>(length));
    std::size_t slash = full.rfind('/');
    return std::string(slash == std::string_view::npos ? full : full.substr(slash + 1));
}

}  // namespace wex::platform
