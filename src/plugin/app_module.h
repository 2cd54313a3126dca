#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "api/native_handler.h"
#include "api/packed_api_table.h"
#include "api/route_table.h"
#include "boundary/boundary.h"
#include "diagnostics/log_target.h"
#include "host/plugin_base.h"
#include "plugin/plugin_identity.h"
#include "types/registry.h"

namespace wex {

// Forwards the plug-in's log to the host's Log function once the module has
// started: each record becomes one line in the target's pattern.
class PluginLogTarget : public LogTarget {
  public:
    explicit PluginLogTarget(const CoreApi* api) : api_(api) {}

    const char* TypeName() const override { return "PluginLogTarget"; }
    bool Write(const LogRecord& record) override;

  private:
    const CoreApi* api_;  // owned by the host, valid until Stop
};

class TelemetrySender;

enum class ModuleState { Constructed, Registered, Started, Finalizing, Finalized };

// The base of every plug-in module: its identity, its type registry, its
// connection to the host and the three callbacks the host calls. The host
// holds one module per loaded plug-in through the context pointer. [host-thread]
class AppModule : public PluginBase {
  public:
    // Construction talks to nobody; it takes a reference on the log system.
    explicit AppModule(std::string shortName);
    ~AppModule() override;

    // The host's functions; each does nothing (and answers 0) before Start.
    void SendRequest(HostResponse& response, const HostRequest& request) override;
    std::uint32_t CoreEntry1(std::uint32_t first, std::uint32_t second) override;
    void SendEvent(const HostEvent& event) override;
    void SubscribeHostEvent(const char* name, std::uint32_t hostContext, HostEventCallback callback, void* userData,
                            std::uint32_t flag) override;
    void UnsubscribeHostEvent(const char* name, std::uint32_t hostContext) override;
    void ScheduleCallback(const char* label, HostScheduledCallback callback, void* userData, double delaySeconds,
                          std::uint32_t flag) override;
    void YieldToHost() override;
    void BeginWait(const std::string& label, std::uint32_t zero) override;
    void EndWait() override;

    // Registers the module's own types and routes; called once while loading.
    virtual void RegisterRoutesAndTypes();
    // Module start-up once the host connection exists; its answer is Start's.
    virtual bool OnStart();

    // Registers a route of the module's local API, one line each:
    //   AddRoute(HostMethodGet, "/tav-leagues/v1/summoner-leagues/{summonerId}", &LeaguesModule::GetSummonerLeagues)
    //       .AddPathArgument("summonerId", "");
    // handler is a member function of the module or a callable; it answers
    // MaybeType<Failure, T> (a failure's code is the status), MaybeType<Failure, void>
    // or ApiResponse. The function takes the module's API tags and type namespace.
    template <class Handler>
    ApiArgumentBuilder AddRoute(std::uint32_t method, std::string_view pathTemplate, Handler handler) {
        if constexpr (std::is_member_function_pointer_v<Handler>) {
            return AddRouteWith(method, pathTemplate, MakeApiHandler(*this, handler));
        } else {
            return AddRouteWith(method, pathTemplate, MakeApiHandler(std::move(handler)));
        }
    }

    // The load sequence after construction: version check (an incompatible
    // core ends the process), names, registrations, API table, and the
    // load record filled for the host.
    void Load(PluginLoadInfo& info);

    const std::string& ShortName() const { return pluginName_.shortName; }
    const std::string& FullName() const { return pluginName_.fullName; }
    const std::string& TypeNamespace() const { return typeNamespace_; }
    const std::vector<std::string>& ApiTags() const { return apiTags_; }
    const ApiVersion& HostApiVersion() const { return hostApiVersion_; }
    const PluginStartInfo* StartInfo() const { return startInfo_; }
    const PluginCallbacks& Callbacks() const { return callbacks_; }
    // Null before Start.
    TelemetrySender* Telemetry() const { return telemetry_.get(); }
    const HostApiTable& ApiTable() const { return apiTable_.Table(); }
    RouteList Routes() const { return routes_.Routes(); }
    ModuleState State() const { return state_; }

  private:
    ApiArgumentBuilder AddRouteWith(std::uint32_t method, std::string_view pathTemplate,
                                    std::shared_ptr<const ApiFunctionHandler> handler);
    bool Start(const PluginStartInfo* info);
    void AttachLogToHost(const CoreApi* api);

    static bool StartCallback(void* context, const PluginStartInfo* info) noexcept;
    static void StopCallback(void* context) noexcept;
    static void MemoryStatsCallback(void* context, MemoryStats* out) noexcept;

    // Holds the module's reference on the log system; declared first so that
    // it is released after every other member (the log target among them).
    struct LogSystemReference {
        LogSystemReference();
        ~LogSystemReference();
    } logSystemReference_;

    std::string constructedName_;
    ApiVersion hostApiVersion_;
    std::unique_ptr<PluginLogTarget> logTarget_;
    PluginName pluginName_;
    std::string typeNamespace_;
    std::vector<std::string> apiTags_;
    BindingTypeRegistry registry_;
    const PluginStartInfo* startInfo_ = nullptr;
    std::unique_ptr<TelemetrySender> telemetry_;
    PluginCallbacks callbacks_;
    RouteTable routes_;
    PackedApiTable apiTable_;
    ModuleState state_ = ModuleState::Constructed;
};

// The body of a plug-in's exported entry: builds the module and runs its load
// sequence. A missing load record or any failure while loading gives null.
template <class Module>
void* LoadPlugin(PluginLoadInfo* info) noexcept {
    if (info == nullptr) {
        return nullptr;
    }
    try {
        auto module = std::make_unique<Module>();
        module->Load(*info);
        return module.release();
    } catch (...) {
        return nullptr;
    }
}

}  // namespace wex
