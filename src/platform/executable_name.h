#pragma once

#include <string>

namespace wex::platform {

// The file name of the running process's executable, as the log shows it: the
// full path on Windows (the log keeps what follows the last backslash), the
// base name elsewhere. Empty when it cannot be read.
std::string ExecutableName();

}  // namespace wex::platform
