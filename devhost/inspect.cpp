#include "inspect.h"

#include <iterator>
#include <string>
#include <vector>

#include "method_text.h"
#include "simulated_host.h"

namespace tav::host {

namespace {

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

const char* Text(const char* text) {
    return text != nullptr ? text : "";
}

const char* KindName(std::uint32_t kind) {
    static const char* const kNames[] = {"",       "bool",   "int8",   "uint8",  "int16",    "uint16", "int32",
                                         "uint32", "int64",  "uint64", "float",  "double",   "string", "object",
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
        for (const HostArgumentRecord* argument = endpoint->arguments; argument != nullptr; argument = argument->next) {
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
        out << "  API table:              " << info.apiTable->endpointCount << " routes, " << info.apiTable->typeCount
            << " types, " << info.apiTable->eventCount << " events\n";
        PrintApiTable(out, *info.apiTable);
    }
    out << "Memory after load:\n";
    PrintMemory(out, library.Memory());

    SimulatedHost host;
    out << "Start: " << (host.Start(library) ? "true" : "false") << '\n';
    const HostRecords& records = host.Records();
    std::vector<std::string> subscriptions;
    for (const RecordedSubscription& subscription : records.subscriptions) {
        subscriptions.push_back(subscription.name);
    }
    PrintLines(out, "Event subscriptions", subscriptions);
    std::vector<std::string> requests;
    for (const RecordedRequest& request : records.requests) {
        requests.push_back(std::string(MethodText(request.method)) + " " + request.path);
    }
    PrintLines(out, "Requests to the host", requests);
    host.Stop(library);
    std::vector<std::string> logLines;
    for (const RecordedLogLine& line : records.logLines) {
        logLines.push_back(line.text);
    }
    PrintLines(out, "Log lines forwarded to the host", logLines);
    out << "Memory after stop:\n";
    PrintMemory(out, library.Memory());
    return 0;
}

}  // namespace tav::host
