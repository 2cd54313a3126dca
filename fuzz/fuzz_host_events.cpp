// Delivers arbitrary host events to a module: the first byte picks the event
// (a resource change, a server message or a service-proxy answer), the rest
// is the payload as JSON text. Any payload must be handled or dropped, and
// scheduled server-message handlers must run and leave.
#include <cstdint>
#include <string>
#include <vector>

#include "types/host_value.h"
#include "codec/json_reader.h"
#include "diagnostics/log_system.h"
#include "plugin/app_module.h"

namespace {

using wex::BindingProperty;
using wex::PluginLcdsEvent;
using wex::PluginResourceEventType;

struct Thing {
    std::string name;
    std::vector<std::int32_t> counts;
};

// A module whose host is this target: it keeps the delivery and scheduling
// callbacks and answers every request with the uuid "u1".
class FuzzModule : public wex::AppModule {
  public:
    FuzzModule() : AppModule("tav-fuzz") {}

    void RegisterRoutesAndTypes() override {
        TypeRegistry()->Struct<Thing>("Thing").Field("name", &Thing::name).Field("counts", &Thing::counts);
    }

    void SendRequest(HostResponse& response, const HostRequest& /*request*/) override {
        response = HostResponse{};
        response.result.tag = HostValueBorrowedString;
        response.result.payload.ref.data = "u1";
    }
    std::uint32_t CoreEntry1(std::uint32_t, std::uint32_t) override { return 0; }
    void SendEvent(const HostEvent&) override {}
    void SubscribeHostEvent(const char*, std::uint32_t, HostEventCallback callback, void* userData,
                            std::uint32_t) override {
        deliver = callback;
        self = userData;
    }
    void UnsubscribeHostEvent(const char*, std::uint32_t) override {}
    void ScheduleCallback(const char*, HostScheduledCallback callback, void* userData, double, std::uint32_t) override {
        scheduled.push_back({callback, userData});
    }
    void YieldToHost() override {}
    void BeginWait(const std::string&, std::uint32_t) override {}
    void EndWait() override {}

    struct Scheduled {
        HostScheduledCallback callback;
        void* userData;
    };
    HostEventCallback deliver = nullptr;
    void* self = nullptr;
    std::vector<Scheduled> scheduled;
};

// A fresh module per input, so that answers kept for calls that never come
// do not pile up from one input to the next.
FuzzModule* LoadModule() {
    PluginLoadInfo info{};
    info.major = 18;
    auto* module = static_cast<FuzzModule*>(wex::LoadPlugin<FuzzModule>(&info));
    // The module's log system lives as long as the module.
    wex::DisableLogging();
    module->RegisterServiceProxyHandlers();
    module->Observe<Thing>("/fuzz/v1/thing", [](PluginResourceEventType, const Thing&) {});
    module->Observe<BindingProperty>("/fuzz/v1/items/*", [](PluginResourceEventType, const BindingProperty&) {});
    module->SubscribeLcdsEvent("com.fuzz.Message", [](const PluginLcdsEvent&) {});
    // A call in flight, for uuid answers to complete.
    (void)module->CallService<Thing>("fuzz", "get", 0);
    return module;
}

constexpr const char* kEvents[] = {"OnJsonApiEvent_fuzz_v1_thing", "OnJsonApiEvent_fuzz_v1_items",
                                   "OnLcdsEvent_com_fuzz_Message", "OnServiceProxyUuidEvent",
                                   "OnServiceProxyMethodEvent",    "OnServiceProxyAsyncEvent"};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    FuzzModule& module = *LoadModule();
    const BindingProperty payload = wex::ParseJson(std::string(reinterpret_cast<const char*>(data) + 1, size - 1));
    HostValue value{};
    if (payload.IsValid() && wex::BindingToHostValue(payload, value, module.TypeRegistry())) {
        HostEvent event{};
        event.name = kEvents[data[0] % std::size(kEvents)];
        event.payload = value;
        event.userData = module.self;
        module.deliver(&event);
        wex::ReleaseHostValue(value);
        for (const FuzzModule::Scheduled& entry : std::vector<FuzzModule::Scheduled>(module.scheduled)) {
            entry.callback(entry.userData);
        }
    }
    module.Callbacks().Stop(&module);
    return 0;
}
