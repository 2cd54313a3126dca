#pragma once

#include "plugin/app_module.h"

namespace Orvel::Client::Leagues {

// The league plug-in's module: its types and routes, the watched state and
// the league logic on top of the framework.
class LeaguesModule : public wex::AppModule {
public:
    LeaguesModule();
    ~LeaguesModule() override;

    void RegisterRoutesAndTypes() override;
    bool OnStart() override;
};

}  // namespace Orvel::Client::Leagues
