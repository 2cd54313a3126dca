// The signed standing of a ranked queue, handed to the matchmaking service
// as the player enters champion select.
#include <algorithm>
#include <string>

#include "diagnostics/log_system.h"
#include "diagnostics/trace.h"
#include "leagues/leagues_module.h"

namespace Orvel::Client::Leagues {

void LeaguesModule::PassSignedLeaguesToTeamBuilder(LCDS::QueueType queue) {
    const auto& entries = state.signedLeagues.summonerLeagues;
    const auto entry = std::find_if(entries.begin(), entries.end(),
                                    [queue](const LCDS::SignedLeagueItemDTO& item) { return item.queueType == queue; });
    if (entry == entries.end()) {
        return;
    }
    wex::BindingProperty arguments;
    arguments.MakeCollection();
    wex::BindingProperty& customization = arguments.Append();
    customization.MakeStructure();
    customization.Member("prefix").SetString("leagues");
    customization.Member("signedJWT").SetString(entry->jwt);
    const auto answer =
        Await(CallService<wex::BindingProperty>("teambuilder-draft", "setJwtAsGameCustomizationV1", arguments));
    if (answer.HasFailure()) {
        wex::LogMessage(wex::LogLevel::Error, wex::LogCategory::Dbg,
                        "Failed to pass signed leagues game customization to TB");
        const std::string message(answer.GetFailure().Message());
        wex::Trace("TeamBuilder service error msg: %s", message.c_str());
        return;
    }
    wex::LogMessage(wex::LogLevel::Okay, wex::LogCategory::Gen,
                    "Successfully passed signed leagues game customization to TB");
}

}  // namespace Orvel::Client::Leagues
