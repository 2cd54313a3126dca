#include "plugin/plugin_log_target.h"

#include <mutex>

#include "diagnostics/line_pattern.h"

namespace wex {

bool PluginLogTarget::Write(const LogRecord& record) {
    char line[4096];
    {
        std::lock_guard<std::recursive_mutex> lock(Mutex());
        FormatLine(Pattern(record), record, line, sizeof line);
    }
    api_->Log(api_, static_cast<std::int32_t>(record.level), line);
    return true;
}

}  // namespace wex
