// tav-host: the development host of the tav-leagues plug-in.
#include <CLI/CLI.hpp>

#include <iostream>

#include "inspect.h"

int main(int argc, char** argv) {
    CLI::App app{"tav-host: loads the tav-leagues plug-in as the platform's core process does."};
    app.require_subcommand(1);

    tav::host::InspectOptions inspect{TAV_DEFAULT_PLUGIN_PATH, {}};
    std::string coreVersion = inspect.coreVersion.ToString();
    CLI::App* inspectCommand =
        app.add_subcommand("inspect", "Load, start and stop the plug-in and print what it handed over");
    inspectCommand->add_option("--plugin", inspect.pluginPath, "Path of the plug-in library")
        ->capture_default_str();
    inspectCommand->add_option("--core-version", coreVersion, "Plug-in API version of the simulated core")
        ->capture_default_str();

    CLI11_PARSE(app, argc, argv);

    if (inspectCommand->parsed()) {
        const auto version = tav::host::ParseCoreVersion(coreVersion);
        if (!version) {
            std::cerr << "tav-host: --core-version takes major.minor.patch, for example 18.0.0, not '" << coreVersion
                      << "'\n";
            return 2;
        }
        inspect.coreVersion = *version;
        return tav::host::Inspect(inspect, std::cout);
    }
    return 0;
}
