#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host_records.h"

namespace tav::test {

// The server calls a plug-in made, in order, as "destination.method
// arguments", with the arguments as JSON text: "leagues.getAllLeaguesForPlayer [42]".
inline std::vector<std::string> ServerCalls(const host::HostRecords& records) {
    const auto unquoted = [](const std::string& json) {
        return json.size() >= 2 && json.front() == '"' ? json.substr(1, json.size() - 2) : json;
    };
    std::vector<std::string> calls;
    for (const host::RecordedRequest& request : records.requests) {
        const auto& arguments = request.arguments;
        if (request.path == "/tav-login/v1/session/invoke" && arguments.size() == 3) {
            calls.push_back(unquoted(arguments[0]) + "." + unquoted(arguments[1]) + " " + arguments[2]);
        } else if (request.path == "/tav-login/v1/service-proxy-uuid-requests" && arguments.size() == 4) {
            calls.push_back(unquoted(arguments[0]) + "." + unquoted(arguments[1]) + " " + arguments[3]);
        }
    }
    return calls;
}

// The lines a plug-in logged at the levels chosen, in order, without their time
// and line end: " ERROR| DBG| Failed to get Team: timed out".
template <class Chosen>
std::vector<std::string> LogLinesWhere(const host::HostRecords& records, Chosen chosen) {
    std::vector<std::string> lines;
    for (const host::RecordedLogLine& line : records.logLines) {
        if (chosen(line.level)) {
            std::string text = line.text.substr(line.text.find("| ") + 2);
            while (!text.empty() && (text.back() == '\n' || text.back() == '\r')) {
                text.pop_back();
            }
            lines.push_back(text);
        }
    }
    return lines;
}

// The lines a plug-in logged at WARN and ERROR.
inline std::vector<std::string> WarningAndErrorLines(const host::HostRecords& records) {
    return LogLinesWhere(records, [](std::int32_t level) { return level == 1 || level == 2; });
}

inline std::vector<std::string> LogLinesAt(const host::HostRecords& records, std::int32_t level) {
    return LogLinesWhere(records, [level](std::int32_t at) { return at == level; });
}

}  // namespace tav::test
