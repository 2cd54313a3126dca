#pragma once

#include "boundary/boundary.h"
#include "module/leagues_module.h"
#include "plugin/app_module.h"
#include "types/registry.h"

namespace Orvel::Client::Leagues::test {

// The league module after its load sequence, with everything it registered;
// stopped (and so deleted) with the fixture.
class LoadedModule {
  public:
    LoadedModule() {
        info_.major = 18;
        module_ = static_cast<LeaguesModule*>(wex::LoadPlugin<LeaguesModule>(&info_));
    }
    ~LoadedModule() {
        if (module_ != nullptr) {
            info_.callbacks->Stop(info_.context);
        }
    }
    LoadedModule(const LoadedModule&) = delete;
    LoadedModule& operator=(const LoadedModule&) = delete;

    LeaguesModule& Module() const { return *module_; }
    const wex::BindingTypeRegistry& Registry() const { return *module_->TypeRegistry(); }

  private:
    PluginLoadInfo info_{};
    LeaguesModule* module_ = nullptr;
};

}  // namespace Orvel::Client::Leagues::test
