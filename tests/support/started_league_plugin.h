#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host_record_lines.h"
#include "plugin_library.h"
#include "simulated_host.h"

namespace tav::test {

// The built plug-in, opened as a shared library, loaded through its one entry
// and started by a simulated host whose game server answers service-proxy
// calls a few host turns after they were made, so every wait of the plug-in is
// a real one.
class StartedLeaguePlugin {
  public:
    static constexpr int kServerTurns = 3;
    static constexpr const char* kLoginSession = "/tav-login/v1/session";
    static constexpr const char* kLeagueServiceEnabled =
        "/tav-platform-config/v1/namespaces/ClientSystemStates/leagueServiceEnabled";

    // Loads the library and, unless told otherwise, starts it.
    explicit StartedLeaguePlugin(bool start = true) {
        if (library_.Open(TAV_PLUGIN_PATH) && library_.Load(host::CoreVersion{}) && start) {
            Start();
        }
    }
    // Starts the loaded library; it reads the resources set before at once.
    void Start() { started_ = library_.loaded() && host_.Start(library_); }
    ~StartedLeaguePlugin() {
        if (library_.loaded()) {
            host_.Stop(library_);
        }
    }
    StartedLeaguePlugin(const StartedLeaguePlugin&) = delete;
    StartedLeaguePlugin& operator=(const StartedLeaguePlugin&) = delete;

    // False, with the reason in error(), when the library could not be started.
    bool started() const { return started_; }
    const std::string& error() const { return library_.error(); }
    host::SimulatedHost& host() { return host_; }
    const host::HostRecords& records() const { return host_.Records(); }

    // ---- The platform ------------------------------------------------------

    // Sets a resource and lets the plug-in see the change.
    void SetResource(const std::string& uri, std::string_view json) {
        host_.SetResource(uri, json);
        host_.RunUntilIdle();
    }
    void DeleteResource(const std::string& uri) {
        host_.DeleteResource(uri);
        host_.RunUntilIdle();
    }
    void LogIn(std::uint64_t summonerId, std::uint64_t accountId) {
        SetResource(kLoginSession, R"({"state":"SUCCEEDED","summonerId":)" + std::to_string(summonerId) +
                                       R"(,"accountId":)" + std::to_string(accountId) + "}");
    }
    void SetLeagueService(bool enabled) { SetResource(kLeagueServiceEnabled, enabled ? "true" : "false"); }

    // ---- The game server ---------------------------------------------------

    void ScriptServer(const std::string& destination, const std::string& method, const std::string& className,
                      std::string_view json) {
        host_.ScriptServer(destination, method, host::ServerAnswer::Json(className, json, kServerTurns));
    }
    void FailServer(const std::string& destination, const std::string& method, const std::string& error) {
        host_.ScriptServer(destination, method, host::ServerAnswer::Failure(error, 500, kServerTurns));
    }

    // ---- The plug-in's API -------------------------------------------------

    host::EndpointAnswer Get(const std::string& pathWithQuery) {
        return host_.CallEndpoint(HostMethodGet, pathWithQuery);
    }

    // ---- What the plug-in did ----------------------------------------------

    std::vector<std::string> ServerCalls() const { return test::ServerCalls(host_.Records()); }
    std::vector<std::string> WarningAndErrorLines() const { return test::WarningAndErrorLines(host_.Records()); }

  private:
    host::SimulatedHost host_;
    host::PluginLibrary library_;
    bool started_ = false;
};

}  // namespace tav::test
