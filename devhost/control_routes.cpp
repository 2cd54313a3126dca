#include "control_routes.h"

#include <optional>

#include "api_description.h"
#include "codec/json_reader.h"
#include "codec/json_writer.h"
#include "value_builders.h"
#include "value_shape.h"

namespace tav::host {

namespace {

using wex::BindingProperty;
using wex::BindingPropertyKind;

constexpr const char* kLeagueMessageClass = "com.orvelsoft.platform.messaging.persistence.SimpleDialogMessage";

class BadRequest : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

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

HttpAnswer ServeResource(HostSession& session, std::string_view method, const std::string& uri,
                         const std::string& body) {
    if (method == "GET") {
        const BindingProperty* value = session.Host().Resource(uri);
        return value != nullptr ? Json(*value) : HttpAnswer::Failure(404, "No resource " + uri);
    }
    if (method == "PUT") {
        (void)ReadBody(body);
        session.Host().SetResource(uri, body);
        return Done();
    }
    if (method == "DELETE") {
        session.Host().DeleteResource(uri);
        return Done();
    }
    return HttpAnswer::Failure(405, "Resources take GET, PUT and DELETE");
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

HttpAnswer Journal(HostSession& session) {
    const HostRecords& records = session.Host().Records();
    BindingProperty calls = EmptyCollection();
    for (const std::string& line : records.journal) {
        calls.Append() = String(line);
    }
    BindingProperty serverCalls = EmptyCollection();
    for (const RecordedServerCall& call : records.serverCalls) {
        serverCalls.Append() = Structure({{"destination", String(call.destination)},
                                          {"method", String(call.method)},
                                          {"arguments", wex::ParseJson(call.arguments)}});
    }
    return Json(Structure({{"hostCalls", calls}, {"serverCalls", serverCalls}}));
}

HttpAnswer LogLines(HostSession& session) {
    BindingProperty lines = EmptyCollection();
    for (const RecordedLogLine& line : session.Host().Records().logLines) {
        lines.Append() = Structure({{"level", Signed(line.level)}, {"text", String(line.text)}});
    }
    return Json(lines);
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

HttpAnswer Faults(HostSession& session) {
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
    return Json(faults);
}

HttpAnswer SetFault(HostSession& session, const std::string& call, const std::string& body) {
    const std::size_t slash = call.find('/');
    if (slash == std::string::npos || slash == 0 || slash + 1 == call.size()) {
        return HttpAnswer::Failure(404, "A fault is set on /devhost/faults/DESTINATION/METHOD");
    }
    const BindingProperty value = ReadBody(body);
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
    session.Server().SetFault(call.substr(0, slash), call.substr(slash + 1), fault);
    return Done();
}

HttpAnswer Route(HostSession& session, std::string_view method, const std::string& route, const std::string& body) {
    const auto under = [&route](std::string_view prefix) {
        return route.rfind(prefix, 0) == 0 && route.size() > prefix.size();
    };
    if (method == "GET" && route == "api") {
        const HostApiTable* table = session.Library().loadInfo().apiTable;
        return table != nullptr ? Json(DescribeApiTable(*table)) : HttpAnswer::Failure(503, "No API table");
    }
    if (method == "POST" && route == "login") {
        session.Platform().LogIn();
        return Done();
    }
    if (method == "POST" && route == "logout") {
        session.Platform().LogOut();
        return Done();
    }
    if (method == "PUT" && route == "gameflow") {
        return SetGameflow(session, body);
    }
    if (method == "DELETE" && route == "gameflow") {
        session.Platform().DeleteGameflow();
        return Done();
    }
    if (method == "PUT" && under("switches/")) {
        return SetSwitch(session, route.substr(9), body);
    }
    if (under("resources/")) {
        return ServeResource(session, method, route.substr(9), body);
    }
    if (method == "POST" && route == "messages") {
        return PushMessage(session, body);
    }
    if (method == "POST" && route == "clock") {
        return AdvanceClock(session, body);
    }
    if (method == "PUT" && route == "next-token-expiry") {
        return SetNextTokenExpiry(session, body);
    }
    if (method == "GET" && route == "journal") {
        return Journal(session);
    }
    if (method == "DELETE" && route == "journal") {
        session.Host().ClearJournal();
        return Done();
    }
    if (method == "GET" && route == "log") {
        return LogLines(session);
    }
    if (method == "GET" && route == "memory") {
        return Memory(session);
    }
    if (method == "GET" && route == "faults") {
        return Faults(session);
    }
    if (method == "DELETE" && route == "faults") {
        session.Server().ClearFaults();
        return Done();
    }
    if (method == "PUT" && under("faults/")) {
        return SetFault(session, route.substr(7), body);
    }
    return HttpAnswer::Failure(404, "tav-host has no route " + std::string(method) + " /devhost/" + route);
}

}  // namespace

HttpAnswer ServeControl(HostSession& session, std::string_view method, const std::string& path,
                        const std::string& body) {
    if (path.rfind(kControlPrefix, 0) != 0) {
        return HttpAnswer::Failure(404, "tav-host's own routes lie under " + std::string(kControlPrefix));
    }
    try {
        HttpAnswer answer = Route(session, method, path.substr(kControlPrefix.size()), body);
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
