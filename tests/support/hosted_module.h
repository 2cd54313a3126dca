#pragma once

#include <cstdint>

#include "plugin/app_module.h"
#include "plugin_library.h"
#include "simulated_host.h"

namespace tav::test {

// A module loaded through its entry, as the platform loads a plug-in, and
// started with a simulated host; stopped (and so deleted) with the fixture.
template <class Module>
class HostedModule {
  public:
    explicit HostedModule(host::CoreVersion version = {}, std::uint32_t hostContext = 7) : host_(hostContext) {
        library_.UseEntry(&wex::LoadPlugin<Module>);
        library_.Load(version);
    }
    ~HostedModule() { Stop(); }
    HostedModule(const HostedModule&) = delete;
    HostedModule& operator=(const HostedModule&) = delete;

    bool Start() { return host_.Start(library_); }
    void Stop() {
        if (library_.loaded()) {
            host_.Stop(library_);
        }
    }

    Module& module() const { return *static_cast<Module*>(library_.loadInfo().context); }
    host::SimulatedHost& host() { return host_; }
    const host::HostRecords& records() const { return host_.Records(); }
    const PluginLoadInfo& loadInfo() const { return library_.loadInfo(); }

  private:
    host::SimulatedHost host_;
    host::PluginLibrary library_;
};

}  // namespace tav::test
