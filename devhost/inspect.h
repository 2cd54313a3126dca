#pragma once

#include <ostream>
#include <string>

#include "plugin_library.h"

namespace tav::host {

struct InspectOptions {
    std::string pluginPath;
    CoreVersion coreVersion;
};

// Loads, starts and stops the plug-in with a simulated host that holds no
// resources, and prints what the plug-in handed over. Returns the process exit code.
int Inspect(const InspectOptions& options, std::ostream& out);

}  // namespace tav::host
