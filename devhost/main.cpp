// tav-host: the development host of the tav-leagues plug-in.
#include <unistd.h>
#include <CLI/CLI.hpp>

#include <algorithm>
#include <atomic>
#include <csignal>
#include <iostream>

#include "inspect.h"
#include "scenario.h"
#include "serve.h"

namespace {

std::atomic<bool> stopRequested{false};

// A second interrupt quits at once, should stopping the plug-in hang.
extern "C" void RequestStop(int) {
    if (stopRequested.exchange(true)) {
        constexpr char kQuit[] = "tav-host: quit without stopping the plug-in\n";
        (void)!write(STDERR_FILENO, kQuit, sizeof kQuit - 1);
        _exit(130);
    }
}

// The options every subcommand shares: which library, which core version.
struct PluginOptions {
    std::string pluginPath = TAV_DEFAULT_PLUGIN_PATH;
    std::string coreVersion = "18.0.0";

    void AddTo(CLI::App& command) {
        command.add_option("--plugin", pluginPath, "Path of the plug-in library")->capture_default_str();
        command.add_option("--core-version", coreVersion, "Plug-in API version of the simulated core")
            ->capture_default_str();
    }
};

}  // namespace

int main(int argc, char** argv) {
    CLI::App app{
        "tav-host: runs the tav-leagues plug-in as the platform's core process does, against a simulated\n"
        "platform and game server played from a league world, and serves its routes over HTTP.\n"
        "Without a subcommand it serves the embedded demo world on http://127.0.0.1:8437."};
    app.require_subcommand(0, 1);
    PluginOptions plugin;

    tav::host::ServeOptions serve;
    CLI::App* serveCommand =
        app.add_subcommand("serve", "Serve the plug-in's routes over HTTP on a league world (the default)");
    plugin.AddTo(*serveCommand);
    serveCommand->add_option("--world", serve.worldPath,
                             "League world file (YAML); the embedded demo world if not given");
    serveCommand
        ->add_option("--address", serve.address,
                     "Address to listen on; any but a loopback address makes every request need the "
                     "access token printed at start")
        ->capture_default_str();
    serveCommand->add_option("--port", serve.port, "Port to listen on; 0 takes any free port")
        ->capture_default_str()
        ->check(CLI::Range(0, 65535));
    serve.explorerFiles = TAV_DEFAULT_EXPLORER_FILES;
    serveCommand
        ->add_option("--explorer-files", serve.explorerFiles,
                     "Folder of the swagger-ui-dist package for the API explorer (make deps installs it)")
        ->capture_default_str();
    serveCommand->add_flag("--quiet", serve.quiet, "Print no line per request");

    std::vector<std::string> scenarioFiles;
    CLI::App* scenarioCommand =
        app.add_subcommand("scenario",
                           "Play scenario files (YAML timelines with expectations) on the virtual clock; exit 1 on the "
                           "first mismatch, 77 when every scenario needs a route the plug-in lacks");
    plugin.AddTo(*scenarioCommand);
    scenarioCommand->add_option("files", scenarioFiles, "Scenario files")->required()->check(CLI::ExistingFile);

    CLI::App* inspectCommand = app.add_subcommand(
        "inspect", "Load, start and stop the plug-in and print what it handed over: its whole API table");
    plugin.AddTo(*inspectCommand);

    // Options without a subcommand are serve's: `tav-host --port 0`.
    std::vector<std::string> arguments(argv + 1, argv + argc);
    if (!arguments.empty() && arguments[0].rfind("--", 0) == 0 && arguments[0] != "--help") {
        arguments.insert(arguments.begin(), "serve");
    }
    std::reverse(arguments.begin(), arguments.end());
    try {
        app.parse(arguments);
    } catch (const CLI::ParseError& error) {
        return app.exit(error);
    }

    const auto version = tav::host::ParseCoreVersion(plugin.coreVersion);
    if (!version) {
        std::cerr << "tav-host: --core-version takes major.minor.patch, for example 18.0.0, not '" << plugin.coreVersion
                  << "'\n";
        return 2;
    }
    if (inspectCommand->parsed()) {
        return tav::host::Inspect({plugin.pluginPath, *version}, std::cout);
    }
    if (scenarioCommand->parsed()) {
        return tav::host::RunScenarios(scenarioFiles, {plugin.pluginPath, *version}, std::cout);
    }
    serve.pluginPath = plugin.pluginPath;
    serve.coreVersion = *version;
    std::signal(SIGINT, RequestStop);
    std::signal(SIGTERM, RequestStop);
    return tav::host::Serve(serve, stopRequested, std::cout, std::cerr);
}
