#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "http_answer.h"
#include "league_world.h"
#include "plugin_library.h"
#include "simulated_host.h"
#include "world_platform.h"
#include "world_server.h"

namespace tav::host {

// One run of the plug-in on a simulated platform and game server played
// from a league world: what tav-host serves over HTTP and what scenarios
// drive. Everything here runs on the host's one thread.
class HostSession {
  public:
    explicit HostSession(std::shared_ptr<const LeagueWorld> world);
    HostSession(const HostSession&) = delete;
    HostSession& operator=(const HostSession&) = delete;
    ~HostSession() { Stop(); }

    // Loads the plug-in from path with the core version, sets up the world's
    // platform, starts the plug-in and then, when the world says so, logs the
    // player in; false with Error() saying why.
    bool Start(const std::string& pluginPath, const CoreVersion& version);
    // Stops the plug-in, if it runs; the library stays open for its counters.
    void Stop();
    const std::string& Error() const { return error_; }
    bool Started() const { return started_; }

    // Calls a route of the plug-in through its API table.
    HttpAnswer CallRoute(std::string_view method, const std::string& pathWithQuery, const std::string& body = {},
                         const std::string& contentType = {});

    SimulatedHost& Host() { return host_; }
    WorldServer& Server() { return server_; }
    WorldPlatform& Platform() { return platform_; }
    const PluginLibrary& Library() const { return library_; }

  private:
    std::shared_ptr<const LeagueWorld> world_;
    PluginLibrary library_;
    SimulatedHost host_;
    WorldServer server_;
    WorldPlatform platform_;
    bool started_ = false;
    std::string error_;
};

}  // namespace tav::host
