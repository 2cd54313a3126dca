#include "support/recording_core.h"

namespace tav::test {

RecordingCore& RecordingCore::Owner(const CoreApi* api) { return *reinterpret_cast<const Table*>(api)->owner; }

RecordingCore::RecordingCore() {
    table_.owner = this;
    CoreApi& api = table_.api;
    api.SendRequest = [](const CoreApi* self, HostResponse* response, const HostRequest* request) {
        Owner(self).requests.push_back(request->path != nullptr ? request->path : "");
        *response = HostResponse{};
        response->error = "not found";
        response->status = 404;
    };
    api.CoreEntry1 = [](const CoreApi*, std::uint32_t first, std::uint32_t second) { return first + second; };
    api.SendEvent = [](const CoreApi*, const HostEvent*) {};
    api.SubscribeHostEvent = [](const CoreApi* self, const char* name, std::uint32_t, HostEventCallback, void*,
                                 std::uint32_t) { Owner(self).subscriptions.push_back(name); };
    api.UnsubscribeHostEvent = [](const CoreApi* self, const char* name, std::uint32_t) {
        Owner(self).unsubscriptions.push_back(name);
    };
    api.ScheduleCallback = [](const CoreApi*, const char*, HostScheduledCallback, void*, double, std::uint32_t) {};
    api.YieldToHost = [](const CoreApi*) {};
    api.BeginWait = [](const CoreApi*, const char*, std::uint32_t) {};
    api.EndWait = [](const CoreApi*) {};
    api.Log = [](const CoreApi* self, std::int32_t level, const char* text) {
        Owner(self).logLines.push_back({level, text});
    };
}

}  // namespace tav::test
