#include "control_routes.h"

#include <functional>
#include <map>
#include <optional>

#include "api/route_table.h"
#include "api_description.h"
#include "codec/json_reader.h"
#include "codec/json_writer.h"
#include "endpoint_call.h"
#include "method_text.h"
#include "openapi.h"
#include "value_builders.h"
#include "value_shape.h"

namespace tav::host {

namespace {

using wex::BindingProperty;
using wex::BindingPropertyKind;

constexpr const char* kLeagueMessageClass = "com.orvelsoft.platform.messaging.persistence.SimpleDialogMessage";
constexpr std::string_view kJournalKinds[] = {"http", "server", "request", "event", "subscription", "schedule", "wait"};
constexpr const char* kLevelNames[] = {"OKAY", "WARN", "ERROR", "ALWAYS"};
// Of journal entries and log lines in one answer: enough for a page, and a bound on the answer.
constexpr std::size_t kDefaultLimit = 100;
constexpr std::size_t kMaxLimit = 1000;

class BadRequest : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

struct ControlRequest {
    std::map<std::string, std::string> parameters;  // of the path template
    std::map<std::string, std::string> query;
    const std::string& body;
};

using Handler = std::function<HttpAnswer(HostSession&, const ControlRequest&)>;

BindingProperty ReadBody(const std::string& body) {
    BindingProperty value = wex::ParseJson(body);
    if (!value.IsValid()) {
        throw BadRequest("The body is not JSON: " + std::string(value.GetError()));
    }
    return value;
}

HttpAnswer Done() {
    return HttpAnswer::Json("", 204);
}

HttpAnswer Json(const BindingProperty& value) {
    return HttpAnswer::Json(wex::WriteJson(value));
}

std::string TextMember(const BindingProperty& body, std::string_view name, std::string_view otherwise = {}) {
    const BindingProperty& member = body.Member(name);
    if (member.IsEmpty()) {
        return std::string(otherwise);
    }
    if (member.Kind() != BindingPropertyKind::String) {
        throw BadRequest("\"" + std::string(name) + "\" must be a text");
    }
    return std::string(member.AsString());
}

std::map<std::string, std::string> QueryOf(std::string_view query) {
    std::map<std::string, std::string> arguments;
    while (!query.empty()) {
        const std::string_view piece = query.substr(0, query.find('&'));
        const std::size_t equals = piece.find('=');
        arguments[wex::DecodeUrlComponent(piece.substr(0, equals))] =
            equals == std::string_view::npos ? "" : wex::DecodeUrlComponent(piece.substr(equals + 1));
        query.remove_prefix(std::min(query.size(), piece.size() + 1));
    }
    return arguments;
}

// A whole number argument of the query from 0 to most; otherwise when absent.
std::size_t WholeArgument(const ControlRequest& request, const std::string& name, std::size_t otherwise,
                          std::size_t least, std::size_t most) {
    const auto found = request.query.find(name);
    if (found == request.query.end()) {
        return otherwise;
    }
    std::size_t number = 0;
    std::size_t used = 0;
    try {
        number = std::stoull(found->second, &used);
    } catch (const std::exception&) {
        used = 0;
    }
    if (used == 0 || used != found->second.size() || found->second[0] == '-' || number < least || number > most) {
        throw BadRequest("\"" + name + "\" takes a whole number from " + std::to_string(least) + " to " +
                         std::to_string(most) + ", not '" + found->second + "'");
    }
    return number;
}

const BindingProperty& ResourceOr(HostSession& session, const char* uri, const BindingProperty& otherwise) {
    const BindingProperty* value = session.Host().Resource(uri);
    return value != nullptr ? *value : otherwise;
}

// ---- Reads ----------------------------------------------------------------------------------------------

BindingProperty Gameflow(HostSession& session) {
    const BindingProperty* value = session.Host().Resource(WorldPlatform::kGameflowSession);
    if (value == nullptr) {
        return Structure({{"phase", String("None")}, {"queue", String("")}});
    }
    const BindingProperty& queue = value->Member("gameData").Member("queue").Member("type");
    return Structure({{"phase", value->Member("phase")},
                      {"queue", queue.Kind() == BindingPropertyKind::String ? queue : String("")}});
}

BindingProperty Switches(HostSession& session) {
    const BindingProperty off = Bool(false);
    return Structure({{"leagueServiceEnabled", ResourceOr(session, WorldPlatform::kLeagueServiceEnabled, off)},
                      {"JWTEnabled", ResourceOr(session, WorldPlatform::kJwtEnabled, off)}});
}

BindingProperty Resources(HostSession& session) {
    BindingProperty resources;
    resources.MakeStructure();
    for (const auto& [uri, value] : session.Host().Resources()) {
        resources.Member(uri) = value;
    }
    return resources;
}

BindingProperty Faults(HostSession& session) {
    BindingProperty faults = EmptyCollection();
    for (const auto& [call, fault] : session.Server().Faults()) {
        faults.Append() = Structure({{"destination", String(call.first)},
                                     {"method", String(call.second)},
                                     {"error", String(fault.error)},
                                     {"status", Unsigned(fault.status)},
                                     {"delaySeconds", Float(fault.delaySeconds)},
                                     {"className", String(fault.className)},
                                     {"malformed", Bool(fault.malformed)}});
    }
    return faults;
}

HttpAnswer State(HostSession& session) {
    const WorldPlayer& player = session.Server().World().Current();
    return Json(Structure({{"player", Structure({{"summonerId", Unsigned(player.summonerId)},
                                                 {"accountId", Unsigned(player.accountId)},
                                                 {"name", String(player.name)}})},
                           {"loggedIn", Bool(session.Host().Resource(WorldPlatform::kLoginSession) != nullptr)},
                           {"gameflow", Gameflow(session)},
                           {"switches", Switches(session)},
                           {"clock", Float(session.Host().Now())},
                           {"faults", Faults(session)},
                           {"resources", Resources(session)}}));
}

HttpAnswer Journal(HostSession& session, const ControlRequest& request) {
    JournalFilter filter;
    const auto kind = request.query.find("kind");
    if (kind != request.query.end()) {
        if (std::find(std::begin(kJournalKinds), std::end(kJournalKinds), kind->second) == std::end(kJournalKinds)) {
            throw BadRequest("\"kind\" is one of http, server, request, event, subscription, schedule, wait, not '" +
                             kind->second + "'");
        }
        filter.kind = kind->second;
    }
    filter.since = WholeArgument(request, "since", 0, 0, SIZE_MAX);
    filter.limit = WholeArgument(request, "limit", kDefaultLimit, 1, kMaxLimit);
    BindingProperty entries = EmptyCollection();
    for (const JournalEntry& entry : session.Host().HostJournal().Select(filter)) {
        entries.Append() = Structure({{"id", Unsigned(entry.id)},
                                      {"time", String(TimeText(entry.timeMs))},
                                      {"kind", String(entry.kind)},
                                      {"summary", String(entry.summary)},
                                      {"detail", String(entry.detail)}});
    }
    return Json(entries);
}

// A line as the plug-in forwards it, "DATE| LEVEL| CATEGORY| MESSAGE", without the date and level, which
// the record carries.
BindingProperty LogLine(const RecordedLogLine& line) {
    std::string_view text = line.text;
    while (!text.empty() && (text.back() == '\n' || text.back() == '\r')) {
        text.remove_suffix(1);
    }
    std::string_view pieces[4];
    std::size_t count = 0;
    for (; count < 3; ++count) {
        const std::size_t bar = text.find("| ");
        if (bar == std::string_view::npos) {
            break;
        }
        pieces[count] = text.substr(0, bar);
        text.remove_prefix(bar + 2);
    }
    const auto trimmed = [](std::string_view piece) {
        while (!piece.empty() && piece.front() == ' ') {
            piece.remove_prefix(1);
        }
        return piece;
    };
    const bool whole = count == 3;
    const auto level = static_cast<std::size_t>(line.level);
    return Structure({{"time", String(TimeText(line.timeMs))},
                      {"level", String(level < std::size(kLevelNames) ? kLevelNames[level] : std::to_string(level))},
                      {"category", String(whole ? trimmed(pieces[2]) : "")},
                      {"message", String(whole ? text : std::string_view(line.text))}});
}

HttpAnswer LogLines(HostSession& session, const ControlRequest& request) {
    const std::size_t limit = WholeArgument(request, "limit", kDefaultLimit, 1, kMaxLimit);
    const std::vector<RecordedLogLine>& lines = session.Host().Records().logLines;
    BindingProperty answer = EmptyCollection();
    for (std::size_t index = lines.size() - std::min(limit, lines.size()); index < lines.size(); ++index) {
        answer.Append() = LogLine(lines[index]);
    }
    return Json(answer);
}

HttpAnswer Memory(HostSession& session) {
    const MemoryCounters memory = session.Library().Memory();
    return Json(Structure({{"peakLiveBytes", Unsigned(memory.peakLiveBytes)},
                           {"liveCountAtPeak", Unsigned(memory.liveCountAtPeak)},
                           {"allocatedBytes", Unsigned(memory.allocatedBytes)},
                           {"allocations", Unsigned(memory.allocations)},
                           {"freedBytes", Unsigned(memory.freedBytes)},
                           {"frees", Unsigned(memory.frees)},
                           {"liveBytes", Unsigned(memory.LiveBytes())}}));
}

// ---- Changes --------------------------------------------------------------------------------------------

HttpAnswer SetGameflow(HostSession& session, const std::string& body) {
    const BindingProperty value = ReadBody(body);
    const std::string phase = TextMember(value, "phase");
    if (phase.empty()) {
        throw BadRequest("The gameflow needs a \"phase\", such as \"ChampSelect\"");
    }
    CheckName(value.Member("phase"), "phase", kGameflowPhases);
    session.Platform().SetGameflow(phase, TextMember(value, "queue", "RANKED_SOLO_5x5"));
    return Done();
}

HttpAnswer SetSwitch(HostSession& session, const std::string& name, const std::string& body) {
    const BindingProperty value = ReadBody(body);
    if (value.Kind() != BindingPropertyKind::Bool) {
        throw BadRequest("A switch is set with true or false");
    }
    if (!session.Platform().SetSwitch(name, value.ToBool())) {
        return HttpAnswer::Failure(404, "No switch " + name + "; the switches are leagueServiceEnabled and JWTEnabled");
    }
    return Done();
}

HttpAnswer PushMessage(HostSession& session, const std::string& body) {
    BindingProperty value = ReadBody(body);
    const std::string typeName = TextMember(value, "typeName", kLeagueMessageClass);
    BindingProperty message = value.Member("body");
    if (message.Kind() != BindingPropertyKind::Structure) {
        throw BadRequest("A pushed message needs a \"body\" object");
    }
    if (message.Member("params").Kind() == BindingPropertyKind::Collection) {
        BindingProperty params = EmptyCollection();
        for (const BindingProperty& param : message.Member("params").Elements()) {
            params.Append() = param.Kind() == BindingPropertyKind::String ? param : String(wex::WriteJson(param));
        }
        message.Member("params") = params;
    }
    session.Host().PushServerMessage(typeName, wex::WriteJson(message));
    return Done();
}

HttpAnswer AdvanceClock(HostSession& session, const std::string& body) {
    const std::optional<double> seconds = NumberOf(ReadBody(body).Member("seconds"));
    // A day at most: a step so large that the clock no longer tells one moment from the next would leave
    // every timer due at once, for ever.
    if (!seconds || !(*seconds > 0.0 && *seconds <= 86400.0)) {
        throw BadRequest("The clock moves on by {\"seconds\": N}, N more than 0 and at most 86400");
    }
    session.Host().AdvanceClock(*seconds);
    return Json(Structure({{"now", Float(session.Host().Now())}}));
}

HttpAnswer SetNextTokenExpiry(HostSession& session, const std::string& body) {
    const std::optional<double> seconds = NumberOf(ReadBody(body).Member("seconds"));
    if (!seconds || !(*seconds >= 0.0 && *seconds <= 86400.0)) {
        throw BadRequest("The next tokens expire {\"seconds\": N} after they are handed out, N from 0 to 86400");
    }
    session.Server().SetNextTokenExpiry(*seconds);
    return Done();
}

HttpAnswer SetFault(HostSession& session, const ControlRequest& request) {
    const BindingProperty value = ReadBody(request.body);
    ServerFault fault;
    fault.error = TextMember(value, "error");
    fault.className = TextMember(value, "className");
    fault.malformed = value.Member("malformed").ToBool();
    fault.status = static_cast<std::uint32_t>(value.Member("status").AsUInt64(500));
    const BindingProperty& delay = value.Member("delaySeconds");
    fault.delaySeconds = delay.IsEmpty() ? 0.0 : NumberOf(delay).value_or(-1.0);
    if (!(fault.delaySeconds >= 0.0 && fault.delaySeconds <= 600.0)) {
        throw BadRequest("\"delaySeconds\" lies between 0 and 600");
    }
    session.Server().SetFault(request.parameters.at("destination"), request.parameters.at("method"), fault);
    return Done();
}

// ---- The table ------------------------------------------------------------------------------------------

constexpr const char* kObject = R"({"type":"object"})";
constexpr const char* kAnyValue = "{}";
constexpr const char* kGameflow =
    R"({"type":"object","properties":{"phase":{"type":"string","examples":["ChampSelect"]},)"
    R"("queue":{"type":"string","examples":["RANKED_SOLO_5x5"]}},"required":["phase"]})";
constexpr const char* kSwitches =
    R"({"type":"object","properties":{"leagueServiceEnabled":{"type":"boolean"},"JWTEnabled":{"type":"boolean"}}})";
constexpr const char* kSeconds =
    R"({"type":"object","properties":{"seconds":{"type":"number","exclusiveMinimum":0,"maximum":86400}},)"
    R"("required":["seconds"]})";
constexpr const char* kFault =
    R"({"type":"object","properties":{"error":{"type":"string"},"status":{"type":"integer"},)"
    R"("delaySeconds":{"type":"number","minimum":0,"maximum":600},"className":{"type":"string"},)"
    R"("malformed":{"type":"boolean"}}})";
constexpr const char* kFaults = R"({"type":"array","items":{"type":"object"}})";
constexpr const char* kMessage =
    R"({"type":"object","properties":{"typeName":{"type":"string"},"body":{"type":"object","properties":)"
    R"({"accountId":{"type":"integer"},"msgId":{"type":"string"},"type":{"type":"string"},)"
    R"("params":{"type":"array","items":{}}}}},"required":["body"],"examples":[{"body":{"accountId":5001,)"
    R"("msgId":"9","type":"leagues","params":[{"notifyReason":"LEAGUE_PROMOTED"}]}}]})";
constexpr const char* kJournal =
    R"({"type":"array","items":{"type":"object","properties":{"id":{"type":"integer"},"time":{"type":"string",)"
    R"("format":"date-time"},"kind":{"type":"string"},"summary":{"type":"string"},"detail":{"type":"string"}}}})";
constexpr const char* kLog =
    R"({"type":"array","items":{"type":"object","properties":{"time":{"type":"string","format":"date-time"},)"
    R"("level":{"enum":["OKAY","WARN","ERROR","ALWAYS"]},"category":{"type":"string"},)"
    R"("message":{"type":"string"}}}})";
constexpr const char* kLimit = R"({"type":"integer","minimum":1,"maximum":1000,"default":100})";

struct ControlRoute {
    ControlRouteInfo info;
    Handler handler;  // empty: the gateway serves it
};

HttpAnswer Run(const std::function<void(HostSession&)>& change, HostSession& session) {
    change(session);
    return Done();
}

const std::vector<ControlRoute>& Table() {
    static const std::vector<ControlRoute> table = {
        {{"GET", "/devhost/state", "Everything at once: player, login, gameflow, switches, clock, faults, resources",
          nullptr, kObject},
         [](HostSession& session, const ControlRequest&) { return State(session); }},
        {{"GET", "/devhost/api", "The plug-in's routes, types and events as its API table gives them", nullptr,
          kObject},
         [](HostSession& session, const ControlRequest&) {
             const HostApiTable* table = session.Library().loadInfo().apiTable;
             return table != nullptr ? Json(DescribeApiTable(*table)) : HttpAnswer::Failure(503, "No API table");
         }},
        {{"GET", "/devhost/openapi.json", "This document", nullptr, kObject},
         [](HostSession& session, const ControlRequest&) {
             return HttpAnswer::Json(OpenApiDocument(session.Library().loadInfo().apiTable));
         }},
        {{"GET",
          "/devhost/events",
          "Every event the plug-in publishes, as Server-Sent Events",
          nullptr,
          kAnyValue,
          {},
          "text/event-stream"},
         {}},
        {{"POST", "/devhost/login", "Log the current player in", nullptr, nullptr},
         [](HostSession& session, const ControlRequest&) {
             return Run([](HostSession& s) { s.Platform().LogIn(); }, session);
         }},
        {{"POST", "/devhost/logout", "Log the current player out", nullptr, nullptr},
         [](HostSession& session, const ControlRequest&) {
             return Run([](HostSession& s) { s.Platform().LogOut(); }, session);
         }},
        {{"GET", "/devhost/gameflow", "The gameflow phase and queue; no session reads as phase None", nullptr,
          kGameflow},
         [](HostSession& session, const ControlRequest&) { return Json(Gameflow(session)); }},
        {{"PUT", "/devhost/gameflow", "Set the gameflow phase and queue", kGameflow, nullptr},
         [](HostSession& session, const ControlRequest& request) { return SetGameflow(session, request.body); }},
        {{"DELETE", "/devhost/gameflow", "End the gameflow session", nullptr, nullptr},
         [](HostSession& session, const ControlRequest&) {
             return Run([](HostSession& s) { s.Platform().DeleteGameflow(); }, session);
         }},
        {{"GET", "/devhost/switches", "The platform's switches", nullptr, kSwitches},
         [](HostSession& session, const ControlRequest&) { return Json(Switches(session)); }},
        {{"PUT", "/devhost/switches/{name}", "Turn leagueServiceEnabled or JWTEnabled on or off",
          R"({"type":"boolean"})", nullptr},
         [](HostSession& session, const ControlRequest& request) {
             return SetSwitch(session, request.parameters.at("name"), request.body);
         }},
        {{"GET", "/devhost/resources", "Every resource of the other plug-ins, by URI", nullptr, kObject},
         [](HostSession& session, const ControlRequest&) { return Json(Resources(session)); }},
        {{"GET", "/devhost/resources/{+uri}", "One resource of the other plug-ins", nullptr, kAnyValue},
         [](HostSession& session, const ControlRequest& request) {
             const std::string uri = "/" + request.parameters.at("uri");
             const BindingProperty* value = session.Host().Resource(uri);
             return value != nullptr ? Json(*value) : HttpAnswer::Failure(404, "No resource " + uri);
         }},
        {{"PUT", "/devhost/resources/{+uri}", "Set a resource; its subscribers hear of it", kAnyValue, nullptr},
         [](HostSession& session, const ControlRequest& request) {
             (void)ReadBody(request.body);
             session.Host().SetResource("/" + request.parameters.at("uri"), request.body);
             return Done();
         }},
        {{"DELETE", "/devhost/resources/{+uri}", "Remove a resource", nullptr, nullptr},
         [](HostSession& session, const ControlRequest& request) {
             session.Host().DeleteResource("/" + request.parameters.at("uri"));
             return Done();
         }},
        {{"POST", "/devhost/messages",
          "Push a server message; the type defaults to the league message class, and params given as objects "
          "travel as their JSON text",
          kMessage, nullptr},
         [](HostSession& session, const ControlRequest& request) { return PushMessage(session, request.body); }},
        {{"POST", "/devhost/clock", "Move the scheduler's clock on", kSeconds,
          R"({"type":"object","properties":{"now":{"type":"number"}}})"},
         [](HostSession& session, const ControlRequest& request) { return AdvanceClock(session, request.body); }},
        {{"PUT", "/devhost/next-token-expiry", "The next signed standings expire this many seconds after",
          R"({"type":"object","properties":{"seconds":{"type":"number","minimum":0,"maximum":86400}}})", nullptr},
         [](HostSession& session, const ControlRequest& request) { return SetNextTokenExpiry(session, request.body); }},
        {{"GET",
          "/devhost/journal",
          "What the plug-in asked of the host and the server, and the HTTP requests, newest last",
          nullptr,
          kJournal,
          {{"kind", R"({"enum":["http","server","request","event","subscription","schedule","wait"]})",
            "Entries of this kind only"},
           {"since", R"({"type":"integer","minimum":0})", "Entries with a greater id only"},
           {"limit", kLimit, "At most this many entries, the newest"}}},
         [](HostSession& session, const ControlRequest& request) { return Journal(session, request); }},
        {{"DELETE", "/devhost/journal", "Forget the journal", nullptr, nullptr},
         [](HostSession& session, const ControlRequest&) {
             return Run([](HostSession& s) { s.Host().ClearJournal(); }, session);
         }},
        {{"GET",
          "/devhost/log",
          "The plug-in's log lines, newest last",
          nullptr,
          kLog,
          {{"limit", kLimit, "At most this many lines, the newest"}}},
         [](HostSession& session, const ControlRequest& request) { return LogLines(session, request); }},
        {{"GET", "/devhost/memory", "The plug-in's memory counters", nullptr, kObject},
         [](HostSession& session, const ControlRequest&) { return Memory(session); }},
        {{"GET", "/devhost/faults", "The faults set on server methods", nullptr, kFaults},
         [](HostSession& session, const ControlRequest&) { return Json(Faults(session)); }},
        {{"DELETE", "/devhost/faults", "Clear every fault", nullptr, nullptr},
         [](HostSession& session, const ControlRequest&) {
             return Run([](HostSession& s) { s.Server().ClearFaults(); }, session);
         }},
        {{"PUT", "/devhost/faults/{destination}/{method}", "Set a fault on a server method", kFault, nullptr},
         [](HostSession& session, const ControlRequest& request) { return SetFault(session, request); }},
    };
    return table;
}

struct Routes {
    std::vector<wex::Route> routes;
    std::vector<const wex::Route*> order;
};

const Routes& MatchedRoutes() {
    static const Routes routes = [] {
        Routes built;
        for (const ControlRoute& route : Table()) {
            built.routes.push_back(RouteOfTemplate(MethodCode(route.info.method), "", route.info.path));
        }
        for (const wex::Route& route : built.routes) {
            built.order.push_back(&route);
        }
        return built;
    }();
    return routes;
}

HttpAnswer Route(HostSession& session, std::string_view method, const std::string& path, const ControlRequest& base) {
    const Routes& routes = MatchedRoutes();
    const std::optional<wex::RouteMatch> match = wex::MatchRoute(routes.order, MethodCode(method), {}, path);
    if (!match) {
        const std::vector<std::string> allowed = MethodsMatching(routes.order, path);
        return allowed.empty() ? HttpAnswer::Failure(404, "tav-host has no route " + std::string(method) + " " + path +
                                                              "; GET /devhost/openapi.json lists them")
                               : HttpAnswer::NotAllowed(method, path, allowed);
    }
    const ControlRoute& route = Table()[static_cast<std::size_t>(match->route - routes.routes.data())];
    if (!route.handler) {
        return HttpAnswer::Failure(404, "tav-host serves " + path + " itself");
    }
    return route.handler(session, {match->parameters, base.query, base.body});
}

}  // namespace

std::span<const ControlRouteInfo> ControlRoutes() {
    static const std::vector<ControlRouteInfo> infos = [] {
        std::vector<ControlRouteInfo> list;
        for (const ControlRoute& route : Table()) {
            list.push_back(route.info);
        }
        return list;
    }();
    return infos;
}

std::vector<std::string> ControlMethods(const std::string& path) {
    return MethodsMatching(MatchedRoutes().order, path);
}

HttpAnswer ServeControl(HostSession& session, std::string_view method, const std::string& target,
                        const std::string& body) {
    const std::size_t question = target.find('?');
    const std::string path = target.substr(0, question);
    if (path.rfind(kControlPrefix, 0) != 0) {
        return HttpAnswer::Failure(404, "tav-host's own routes lie under " + std::string(kControlPrefix));
    }
    try {
        HttpAnswer answer =
            Route(session, method, path,
                  {{}, QueryOf(question == std::string::npos ? "" : target.substr(question + 1)), body});
        // Changes reach the plug-in before the answer goes out.
        session.Host().RunUntilIdle();
        return answer;
    } catch (const BadRequest& error) {
        return HttpAnswer::Failure(400, error.what());
    } catch (const ShapeError& error) {
        return HttpAnswer::Failure(400, error.what());
    } catch (const std::invalid_argument& error) {
        return HttpAnswer::Failure(400, error.what());
    }
}

}  // namespace tav::host
