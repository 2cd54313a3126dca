#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "binding/property.h"
#include "boundary/boundary.h"
#include "endpoint_call.h"
#include "game_server.h"
#include "host_loop.h"
#include "host_records.h"
#include "journal.h"
#include "plugin_library.h"
#include "scripted_answer.h"

namespace tav::host {

// The platform's core process in miniature, for one plug-in on one thread:
// the CoreApi table the plug-in is started with, a cooperative loop with a
// virtual clock (YieldToHost runs one turn of it), the other plug-ins'
// resources and the login plug-in's server-call endpoints, a game server
// that tests script, and records of everything the plug-in asked.
//
// Requests are answered, in this order of precedence, by scripted answers
// (Answer), the telemetry endpoint, the login plug-in's invoke and
// service-proxy endpoints (answered from the game server), and resources
// (GET answers the current value); anything else fails with 404.
class SimulatedHost {
  public:
    explicit SimulatedHost(std::uint32_t hostContext = 7);
    SimulatedHost(const SimulatedHost&) = delete;
    SimulatedHost& operator=(const SimulatedHost&) = delete;
    ~SimulatedHost();

    // The start record, valid as long as the host.
    const PluginStartInfo& StartInfo() const { return startInfo_; }
    // Starts a loaded plug-in with this host and keeps its API table.
    bool Start(PluginLibrary& plugin);
    // Stops the plug-in and forgets what it left queued and subscribed.
    void Stop(PluginLibrary& plugin);

    // ---- Scripts -----------------------------------------------------------

    // The answer to every request of method on path (the whole path, query included).
    void Answer(std::uint32_t method, const std::string& path, ScriptedAnswer answer);
    // Sets a resource to a JSON value; subscribers of its event get a Create
    // (a new resource) or an Update on the next turn.
    void SetResource(const std::string& uri, std::string_view json);
    // Removes a resource; subscribers get a Delete on the next turn.
    void DeleteResource(const std::string& uri);
    void ScriptServer(const std::string& destination, const std::string& method, ServerAnswer answer);
    void UnscriptServer(const std::string& destination, const std::string& method);
    void UnscriptServer() { server_.UnscriptAll(); }
    // Answers the server calls that no script answers.
    void SetServerResponder(ServerResponder responder) { server_.SetResponder(std::move(responder)); }
    // Queues a message that the server pushed, with a body of JSON text.
    void PushServerMessage(const std::string& typeName, std::string_view body);
    // Queues an event with a payload of JSON text.
    void QueueEvent(const std::string& name, std::string_view payload);
    // Hands the subscribers of name a payload at once, as it is.
    void DeliverNow(const std::string& name, const HostValue& payload);

    // ---- The loop ----------------------------------------------------------

    void RunTurn() { loop_.RunTurn(); }
    bool Idle() const { return loop_.Idle(); }
    // Runs at the start of every turn, inside the plug-in's waits too.
    void SetTurnHook(std::function<void()> hook) { loop_.SetTurnHook(std::move(hook)); }
    void MoveClockTo(double now) { loop_.MoveClockTo(now); }
    std::size_t RunUntilIdle(std::size_t maxTurns = 100) { return loop_.RunUntilIdle(maxTurns); }
    void AdvanceClock(double seconds) { loop_.AdvanceClock(seconds); }
    double Now() const { return loop_.Now(); }
    // Makes the server answers that a fault's delay holds due now; answers
    // "destination.method" of each and the seconds it had still to wait.
    std::vector<std::pair<std::string, double>> ReleaseHeldAnswers() { return loop_.ReleaseHeldAnswers(); }

    // ---- The plug-in's API -------------------------------------------------

    EndpointAnswer CallEndpoint(std::uint32_t method, const std::string& pathWithQuery, const std::string& body = {},
                                const std::string& contentType = {});
    // The methods that the started plug-in serves on path (without its query); none before it starts.
    std::vector<std::string> AllowedMethods(std::string_view path) const {
        return routes_ ? routes_->AllowedMethods(path) : std::vector<std::string>();
    }

    // ---- What happened -----------------------------------------------------

    const HostRecords& Records() const { return records_; }
    // Told of every event the plug-in sends, as it is recorded.
    void SetEventListener(std::function<void(const RecordedEvent&)> listener) { eventListener_ = std::move(listener); }
    // The current value of a resource; null when there is none.
    const wex::BindingProperty* Resource(const std::string& uri) const;
    const std::map<std::string, wex::BindingProperty, std::less<>>& Resources() const { return resources_; }
    // What the plug-in asked and how it was answered, told for people; the HTTP threads add to it too.
    Journal& HostJournal() { return journal_; }
    void ClearRecords() { records_ = HostRecords(); }
    // Forgets the journals and the server calls, what GET /devhost/journal shows.
    void ClearJournal();
    // Keeps at most limit entries in each list of the records and in the journal: one that would hold more
    // drops its oldest tenth. 0, the default, keeps everything.
    void SetRecordLimit(std::size_t limit) {
        recordLimit_ = limit;
        journal_.SetLimit(limit);
    }
    // Subscriptions in place now, by event name.
    std::size_t SubscriberCount(const std::string& name) const;
    // Responses of any simulated host that the plug-in has not released yet.
    static std::size_t UnreleasedResponses();
    // The streams handed out, in order; they live as long as the host.
    const std::vector<std::unique_ptr<ScriptedStream>>& Streams() const { return streams_; }

  private:
    struct Subscriber {
        std::string name;
        std::uint32_t hostContext;
        HostEventCallback callback;
        void* userData;
    };
    // The table the plug-in sees, followed by the way back to its owner.
    struct Table {
        CoreApi api;
        SimulatedHost* owner;
    };
    static SimulatedHost& Owner(const CoreApi* api);

    void OnSendRequest(HostResponse& response, const HostRequest& request);
    void OnSendEvent(const HostEvent& event);
    void OnSubscribe(const char* name, std::uint32_t hostContext, HostEventCallback callback, void* userData,
                     std::uint32_t flag);
    void OnUnsubscribe(const char* name, std::uint32_t hostContext);
    void OnSchedule(const char* label, HostScheduledCallback callback, void* userData, double delaySeconds);
    void OnYield();

    void RemoveSubscriber(const std::string& name, std::uint32_t hostContext);

    void Respond(HostResponse& response, const RecordedRequest& request,
                 const std::vector<wex::BindingProperty>& arguments);
    void Fill(HostResponse& response, const ScriptedAnswer& answer);
    // Records the call and asks the game server.
    ServerAnswer CallServer(std::string_view destination, std::string_view method,
                            const wex::BindingProperty& arguments);
    void Invoke(HostResponse& response, const std::vector<wex::BindingProperty>& arguments);
    void StartServiceProxyCall(HostResponse& response, const std::vector<wex::BindingProperty>& arguments,
                               bool uuidRequest);
    void Deliver(const std::string& name, const wex::BindingProperty& payload);
    template <typename T>
    void Record(std::vector<T>& list, T entry);
    void PublishResourceChange(const std::string& uri, const char* eventType, const wex::BindingProperty& data);
    // The journal's entry of a server call, finished when its answer arrives (at once for a synchronous one).
    void JournalServerCall(std::string_view destination, std::string_view method, const wex::BindingProperty& arguments,
                           const ServerAnswer& answer, const std::string& uuid, std::string_view answeredMethod);
    void JournalServerAnswer(const wex::BindingProperty& payload, bool uuidEvent);
    void JournalWait(const char* label);
    void JournalEndWait();

    // A service-proxy call whose answer the journal awaits.
    struct PendingServerCall {
        std::string uuid;
        std::string service;
        std::string answeredMethod;
        std::string call;  // "destination.method"
        std::uint64_t entry;
        std::int64_t startMs;
    };
    struct OpenWait {
        std::string subject;
        std::int64_t startMs;
        std::size_t yields;
    };

    Table table_{};
    PluginStartInfo startInfo_{};
    std::optional<EndpointRoutes> routes_;  // of the started plug-in's API table
    HostLoop loop_;
    HostRecords records_;
    std::size_t recordLimit_ = 0;
    std::vector<Subscriber> subscribers_;
    std::map<std::pair<std::uint32_t, std::string>, ScriptedAnswer> answers_;
    std::map<std::string, wex::BindingProperty, std::less<>> resources_;
    GameServer server_;
    std::uint64_t nextUuid_ = 1;
    std::vector<std::unique_ptr<ScriptedStream>> streams_;
    std::function<void(const RecordedEvent&)> eventListener_;
    Journal journal_;
    std::deque<PendingServerCall> pendingServerCalls_;
    std::vector<OpenWait> openWaits_;
};

}  // namespace tav::host
