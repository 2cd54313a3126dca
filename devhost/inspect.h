#pragma once

#include <ostream>
#include <string>

#include "plugin_library.h"

namespace tav::host {

struct InspectOptions {
    std::string pluginPath;
    CoreVersion coreVersion;
};

// Prints the counters of a plug-in's memory accounting, one per line.
void PrintMemory(std::ostream& out, const MemoryCounters& memory);

// Loads, starts and stops the plug-in with a simulated host that holds no
// resources, and prints what the plug-in handed over. Returns the process exit code.
int Inspect(const InspectOptions& options, std::ostream& out);

}  // namespace tav::host
