#include "leagues/api_enums.h"

#include "leagues/module_types.h"

namespace Orvel::Client::Leagues::Api {

void RegisterApiEnums(const ModuleTypes& types) {
    types
        .Enum<Severity>("Severity")  //
        .Value("WARNING", Severity::WARNING)
        .Value("ALERT", Severity::ALERT);
    types.Enum<LeagueQueueType>("LeagueQueueType")
        .Value("SOLO5V5", LeagueQueueType::SOLO5V5)
        .Value("FLEXTT", LeagueQueueType::FLEXTT)
        .Value("FLEXSR", LeagueQueueType::FLEXSR)
        .Value("NONE", LeagueQueueType::NONE);
    types.Enum<LeagueTier>("LeagueTier")
        .Value("BRONZE", LeagueTier::BRONZE)
        .Value("SILVER", LeagueTier::SILVER)
        .Value("GOLD", LeagueTier::GOLD)
        .Value("PLATINUM", LeagueTier::PLATINUM)
        .Value("DIAMOND", LeagueTier::DIAMOND)
        .Value("MASTER", LeagueTier::MASTER)
        .Value("CHALLENGER", LeagueTier::CHALLENGER)
        .Value("NONE", LeagueTier::NONE);
    types.Enum<LeagueRank>("LeagueRank")
        .Value("I", LeagueRank::I)
        .Value("II", LeagueRank::II)
        .Value("III", LeagueRank::III)
        .Value("IV", LeagueRank::IV)
        .Value("V", LeagueRank::V)
        .Value("NA", LeagueRank::NA);
    types
        .Enum<Miniseries>("Miniseries")  //
        .Value("W", Miniseries::W)
        .Value("L", Miniseries::L)
        .Value("N", Miniseries::N);
    types.Enum<LeagueEmblem>("LeagueEmblem")
        .Value("VETERAN", LeagueEmblem::VETERAN)
        .Value("HOTSTREAK", LeagueEmblem::HOTSTREAK)
        .Value("FRESHBLOOD", LeagueEmblem::FRESHBLOOD);
}

}  // namespace Orvel::Client::Leagues::Api
