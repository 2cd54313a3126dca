#pragma once

#include <atomic>
#include <ostream>
#include <string>

#include "plugin_library.h"

namespace tav::host {

struct ServeOptions {
    std::string pluginPath;
    CoreVersion coreVersion;
    std::string worldPath;  // empty: the embedded demo world
    std::string address = "127.0.0.1";
    int port = 8437;            // 0: any free port
    std::string explorerFiles;  // the folder of the swagger-ui-dist package
    bool quiet = false;         // no line per request
};

// Loopback addresses serve without a token; any other needs one.
bool IsLoopback(const std::string& address);

// Starts the plug-in on the world, serves it over HTTP until stop becomes
// true, then stops the plug-in and prints its memory counters. Returns the
// process exit code.
int Serve(const ServeOptions& options, const std::atomic<bool>& stop, std::ostream& out, std::ostream& err);

}  // namespace tav::host
