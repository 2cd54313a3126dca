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

// A logged line without its time and line end: " ERROR| DBG| Failed to get Team: timed out".
inline std::string LogLineText(const host::RecordedLogLine& line) {
    std::string text = line.text.substr(line.text.find("| ") + 2);
    while (!text.empty() && (text.back() == '\n' || text.back() == '\r')) {
        text.pop_back();
    }
    return text;
}

// The lines a plug-in logged at WARN and ERROR, in order.
inline std::vector<std::string> WarningAndErrorLines(const host::HostRecords& records) {
    std::vector<std::string> lines;
    for (const host::RecordedLogLine& line : records.logLines) {
        if (line.level == 1 || line.level == 2) {
            lines.push_back(LogLineText(line));
        }
    }
    return lines;
}

// The lines a plug-in logged at one level, in order.
inline std::vector<std::string> LogLinesAt(const host::HostRecords& records, std::int32_t level) {
    std::vector<std::string> lines;
    for (const host::RecordedLogLine& line : records.logLines) {
        if (line.level == level) {
            lines.push_back(LogLineText(line));
        }
    }
    return lines;
}

}  // namespace tav::test
