// The plug-in's one export.
#include "leagues/leagues_module.h"
#include "platform/library_export.h"
#include "boundary/boundary.h"
#include "plugin/plugin_loader.h"

extern "C" TAV_LIBRARY_EXPORT void* load_tav_leagues(PluginLoadInfo* info) {
    return wex::LoadPlugin<Orvel::Client::Leagues::LeaguesModule>(info);
}
