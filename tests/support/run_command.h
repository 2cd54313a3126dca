#pragma once

#include <string>

namespace tav::test {

struct CommandResult {
    int exitCode;
    std::string output;  // standard output and standard error, interleaved
};

// Runs a shell command and collects what it prints.
CommandResult RunCommand(const std::string& command);

}  // namespace tav::test
