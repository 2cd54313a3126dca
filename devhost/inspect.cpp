#include "inspect.h"

#include <string>
#include <vector>

namespace tav::host {

namespace {

// A host that keeps the plug-in's log lines and answers every request with
// an error: enough to see the plug-in load, start and stop.
struct SilentCore {
    CoreApi api{};
    std::vector<std::string> logLines;
    std::vector<std::string> requests;
    std::vector<std::string> subscriptions;

    SilentCore();
};

SilentCore& Owner(const CoreApi* api) {
    // api is the first member of SilentCore.
    return *reinterpret_cast<SilentCore*>(const_cast<CoreApi*>(api));
}

SilentCore::SilentCore() {
    api.SendRequest = [](const CoreApi* self, HostResponse* response, const HostRequest* request) {
        Owner(self).requests.push_back(request->path != nullptr ? request->path : "");
        *response = HostResponse{};
        response->error = "tav-host inspect serves no resources";
        response->status = 404;
    };
    api.CoreEntry1 = [](const CoreApi*, std::uint32_t, std::uint32_t) -> std::uint32_t { return 0; };
    api.SendEvent = [](const CoreApi*, const HostEvent*) {};
    api.SubscribeHostEvent = [](const CoreApi* self, const char* name, std::uint32_t, HostEventCallback, void*,
                                std::uint32_t) { Owner(self).subscriptions.push_back(name); };
    api.UnsubscribeHostEvent = [](const CoreApi*, const char*, std::uint32_t) {};
    api.ScheduleCallback = [](const CoreApi*, const char*, HostScheduledCallback, void*, double, std::uint32_t) {};
    api.YieldToHost = [](const CoreApi*) {};
    api.BeginWait = [](const CoreApi*, const char*, std::uint32_t) {};
    api.EndWait = [](const CoreApi*) {};
    api.Log = [](const CoreApi* self, std::int32_t, const char* text) { Owner(self).logLines.push_back(text); };
}

void PrintMemory(std::ostream& out, const MemoryCounters& memory) {
    out << "  peak live bytes:        " << memory.peakLiveBytes << " (" << memory.liveCountAtPeak
        << " live allocations at the peak)\n"
        << "  allocated:              " << memory.allocatedBytes << " bytes in " << memory.allocations
        << " allocations\n"
        << "  freed:                  " << memory.freedBytes << " bytes in " << memory.frees << " frees\n"
        << "  live:                   " << memory.LiveBytes() << " bytes\n";
}

void PrintLines(std::ostream& out, const char* title, const std::vector<std::string>& lines) {
    out << title << " (" << lines.size() << "):\n";
    for (const std::string& line : lines) {
        out << "  " << line;
        if (line.empty() || line.back() != '\n') {
            out << '\n';
        }
    }
}

}  // namespace

int Inspect(const InspectOptions& options, std::ostream& out) {
    PluginLibrary library;
    if (!library.Open(options.pluginPath)) {
        out << "tav-host: " << library.error() << '\n';
        return 1;
    }
    out << "Loading " << options.pluginPath << " with core plugin API " << options.coreVersion.ToString() << '\n';
    if (!library.Load(options.coreVersion)) {
        out << "tav-host: " << library.error() << '\n';
        return 1;
    }
    const PluginLoadInfo& info = library.loadInfo();
    out << "  plugin API version:     " << info.major << '.' << info.minor << '.' << info.patch << '\n'
        << "  short name:             " << (info.shortName != nullptr ? info.shortName : "(none)") << '\n';
    if (info.apiTable != nullptr) {
        out << "  API table:              " << info.apiTable->endpointCount << " routes, "
            << info.apiTable->typeCount << " types, " << info.apiTable->eventCount << " events\n";
    }
    out << "Memory after load:\n";
    PrintMemory(out, library.Memory());

    SilentCore core;
    const PluginStartInfo startInfo{&core.api, 1};
    out << "Start: " << (library.Start(startInfo) ? "true" : "false") << '\n';
    PrintLines(out, "Event subscriptions", core.subscriptions);
    PrintLines(out, "Requests to the host", core.requests);
    library.Stop();
    PrintLines(out, "Log lines forwarded to the host", core.logLines);
    out << "Memory after stop:\n";
    PrintMemory(out, library.Memory());
    return 0;
}

}  // namespace tav::host
