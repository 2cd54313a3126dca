#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "plugin_library.h"

namespace tav::host {

struct ScenarioOptions {
    std::string pluginPath;
    CoreVersion coreVersion;
};

// What RunScenarios answers when every scenario was skipped because the
// plug-in lacks a route one of them requires (CTest's skip code).
constexpr int kScenariosSkipped = 77;

// Plays each scenario file (YAML: see README.md) on a fresh plug-in with the
// virtual clock, printing one line per step; a file ends at its first
// mismatch, and the next is played. Ends with the count of files passed,
// failed and skipped. Returns 0 when none failed, 1 on a mismatch or an
// unreadable file, and kScenariosSkipped when all were skipped.
int RunScenarios(const std::vector<std::string>& files, const ScenarioOptions& options, std::ostream& out);

}  // namespace tav::host
