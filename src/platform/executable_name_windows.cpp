#include <windows.h>

#include <array>

#include "platform/executable_name.h"

namespace wex::platform {

std::string ExecutableName() {
    std::array<char, MAX_PATH + 1> path;
    DWORD length = GetModuleFileNameA(nullptr, path.data(), static_cast<DWORD>(path.size()));
    // A path that fills the buffer has been cut.
    if (length == 0 || length >= path.size()) {
        return {};
    }
    return std::string(path.data(), length);
}

}  // namespace wex::platform
