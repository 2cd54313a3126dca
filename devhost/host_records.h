#pragma once

#include <cstdint>
#include <string>

#include "boundary/boundary.h"
#include <utility>
#include <vector>

namespace tav::host {

// One request that the plug-in sent; its positional arguments as JSON texts.
struct RecordedRequest {
    std::uint32_t method = 0;
    std::string path;
    std::vector<std::string> arguments;
};

// One event that the plug-in sent; its payload as JSON text.
struct RecordedEvent {
    std::string name;
    std::string payload;
};

// The callbacks and their user data as the plug-in handed them over, so that
// a test can play a host that calls back when it should not.
struct RecordedSubscription {
    std::string name;
    std::uint32_t flag = 0;
    HostEventCallback callback = nullptr;
    void* userData = nullptr;
};

struct RecordedSchedule {
    std::string label;
    double delaySeconds = 0.0;
    HostScheduledCallback callback = nullptr;
    void* userData = nullptr;
};

// One call that the plug-in made on the game server, through any of the
// login plug-in's endpoints; its arguments as a JSON array.
struct RecordedServerCall {
    std::string destination;
    std::string method;
    std::string arguments;
};

struct RecordedLogLine {
    std::int32_t level = 0;
    std::string text;
    std::int64_t timeMs = 0;  // wall clock, milliseconds since 1970
};

// Everything the plug-in asked of the host, each kind in order. journal
// lists the calls of every kind but Log in the order they came, one line each:
// "SendRequest GET /x", "SendEvent OnJsonApiEvent", "SubscribeHostEvent OnX 1",
// "UnsubscribeHostEvent OnX", "ScheduleCallback label 0.5", "YieldToHost",
// "BeginWait label", "EndWait", "CoreEntry1 2 3".
struct HostRecords {
    std::vector<RecordedRequest> requests;
    std::vector<RecordedEvent> events;
    std::vector<RecordedSubscription> subscriptions;
    std::vector<std::string> unsubscriptions;
    std::vector<RecordedSchedule> schedules;
    std::vector<std::string> waits;  // the labels of BeginWait
    std::size_t endWaits = 0;
    std::size_t yields = 0;
    std::vector<RecordedLogLine> logLines;
    std::vector<RecordedServerCall> serverCalls;
    std::vector<std::string> journal;
};

}  // namespace tav::host
