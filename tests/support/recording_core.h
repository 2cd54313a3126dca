#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "plugin/boundary.h"

namespace tav::test {

// A CoreApi that records what the plug-in asks of the host and answers every
// request with a 404 error. For tests of the boundary itself; the simulated
// host in devhost/ plays the platform.
class RecordingCore {
public:
    struct LogLine {
        std::int32_t level;
        std::string text;
    };

    RecordingCore();
    RecordingCore(const RecordingCore&) = delete;
    RecordingCore& operator=(const RecordingCore&) = delete;

    const CoreApi* api() const { return &table_.api; }
    PluginStartInfo StartInfo(std::uint32_t hostContext = 7) const { return PluginStartInfo{api(), hostContext}; }

    std::vector<LogLine> logLines;
    std::vector<std::string> requests;       // paths
    std::vector<std::string> subscriptions;  // event names, in order
    std::vector<std::string> unsubscriptions;

private:
    // The table the plug-in sees, followed by the way back to its owner.
    struct Table {
        CoreApi api;
        RecordingCore* owner;
    };
    static RecordingCore& Owner(const CoreApi* api);

    Table table_{};
};

}  // namespace tav::test
