#include "inspect.h"

#include <string>
#include <vector>

#include "api_table_text.h"
#include "method_text.h"
#include "simulated_host.h"

namespace tav::host {

namespace {

void PrintLines(std::ostream& out, const char* title, const std::vector<std::string>& lines) {
    out << title << " (" << lines.size() << "):\n";
    for (const std::string& line : lines) {
        out << "  " << line;
        if (line.empty() || line.back() != '\n') {
            out << '\n';
        }
    }
}

// The table read as a C host reads it: every array walked through its next pointers.
void PrintApiTable(std::ostream& out, const HostApiTable& table) {
    out << "Routes (" << table.endpointCount << "):\n";
    for (const HostEndpointRecord* endpoint = table.endpoints; endpoint != nullptr; endpoint = endpoint->next) {
        out << "  " << EndpointMethod(*endpoint) << ' ' << TextOf(endpoint->pathTemplate) << " -> "
            << TextOf(endpoint->functionName) << " returns "
            << TypeText(endpoint->resultKind, endpoint->resultElementKind, endpoint->resultTypeName) << '\n';
        const HostLocationRecord* location = endpoint->locations;
        for (const HostArgumentRecord* argument = endpoint->arguments; argument != nullptr; argument = argument->next) {
            out << "    " << TextOf(argument->name) << ": "
                << TypeText(argument->kind, argument->elementKind, argument->typeName) << " from "
                << LocationName(location != nullptr ? location->location : 0) << '\n';
            location = location != nullptr ? location->next : nullptr;
        }
    }
    out << "Types (" << table.typeCount << "):\n";
    for (const HostTypeRecord* type = table.types; type != nullptr; type = type->next) {
        out << "  " << TextOf(type->name) << " (" << type->size << " bytes)\n";
        for (const HostFieldRecord* field = type->fields; field != nullptr; field = field->next) {
            out << "    " << TextOf(field->name) << ": " << TypeText(field->kind, field->elementKind, field->typeName)
                << '\n';
        }
        for (const HostEnumeratorRecord* value = type->enumerators; value != nullptr; value = value->next) {
            out << "    " << TextOf(value->name) << " = " << value->value << '\n';
        }
    }
    out << "Events (" << table.eventCount << "):\n";
    for (const HostEventRecord* event = table.events; event != nullptr; event = event->next) {
        out << "  " << TextOf(event->name) << ": " << TextOf(event->payloadTypeName) << '\n';
    }
}

}  // namespace

void PrintMemory(std::ostream& out, const MemoryCounters& memory) {
    out << "  peak live bytes:        " << memory.peakLiveBytes << " (" << memory.liveCountAtPeak
        << " live allocations at the peak)\n"
        << "  allocated:              " << memory.allocatedBytes << " bytes in " << memory.allocations
        << " allocations\n"
        << "  freed:                  " << memory.freedBytes << " bytes in " << memory.frees << " frees\n"
        << "  live:                   " << memory.LiveBytes() << " bytes\n";
}

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
