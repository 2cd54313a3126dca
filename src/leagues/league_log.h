#pragma once

#include <string_view>

namespace Orvel::Client::Leagues {

// The league logic's log lines: category DBG, the text as it is.
void LogLeagueError(std::string_view text);
void LogLeagueWarning(std::string_view text);

}  // namespace Orvel::Client::Leagues
