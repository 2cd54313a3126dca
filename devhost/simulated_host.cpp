#include "simulated_host.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <exception>
#include <sstream>

#include "codec/json_reader.h"
#include "codec/json_writer.h"
#include "event_names.h"
#include "host_value_json.h"
#include "method_text.h"
#include "types/host_value.h"
#include "value_builders.h"

namespace tav::host {

namespace {

constexpr std::string_view kTelemetryPrefix = "/telemetry/v1/events/";
constexpr std::string_view kInvokePath = "/tav-login/v1/session/invoke";
constexpr std::string_view kUuidRequestsPath = "/tav-login/v1/service-proxy-uuid-requests";
constexpr std::string_view kMethodRequestsPath = "/tav-login/v1/service-proxy-method-requests";

std::atomic<std::size_t> unreleasedResponses{0};

const char* CopyText(const std::string& text) {
    char* copy = new char[text.size() + 1];
    std::memcpy(copy, text.c_str(), text.size() + 1);
    return copy;
}

// Frees what the host put in a response it filled.
void ReleaseResponse(HostResponse* response) {
    if (response == nullptr) {
        return;
    }
    --unreleasedResponses;
    HostValue result = response->result;
    wex::ReleaseHostValue(result);
    if (response->errorFlag != 0) {
        delete[] response->error;
    }
    *response = HostResponse{};
}

std::string Text(const char* text) {
    return text != nullptr ? text : "";
}

std::string NumberText(double number) {
    std::ostringstream text;
    text << number;
    return text.str();
}

// The server call's arguments: the list at index (a collection is taken as
// the list itself, any other value as its only element); none when absent.
wex::BindingProperty ArgumentList(const std::vector<wex::BindingProperty>& arguments, std::size_t index) {
    if (index < arguments.size() && arguments[index].Kind() == wex::BindingPropertyKind::Collection) {
        return arguments[index];
    }
    wex::BindingProperty list;
    list.MakeCollection();
    if (index < arguments.size() && !arguments[index].IsEmpty()) {
        list.Append() = arguments[index];
    }
    return list;
}

constexpr std::size_t kPendingServerCallLimit = 1000;

std::string PayloadText(const ServerAnswer& answer) {
    if (!answer.error.empty()) {
        return "";
    }
    return answer.payloadText ? *answer.payloadText : wex::WriteJson(answer.body);
}

}  // namespace

SimulatedHost& SimulatedHost::Owner(const CoreApi* api) {
    return *reinterpret_cast<const Table*>(api)->owner;
}

SimulatedHost::SimulatedHost(std::uint32_t hostContext)
    : loop_([this](const std::string& name, const wex::BindingProperty& payload) { Deliver(name, payload); }) {
    table_.owner = this;
    startInfo_ = PluginStartInfo{&table_.api, hostContext};
    CoreApi& api = table_.api;
    api.SendRequest = [](const CoreApi* self, HostResponse* response, const HostRequest* request) {
        if (response != nullptr && request != nullptr) {
            Owner(self).OnSendRequest(*response, *request);
        }
    };
    api.CoreEntry1 = [](const CoreApi* self, std::uint32_t first, std::uint32_t second) -> std::uint32_t {
        SimulatedHost& host = Owner(self);
        host.Record(host.records_.journal, "CoreEntry1 " + std::to_string(first) + " " + std::to_string(second));
        return 0;
    };
    api.SendEvent = [](const CoreApi* self, const HostEvent* event) {
        if (event != nullptr) {
            Owner(self).OnSendEvent(*event);
        }
    };
    api.SubscribeHostEvent = [](const CoreApi* self, const char* name, std::uint32_t hostContext,
                                HostEventCallback callback, void* userData, std::uint32_t flag) {
        Owner(self).OnSubscribe(name, hostContext, callback, userData, flag);
    };
    api.UnsubscribeHostEvent = [](const CoreApi* self, const char* name, std::uint32_t hostContext) {
        Owner(self).OnUnsubscribe(name, hostContext);
    };
    api.ScheduleCallback = [](const CoreApi* self, const char* label, HostScheduledCallback callback, void* userData,
                              double delaySeconds,
                              std::uint32_t) { Owner(self).OnSchedule(label, callback, userData, delaySeconds); };
    api.YieldToHost = [](const CoreApi* self) { Owner(self).OnYield(); };
    api.BeginWait = [](const CoreApi* self, const char* label, std::uint32_t) {
        SimulatedHost& host = Owner(self);
        host.Record(host.records_.waits, Text(label));
        host.Record(host.records_.journal, "BeginWait " + Text(label));
        host.JournalWait(label);
    };
    api.EndWait = [](const CoreApi* self) {
        SimulatedHost& host = Owner(self);
        ++host.records_.endWaits;
        host.Record(host.records_.journal, std::string("EndWait"));
        host.JournalEndWait();
    };
    api.Log = [](const CoreApi* self, std::int32_t level, const char* text) {
        SimulatedHost& host = Owner(self);
        host.Record(host.records_.logLines, RecordedLogLine{level, Text(text), Journal::NowMs()});
    };
}

SimulatedHost::~SimulatedHost() = default;

bool SimulatedHost::Start(PluginLibrary& plugin) {
    if (plugin.loadInfo().apiTable != nullptr) {
        routes_.emplace(*plugin.loadInfo().apiTable);
    }
    return plugin.Start(startInfo_);
}

void SimulatedHost::Stop(PluginLibrary& plugin) {
    plugin.Stop();
    subscribers_.clear();
    loop_.Clear();
    routes_.reset();
}

// ---- Scripts ----------------------------------------------------------------

void SimulatedHost::Answer(std::uint32_t method, const std::string& path, ScriptedAnswer answer) {
    answers_.insert_or_assign(std::make_pair(method, path), std::move(answer));
}

void SimulatedHost::SetResource(const std::string& uri, std::string_view json) {
    wex::BindingProperty value = JsonValue(json);
    const bool existed = resources_.count(uri) != 0;
    resources_.insert_or_assign(uri, value);
    PublishResourceChange(uri, existed ? "Update" : "Create", value);
}

void SimulatedHost::DeleteResource(const std::string& uri) {
    resources_.erase(uri);
    PublishResourceChange(uri, "Delete", wex::BindingProperty());
}

void SimulatedHost::PublishResourceChange(const std::string& uri, const char* eventType,
                                          const wex::BindingProperty& data) {
    const std::string name = ResourceEventName(uri);
    if (SubscriberCount(name) == 0) {
        return;
    }
    loop_.QueueEvent(name, Structure({{"uri", String(uri)}, {"eventType", String(eventType)}, {"data", data}}));
}

void SimulatedHost::ScriptServer(const std::string& destination, const std::string& method, ServerAnswer answer) {
    server_.Script(destination, method, std::move(answer));
}

void SimulatedHost::UnscriptServer(const std::string& destination, const std::string& method) {
    server_.Unscript(destination, method);
}

const wex::BindingProperty* SimulatedHost::Resource(const std::string& uri) const {
    const auto found = resources_.find(uri);
    return found != resources_.end() ? &found->second : nullptr;
}

void SimulatedHost::PushServerMessage(const std::string& typeName, std::string_view body) {
    loop_.QueueEvent(ServerMessageEventName(typeName), Structure({{"clientId", String("")},
                                                                  {"subtopic", String("")},
                                                                  {"typeName", String(typeName)},
                                                                  {"body", JsonValue(body)}}));
}

void SimulatedHost::QueueEvent(const std::string& name, std::string_view payload) {
    loop_.QueueEvent(name, JsonValue(payload));
}

// ---- Delivery ---------------------------------------------------------------

void SimulatedHost::DeliverNow(const std::string& name, const HostValue& payload) {
    // Callbacks may subscribe and unsubscribe while they run.
    std::vector<Subscriber> receivers;
    std::copy_if(subscribers_.begin(), subscribers_.end(), std::back_inserter(receivers),
                 [&name](const Subscriber& subscriber) { return subscriber.name == name; });
    for (const Subscriber& receiver : receivers) {
        HostEvent event{};
        event.name = receiver.name.c_str();
        event.payload = payload;
        event.userData = receiver.userData;
        receiver.callback(&event);
    }
}

void SimulatedHost::Deliver(const std::string& name, const wex::BindingProperty& payload) {
    if (name == "OnServiceProxyUuidEvent" || name == "OnServiceProxyMethodEvent") {
        JournalServerAnswer(payload, name == "OnServiceProxyUuidEvent");
    }
    const OwnedHostValue value(payload);
    DeliverNow(name, value.Get());
}

void SimulatedHost::ClearJournal() {
    records_.journal.clear();
    records_.serverCalls.clear();
    journal_.Clear();
}

void SimulatedHost::JournalServerCall(std::string_view destination, std::string_view method,
                                      const wex::BindingProperty& arguments, const ServerAnswer& answer,
                                      const std::string& uuid, std::string_view answeredMethod) {
    const std::string call = std::string(destination) + "." + std::string(method);
    const std::string detail = call + " " + Shortened(wex::WriteJson(arguments));
    const bool pending = !answeredMethod.empty() && answer.turns != ServerAnswer::kDuringRequest;
    if (answer.turns == ServerAnswer::kNever) {
        journal_.Add("server", "server " + call + " -> no answer", detail);
    } else if (!pending) {
        const std::string result = answer.error.empty() ? "200" : std::to_string(answer.status) + " " + answer.error;
        journal_.Add("server", "server " + call + " -> " + result + " in 0 ms", detail);
    } else {
        const std::uint64_t entry = journal_.Add("server", "server " + call + " -> pending", detail);
        pendingServerCalls_.push_back(
            {uuid, std::string(destination), std::string(answeredMethod), call, entry, Journal::NowMs()});
        if (pendingServerCalls_.size() > kPendingServerCallLimit) {
            pendingServerCalls_.pop_front();
        }
    }
}

// A service-proxy answer as the host delivers it: a uuid answer names its call by uuid, a method answer by
// service and method, the oldest first.
void SimulatedHost::JournalServerAnswer(const wex::BindingProperty& payload, bool uuidEvent) {
    const auto call = std::find_if(pendingServerCalls_.begin(), pendingServerCalls_.end(), [&](const auto& pending) {
        return uuidEvent ? !pending.uuid.empty() && pending.uuid == payload.Member("uuid").AsString()
                         : pending.uuid.empty() && pending.service == payload.Member("serviceName").AsString() &&
                               pending.answeredMethod == payload.Member("methodName").AsString();
    });
    if (call == pendingServerCalls_.end()) {
        return;
    }
    const std::string error(payload.Member("error").AsString());
    const std::string result = std::string(payload.Member("status").AsString()) + (error.empty() ? "" : " " + error);
    const std::string detail = call->call + " answered " + Shortened(std::string(payload.Member("payload").AsString()));
    journal_.Update(
        call->entry,
        "server " + call->call + " -> " + result + " in " + std::to_string(Journal::NowMs() - call->startMs) + " ms",
        detail);
    pendingServerCalls_.erase(call);
}

void SimulatedHost::JournalWait(const char* label) {
    const std::string subject = WaitSubject(Text(label));
    openWaits_.push_back({subject, Journal::NowMs(), records_.yields});
    journal_.Add("wait", "wait: " + subject, Text(label));
}

void SimulatedHost::JournalEndWait() {
    if (openWaits_.empty()) {
        journal_.Add("wait", "wait over", "EndWait without BeginWait");
        return;
    }
    const OpenWait wait = openWaits_.back();
    openWaits_.pop_back();
    journal_.Add("wait",
                 "wait over: " + wait.subject + " after " + std::to_string(Journal::NowMs() - wait.startMs) + " ms",
                 std::to_string(records_.yields - wait.yields) + " turns of the host");
}

template <typename T>
void SimulatedHost::Record(std::vector<T>& list, T entry) {
    list.push_back(std::move(entry));
    // A tenth at a time, so that a full list does not move all its entries for each one added.
    if (recordLimit_ != 0 && list.size() > recordLimit_) {
        list.erase(list.begin(), list.end() - static_cast<std::ptrdiff_t>(recordLimit_ - recordLimit_ / 10));
    }
}

std::size_t SimulatedHost::UnreleasedResponses() {
    return unreleasedResponses;
}

std::size_t SimulatedHost::SubscriberCount(const std::string& name) const {
    return static_cast<std::size_t>(std::count_if(subscribers_.begin(), subscribers_.end(),
                                                  [&name](const Subscriber& s) { return s.name == name; }));
}

// ---- The plug-in's API --------------------------------------------------------

EndpointAnswer SimulatedHost::CallEndpoint(std::uint32_t method, const std::string& pathWithQuery,
                                           const std::string& body, const std::string& contentType) {
    if (!routes_) {
        EndpointAnswer answer;
        answer.status = 404;
        answer.failed = true;
        answer.error = "No plug-in is started";
        return answer;
    }
    return tav::host::CallEndpoint(*routes_, startInfo_.hostContext, method, pathWithQuery, body, contentType);
}

// ---- The host's functions -----------------------------------------------------

void SimulatedHost::OnSendRequest(HostResponse& response, const HostRequest& request) {
    RecordedRequest recorded;
    recorded.method = request.method;
    recorded.path = Text(request.path);
    std::vector<wex::BindingProperty> arguments;
    for (std::uint32_t index = 0; index < request.argumentCount; ++index) {
        const HostValue value = request.arguments[index].value;
        arguments.push_back(wex::HostValueToBinding(value, "argument"));
        recorded.arguments.push_back(HostValueJson(value));
    }
    Record(records_.journal, "SendRequest " + std::string(MethodText(recorded.method)) + " " + recorded.path);
    Record(records_.requests, recorded);
    try {
        Respond(response, recorded, arguments);
    } catch (const std::exception& error) {
        Fill(response, ScriptedAnswer::Failure(500, error.what()));
    }
    // Server calls have entries of their own.
    if (recorded.path != kInvokePath && recorded.path != kUuidRequestsPath && recorded.path != kMethodRequestsPath) {
        std::string arguments;
        for (const std::string& argument : recorded.arguments) {
            arguments += (arguments.empty() ? "" : ", ") + argument;
        }
        journal_.Add("request",
                     "request " + std::string(MethodText(recorded.method)) + " " + recorded.path + " -> " +
                         std::to_string(response.status != 0 ? response.status
                                        : response.error     ? 500
                                                             : 200) +
                         (response.error != nullptr ? std::string(" ") + response.error : ""),
                     Shortened("arguments: [" + arguments + "]"));
    }
}

void SimulatedHost::Respond(HostResponse& response, const RecordedRequest& request,
                            const std::vector<wex::BindingProperty>& arguments) {
    const std::string_view path = request.path;
    const bool post = request.method == HostMethodPost;
    if (const auto scripted = answers_.find(std::make_pair(request.method, request.path)); scripted != answers_.end()) {
        Fill(response, scripted->second);
    } else if (post && path.substr(0, kTelemetryPrefix.size()) == kTelemetryPrefix) {
        Fill(response, ScriptedAnswer());
    } else if (post && path == kInvokePath) {
        Invoke(response, arguments);
    } else if (post && path == kUuidRequestsPath) {
        StartServiceProxyCall(response, arguments, true);
    } else if (post && path == kMethodRequestsPath) {
        StartServiceProxyCall(response, arguments, false);
    } else if (const auto resource = resources_.find(path);
               request.method == HostMethodGet && resource != resources_.end()) {
        ScriptedAnswer answer;
        answer.value = resource->second;
        Fill(response, answer);
    } else {
        Fill(response, ScriptedAnswer::Failure(404, "Not found"));
    }
}

void SimulatedHost::Fill(HostResponse& response, const ScriptedAnswer& answer) {
    response = HostResponse{};
    response.release = &ReleaseResponse;
    ++unreleasedResponses;
    response.status = answer.status;
    if (!answer.error.empty()) {
        response.error = CopyText(answer.error);
        response.errorFlag = 1;
    } else if (!answer.chunks.empty() || answer.streamFails) {
        auto stream = std::make_unique<ScriptedStream>(answer.chunks, answer.streamFails);
        response.streamRead = &ScriptedStream::ReadFunction;
        response.streamClose = &ScriptedStream::CloseFunction;
        response.expectedStreamLength = stream->Length();
        response.streamProducer = stream.get();
        streams_.push_back(std::move(stream));
    } else if (!answer.value.IsEmpty()) {
        response.result = OwnedHostValue(answer.value).Release();
    }
}

ServerAnswer SimulatedHost::CallServer(std::string_view destination, std::string_view method,
                                       const wex::BindingProperty& arguments) {
    Record(records_.serverCalls,
           RecordedServerCall{std::string(destination), std::string(method), wex::WriteJson(arguments)});
    return server_.Answer(destination, method, arguments);
}

// Server calls through the login plug-in: (destination, method, arguments).
void SimulatedHost::Invoke(HostResponse& response, const std::vector<wex::BindingProperty>& arguments) {
    const std::string_view destination = arguments.size() > 0 ? arguments[0].AsString() : "";
    const std::string_view method = arguments.size() > 1 ? arguments[1].AsString() : "";
    const wex::BindingProperty list = ArgumentList(arguments, 2);
    const ServerAnswer answer = CallServer(destination, method, list);
    JournalServerCall(destination, method, list, answer, {}, {});
    if (!answer.error.empty()) {
        Fill(response, ScriptedAnswer::Failure(answer.status, answer.error));
        return;
    }
    ScriptedAnswer lcdsResponse;
    const wex::BindingProperty body = answer.payloadText ? String(*answer.payloadText) : answer.body;
    lcdsResponse.value = Structure({{"typeName", String(answer.className)}, {"body", body}});
    Fill(response, lcdsResponse);
}

// Uuid requests: (service, method, host context, payload), answered with a
// uuid and later by a uuid event. Method requests: (service, method, response
// method, extra argument, host context, payload), answered by a method event
// under the response method.
void SimulatedHost::StartServiceProxyCall(HostResponse& response, const std::vector<wex::BindingProperty>& arguments,
                                          bool uuidRequest) {
    const std::string_view service = arguments.size() > 0 ? arguments[0].AsString() : "";
    const std::string_view method = arguments.size() > 1 ? arguments[1].AsString() : "";
    const wex::BindingProperty list = ArgumentList(arguments, uuidRequest ? 3 : 5);
    const ServerAnswer answer = CallServer(service, method, list);
    std::string uuid;
    ScriptedAnswer started;
    if (uuidRequest) {
        uuid = "00000000-0000-0000-0000-" + std::to_string(1000000000000 + nextUuid_++).substr(1);
        started.value = String(uuid);
    }
    const std::string_view answeredMethod = uuidRequest || arguments.size() < 3 ? method : arguments[2].AsString();
    const wex::BindingProperty event =
        Structure({{"uuid", String(uuid)},
                   {"serviceName", String(service)},
                   {"methodName", String(answeredMethod)},
                   {"payload", String(PayloadText(answer))},
                   {"status", String(answer.error.empty() ? "200" : std::to_string(answer.status))},
                   {"error", String(answer.error)}});
    const std::string name = uuidRequest ? "OnServiceProxyUuidEvent" : "OnServiceProxyMethodEvent";
    JournalServerCall(service, method, list, answer, uuid, answeredMethod);
    if (answer.turns == ServerAnswer::kDuringRequest) {
        Deliver(name, event);
    } else if (answer.turns != ServerAnswer::kNever) {
        loop_.QueueAnswer(answer.turns, name, event, answer.delaySeconds,
                          std::string(service) + "." + std::string(method));
    }
    Fill(response, started);
}

void SimulatedHost::OnSendEvent(const HostEvent& event) {
    const HostValue payload = event.payload;
    Record(records_.events, RecordedEvent{Text(event.name), HostValueJson(payload)});
    Record(records_.journal, "SendEvent " + Text(event.name));
    const RecordedEvent& recorded = records_.events.back();
    const wex::BindingProperty value = wex::ParseJson(recorded.payload);
    const std::string resource = value.Member("eventType").Kind() == wex::BindingPropertyKind::String
                                     ? " " + std::string(value.Member("eventType").AsString()) + " " +
                                           std::string(value.Member("uri").AsString())
                                     : "";
    journal_.Add("event", "event " + recorded.name + resource, Shortened(recorded.payload));
    if (eventListener_) {
        eventListener_(records_.events.back());
    }
}

void SimulatedHost::OnSubscribe(const char* name, std::uint32_t hostContext, HostEventCallback callback, void* userData,
                                std::uint32_t flag) {
    const std::string eventName = Text(name);
    Record(records_.subscriptions, RecordedSubscription{eventName, flag, callback, userData});
    Record(records_.journal, "SubscribeHostEvent " + eventName + " " + std::to_string(flag));
    journal_.Add("subscription", "subscribe " + eventName, "flag " + std::to_string(flag));
    RemoveSubscriber(eventName, hostContext);
    if (callback != nullptr) {
        subscribers_.push_back({eventName, hostContext, callback, userData});
    }
}

void SimulatedHost::OnUnsubscribe(const char* name, std::uint32_t hostContext) {
    const std::string eventName = Text(name);
    Record(records_.unsubscriptions, eventName);
    Record(records_.journal, "UnsubscribeHostEvent " + eventName);
    journal_.Add("subscription", "unsubscribe " + eventName);
    RemoveSubscriber(eventName, hostContext);
}

void SimulatedHost::RemoveSubscriber(const std::string& name, std::uint32_t hostContext) {
    std::erase_if(subscribers_, [&](const Subscriber& subscriber) {
        return subscriber.name == name && subscriber.hostContext == hostContext;
    });
}

void SimulatedHost::OnSchedule(const char* label, HostScheduledCallback callback, void* userData, double delaySeconds) {
    Record(records_.schedules, RecordedSchedule{Text(label), delaySeconds, callback, userData});
    Record(records_.journal, "ScheduleCallback " + Text(label) + " " + NumberText(delaySeconds));
    journal_.Add("schedule", "schedule " + Text(label) + " in " + NumberText(delaySeconds) + " s");
    if (callback != nullptr) {
        loop_.Schedule(callback, userData, delaySeconds);
    }
}

void SimulatedHost::OnYield() {
    ++records_.yields;
    Record(records_.journal, std::string("YieldToHost"));
    loop_.RunTurn();
}

}  // namespace tav::host
