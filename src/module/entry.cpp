// The plug-in's one export.
#include "boundary/boundary.h"
#include "module/leagues_module.h"
#include "platform/dynamic_library.h"
#include "plugin/app_module.h"

extern "C" TAV_LIBRARY_EXPORT void* load_tav_leagues(PluginLoadInfo* info) {
    return wex::LoadPlugin<Orvel::Client::Leagues::LeaguesModule>(info);
}
