#include "leagues/league_log.h"

#include <string>

#include "diagnostics/log_system.h"

namespace Orvel::Client::Leagues {

void LogLeagueError(std::string_view text) {
    const std::string line(text);
    wex::LogMessage(wex::LogLevel::Error, wex::LogCategory::Dbg, "%s", line.c_str());
}

void LogLeagueWarning(std::string_view text) {
    const std::string line(text);
    wex::LogMessage(wex::LogLevel::Warn, wex::LogCategory::Dbg, "%s", line.c_str());
}

}  // namespace Orvel::Client::Leagues
