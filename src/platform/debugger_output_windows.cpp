#include <windows.h>

#include "platform/debugger_output.h"

namespace wex::platform {

void WriteToPlatformDebugger(const char* text) {
    OutputDebugStringA(text);
}

}  // namespace wex::platform
