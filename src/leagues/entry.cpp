// The plug-in's one export.
#include "leagues/leagues_module.h"
#include "plugin/boundary.h"
#include "plugin/plugin_loader.h"

extern "C" __attribute__((visibility("default"))) void* load_tav_leagues(PluginLoadInfo* info) {
    return wex::LoadPlugin<Orvel::Client::Leagues::LeaguesModule>(info);
}
