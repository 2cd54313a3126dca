#include "plugin/app_module.h"

#include <cstdlib>
#include <exception>
#include <mutex>

#include "api/route_table.h"
#include "diagnostics/assertion.h"
#include "diagnostics/format_message.h"
#include "diagnostics/log_target.h"
#include "diagnostics/log_system.h"
#include "platform/event_tracing.h"
#include "platform/memory_accounting.h"
#include "plugin/framework_types.h"
#include "types/api_description.h"
#include "types/registry.h"

namespace wex {

bool PluginLogTarget::Write(const LogRecord& record) {
    char line[4096];
    {
        std::lock_guard<std::recursive_mutex> lock(Mutex());
        FormatLine(Pattern(record), record, line, sizeof line);
    }
    api_->Log(api_, static_cast<std::int32_t>(record.level), line);
    return true;
}

AppModule::LogSystemReference::LogSystemReference() {
    AcquireLogSystem();
}

AppModule::LogSystemReference::~LogSystemReference() {
    ReleaseLogSystem();
}

AppModule::AppModule(std::string shortName)
    : constructedName_(std::move(shortName)), callbacks_{&StartCallback, &StopCallback, &MemoryStatsCallback} {
    typeRegistry_ = &registry_;
    RegisterBuiltinTypes(registry_);
}

AppModule::~AppModule() {
    platform::UnregisterEventTracing();
}

void AppModule::Load(PluginLoadInfo& info) {
    const ApiVersion own = PluginApiVersion();
    const ApiVersion core{info.major, info.minor, info.patch, {}, {}};
    if (!IsCompatible(own, core)) {
        const std::string text =
            FormatMessage("%1 which supports plugin API %2 is not compatible with core's plugin API %3",
                          {constructedName_, own.ToString(), core.ToString()});
        LogMessage(LogLevel::Error, LogCategory::Dbg, "%s", text.c_str());
        ReportAssertion("ALE-EECF0606", "", "", 0, "");
        std::abort();
    }
    platform::RegisterEventTracing();
    hostApiVersion_ = core;
    pluginName_ = MakePluginName(constructedName_, kBackendPluginType);
    apiTags_ = {"Plugins", "Plugin " + pluginName_.shortName};
    typeNamespace_ = MakeIdentifier(pluginName_.shortName);
    RegisterFrameworkTypes(registry_);
    RegisterRoutesAndTypes();
    apiTable_.Build(registry_, routes_.Routes(), this);
    state_ = ModuleState::Registered;

    info.major = own.major;
    info.minor = own.minor;
    info.patch = own.patch;
    info.callbacks = &callbacks_;
    info.context = this;
    info.shortName = pluginName_.shortName.c_str();
    info.apiTable = &apiTable_.Table();
}

bool AppModule::Start(const PluginStartInfo* info) {
    if (info == nullptr || info->api == nullptr) {
        return false;
    }
    startInfo_ = info;
    if (FindActiveTarget("PluginLogTarget") == nullptr) {
        AttachLogToHost(info->api);
    }
    const std::string userAgent = FormatMessage("OrvelClient/%1 (%2)", {hostApiVersion_.ToString(), ShortName()});
    Connect(info->hostContext, ShortName(), userAgent);
    telemetry_ = std::make_unique<TelemetrySender>(*this);
    RegisterServiceProxyHandlers();
    state_ = ModuleState::Started;
    return OnStart();
}

void AppModule::AttachLogToHost(const CoreApi* api) {
    const BuiltinLogTargets builtins = GetBuiltinLogTargets();
    for (LogTargetInterface* target : {builtins.standardError, builtins.standardOutput, builtins.debugger}) {
        target->Deactivate(target);
    }
    SetMinimumLevel(LogLevel::Okay);
    SetExcludedCategories(LogCategory::Xtr);
    logTarget_ = std::make_unique<PluginLogTarget>(api);
    ConfigureTarget(*logTarget_, LogTargetConfiguration{MinimumLevel(), 0, 0, "#D| #L| #G| #M"});
}

void AppModule::RegisterRoutesAndTypes() {}

ApiArgumentBuilder AppModule::AddRouteWith(std::uint32_t method, std::string_view pathTemplate,
                                           std::shared_ptr<const ApiFunctionHandler> handler) {
    BindingFunctionInfo function;
    function.nameSpace = typeNamespace_;
    function.tags = apiTags_;
    function.handler = std::move(handler);
    return routes_.AddRoute(registry_, method, pathTemplate, std::move(function));
}

bool AppModule::OnStart() {
    return true;
}

// ---- The host's functions -------------------------------------------------

void AppModule::SendRequest(HostResponse& response, const HostRequest& request) {
    if (startInfo_ != nullptr) {
        startInfo_->api->SendRequest(startInfo_->api, &response, &request);
    }
}

std::uint32_t AppModule::CoreEntry1(std::uint32_t first, std::uint32_t second) {
    return startInfo_ != nullptr ? startInfo_->api->CoreEntry1(startInfo_->api, first, second) : 0;
}

void AppModule::SendEvent(const HostEvent& event) {
    if (startInfo_ != nullptr) {
        startInfo_->api->SendEvent(startInfo_->api, &event);
    }
}

void AppModule::SubscribeHostEvent(const char* name, std::uint32_t hostContext, HostEventCallback callback,
                                   void* userData, std::uint32_t flag) {
    if (startInfo_ != nullptr) {
        startInfo_->api->SubscribeHostEvent(startInfo_->api, name, hostContext, callback, userData, flag);
    }
}

void AppModule::UnsubscribeHostEvent(const char* name, std::uint32_t hostContext) {
    if (startInfo_ != nullptr) {
        startInfo_->api->UnsubscribeHostEvent(startInfo_->api, name, hostContext);
    }
}

void AppModule::ScheduleCallback(const char* label, HostScheduledCallback callback, void* userData, double delaySeconds,
                                 std::uint32_t flag) {
    if (startInfo_ != nullptr) {
        startInfo_->api->ScheduleCallback(startInfo_->api, label, callback, userData, delaySeconds, flag);
    }
}

void AppModule::YieldToHost() {
    if (startInfo_ != nullptr) {
        startInfo_->api->YieldToHost(startInfo_->api);
    }
}

void AppModule::BeginWait(const std::string& label, std::uint32_t zero) {
    if (startInfo_ != nullptr) {
        startInfo_->api->BeginWait(startInfo_->api, label.c_str(), zero);
    }
}

void AppModule::EndWait() {
    if (startInfo_ != nullptr) {
        startInfo_->api->EndWait(startInfo_->api);
    }
}

// ---- The callbacks --------------------------------------------------------
// Nothing but records crosses the boundary: every exception stops here.

bool AppModule::StartCallback(void* context, const PluginStartInfo* info) noexcept {
    if (context == nullptr) {
        return false;
    }
    try {
        return static_cast<AppModule*>(context)->Start(info);
    } catch (const std::exception& error) {
        LogMessage(LogLevel::Error, LogCategory::Dbg, "Start failed: %s", error.what());
    } catch (...) {
        LogMessage(LogLevel::Error, LogCategory::Dbg, "Start failed");
    }
    return false;
}

void AppModule::StopCallback(void* context) noexcept {
    auto* module = static_cast<AppModule*>(context);
    if (module == nullptr) {
        return;
    }
    try {
        module->finalizing_ = true;
        module->state_ = ModuleState::Finalizing;
        module->Finalize();
        module->state_ = ModuleState::Finalized;
    } catch (...) {
        // The module goes away whatever Finalize met.
    }
    delete module;
}

void AppModule::MemoryStatsCallback(void* /*context*/, MemoryStats* out) noexcept {
    if (out != nullptr) {
        platform::MemoryAccounting::Library().Read(*out);
    }
}

}  // namespace wex
