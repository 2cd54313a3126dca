#include "diagnostics/log_level.h"

namespace wex {

const char* LogLevelName(LogLevel level) {
    switch (level) {
        case LogLevel::Okay:
            return "  OKAY";
        case LogLevel::Warn:
            return "  WARN";
        case LogLevel::Error:
            return " ERROR";
        case LogLevel::Always:
            return "ALWAYS";
    }
    return "??????";
}

}  // namespace wex
