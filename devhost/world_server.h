#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "binding/property.h"
#include "game_server.h"
#include "league_world.h"

namespace tav::host {

// A fault set on one server method; it changes the world's answer to every
// call of that method until it is cleared.
struct ServerFault {
    std::string error;           // not empty: the call fails with this text
    std::uint32_t status = 500;  // of a failing synchronous call
    double delaySeconds = 0.0;   // a service-proxy answer comes this much later on the host's clock
    std::string className;       // not empty: the answer claims this server class
    bool malformed = false;      // the answer's payload is not JSON
};

// The game server of a league world: every destination and method that the
// plug-in calls, answered with server-shaped values and their class names.
class WorldServer {
  public:
    // clock: seconds since 1970, for the expiry of signed tokens.
    explicit WorldServer(std::shared_ptr<const LeagueWorld> world, std::function<std::int64_t()> clock = {});

    ServerAnswer Answer(std::string_view destination, std::string_view method, const wex::BindingProperty& arguments);

    // The next signed standings handed out expire this many seconds after, instead of the world's
    // tokenMinutes: a token close to its expiry, without making every token so.
    void SetNextTokenExpiry(double seconds) { nextTokenSeconds_ = seconds; }
    void SetFault(const std::string& destination, const std::string& method, ServerFault fault);
    void ClearFaults() { faults_.clear(); }
    const std::map<std::pair<std::string, std::string>, ServerFault>& Faults() const { return faults_; }
    const LeagueWorld& World() const { return *world_; }

  private:
    ServerAnswer WorldAnswer(std::string_view destination, std::string_view method,
                             const wex::BindingProperty& arguments);
    ServerAnswer LeaguesAnswer(std::string_view method, const wex::BindingProperty& arguments);
    ServerAnswer ApexAnswer(std::string_view tier, std::string_view queue, std::size_t limit);

    static constexpr std::size_t kApexTextLimit = 64;

    std::shared_ptr<const LeagueWorld> world_;
    std::function<std::int64_t()> clock_;
    std::map<std::pair<std::string, std::string>, ServerFault> faults_;
    std::optional<double> nextTokenSeconds_;
    std::map<std::string, std::string> apexTexts_;  // "TIER queue limit" -> the list's JSON
};

}  // namespace tav::host
