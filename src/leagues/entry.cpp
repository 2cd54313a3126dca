#include "plugin/boundary.h"

// Work in progress: the load sequence arrives with the module.
extern "C" __attribute__((visibility("default"))) void* load_tav_leagues(PluginLoadInfo* /*info*/) { return nullptr; }
