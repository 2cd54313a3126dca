#include "platform/debugger_output.h"

namespace wex::platform {

// There is no debugger output channel on POSIX systems; without a sink the text is dropped.
void WriteToPlatformDebugger(const char*) {}

}  // namespace wex::platform
