#include "serve.h"

#include <iomanip>
#include <random>
#include <sstream>

#include "inspect.h"
#include "live_host.h"
#include "world_source.h"

namespace tav::host {

namespace {

std::string NewAccessToken() {
    std::random_device random;
    std::ostringstream token;
    for (int index = 0; index < 4; ++index) {
        token << std::hex << std::setw(8) << std::setfill('0') << random();
    }
    return token.str();
}

void PrintWelcome(std::ostream& out, const std::string& base, const std::string& token, const LeagueWorld& world) {
    const std::string auth = token.empty() ? "" : "-H 'Authorization: Bearer " + token + "' ";
    out << "Listening on " << base << '\n';
    const std::string query = token.empty() ? "" : "?token=" + token;
    out << "Dashboard: " << base << "/" << query << "\nAPI explorer: " << base << "/devhost/explorer" << query << '\n';
    if (!token.empty()) {
        out << "Access token: " << token << " (every request needs it)\n";
    }
    out << "Current player: " << world.Current().name << " (summoner " << world.currentPlayer << ")\n"
        << "Try:\n"
        << "  curl " << auth << base << "/tav-leagues/v1/summoner-leagues/" << world.currentPlayer << '\n'
        << "  curl " << auth << base << "/tav-leagues/v2/notifications\n"
        << "  curl " << auth << "-N " << base << "/devhost/events\n"
        << "  curl " << auth << "-X PUT -d '{\"phase\":\"ChampSelect\",\"queue\":\"RANKED_FLEX_SR\"}' " << base
        << "/devhost/gameflow\n"
        << "  curl " << auth << base << "/devhost/api\n"
        << "Stop with Ctrl-C." << std::endl;
}

}  // namespace

bool IsLoopback(const std::string& address) {
    return address.rfind("127.", 0) == 0 || address == "::1" || address == "localhost";
}

int Serve(const ServeOptions& options, const std::atomic<bool>& stop, std::ostream& out, std::ostream& err) {
    std::string error;
    const auto world = LoadWorld(options.worldPath, error);
    if (world == nullptr) {
        err << "tav-host: " << error << '\n';
        return 1;
    }
    HostSession session(world);
    GatewayOptions gateway;
    gateway.address = options.address;
    gateway.port = options.port;
    gateway.accessToken = IsLoopback(options.address) ? "" : NewAccessToken();
    gateway.explorerFiles = options.explorerFiles;
    gateway.requestLog = options.quiet ? nullptr : &out;
    // The port first: a taken one should not cost a start of the plug-in.
    LiveHost live(session, gateway);
    if (!live.Listen()) {
        err << "tav-host: cannot listen on " << options.address << " port " << options.port
            << ": another program has it, or the address is not this machine's (--port 0 takes any free port)\n";
        return 1;
    }
    if (!session.Start(options.pluginPath, options.coreVersion)) {
        err << "tav-host: " << session.Error() << '\n';
        return 1;
    }
    out << "Started " << options.pluginPath << " with core plugin API " << options.coreVersion.ToString() << '\n';
    const std::string host =
        options.address.find(':') != std::string::npos ? "[" + options.address + "]" : options.address;
    PrintWelcome(out, "http://" + host + ":" + std::to_string(live.Port()), gateway.accessToken, *world);
    live.Run(stop, out);
    session.Stop();
    out << "Stopped. Memory after stop:\n";
    PrintMemory(out, session.Library().Memory());
    return 0;
}

}  // namespace tav::host
