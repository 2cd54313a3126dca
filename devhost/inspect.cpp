#include "inspect.h"

#include <iterator>
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

const char* MethodText(std::uint32_t method) {
    static const char* const kMethods[] = {"ANY", "DELETE", "GET", "HEAD", "OPTIONS", "PATCH", "POST", "PUT"};
    return method < std::size(kMethods) ? kMethods[method] : "";
}

const char* Text(const char* text) { return text != nullptr ? text : ""; }

const char* KindName(std::uint32_t kind) {
    static const char* const kNames[] = {"",       "bool",   "int8",   "uint8",  "int16",  "uint16", "int32",
                                         "uint32", "int64",  "uint64", "float",  "double", "string", "object",
                                         "blob",   "vector", "enum",   "struct", "callback", "map"};
    return kind < std::size(kNames) ? kNames[kind] : "";
}

const char* LocationName(std::uint32_t location) {
    switch (location) {
        case 1:
            return "query";
        case 2:
            return "path";
        case 4:
            return "header";
        case 5:
            return "body";
        default:
            return "anywhere";
    }
}

// "vector of struct Standing", "uint64", or "none" for a function without a result.
std::string TypeText(std::uint32_t kind, std::uint32_t elementKind, const char* typeName) {
    if (kind == 0) {
        return "none";
    }
    std::string text = KindName(kind);
    if (elementKind != 0) {
        text += std::string(" of ") + KindName(elementKind);
    }
    if (*Text(typeName) != '\0') {
        text += std::string(" ") + typeName;
    }
    return text;
}

// The table read as a C host reads it: every array walked through its next pointers.
void PrintApiTable(std::ostream& out, const HostApiTable& table) {
    out << "Routes (" << table.endpointCount << "):\n";
    for (const HostEndpointRecord* endpoint = table.endpoints; endpoint != nullptr; endpoint = endpoint->next) {
        const char* method = endpoint->method == 8 ? Text(endpoint->methodName) : MethodText(endpoint->method);
        out << "  " << method << ' ' << Text(endpoint->pathTemplate) << " -> " << Text(endpoint->functionName)
            << " returns " << TypeText(endpoint->resultKind, endpoint->resultElementKind, endpoint->resultTypeName)
            << '\n';
        const HostLocationRecord* location = endpoint->locations;
        for (const HostArgumentRecord* argument = endpoint->arguments; argument != nullptr;
             argument = argument->next) {
            out << "    " << Text(argument->name) << ": "
                << TypeText(argument->kind, argument->elementKind, argument->typeName) << " from "
                << LocationName(location != nullptr ? location->location : 0) << '\n';
            location = location != nullptr ? location->next : nullptr;
        }
    }
    out << "Types (" << table.typeCount << "):\n";
    for (const HostTypeRecord* type = table.types; type != nullptr; type = type->next) {
        out << "  " << Text(type->name) << " (" << type->size << " bytes)\n";
        for (const HostFieldRecord* field = type->fields; field != nullptr; field = field->next) {
            out << "    " << Text(field->name) << ": " << TypeText(field->kind, field->elementKind, field->typeName)
                << '\n';
        }
        for (const HostEnumeratorRecord* value = type->enumerators; value != nullptr; value = value->next) {
            out << "    " << Text(value->name) << " = " << value->value << '\n';
        }
    }
    out << "Events (" << table.eventCount << "):\n";
    for (const HostEventRecord* event = table.events; event != nullptr; event = event->next) {
        out << "  " << Text(event->name) << ": " << Text(event->payloadTypeName) << '\n';
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
        PrintApiTable(out, *info.apiTable);
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
