#include "leagues/league.h"

#include "leagues/module_types.h"

namespace Orvel::Client::Leagues::Api {

void RegisterLeagueRecords(const ModuleTypes& types) {
    types.Struct<LeagueStanding>("LeagueStanding")
        .Field("id", &LeagueStanding::id)
        .Field("name", &LeagueStanding::name)
        .Field("position", &LeagueStanding::position)
        .Field("positionDelta", &LeagueStanding::positionDelta)
        .Field("previousPosition", &LeagueStanding::previousPosition)
        .Field("emblems", &LeagueStanding::emblems)
        .Field("wins", &LeagueStanding::wins)
        .Field("losses", &LeagueStanding::losses)
        .Field("miniseriesResults", &LeagueStanding::miniseriesResults)
        .Field("points", &LeagueStanding::points)
        .Field("inactive", &LeagueStanding::inactive)
        .Field("pendingPromotion", &LeagueStanding::pendingPromotion)
        .Field("pendingDemotion", &LeagueStanding::pendingDemotion)
        .Field("inactivityStatus", &LeagueStanding::inactivityStatus)
        .Field("apexDaysUntilDecay", &LeagueStanding::apexDaysUntilDecay);
    types.Struct<LeagueDivision>("LeagueDivision")
        .Field("leagueRank", &LeagueDivision::leagueRank)
        .Field("standings", &LeagueDivision::standings);
    types.Struct<League>("League")
        .Field("queueType", &League::queueType)
        .Field("leagueTier", &League::leagueTier)
        .Field("requesterLeagueRank", &League::requesterLeagueRank)
        .Field("leagueName", &League::leagueName)
        .Field("name", &League::name)
        .Field("leagues", &League::leagues)
        .Field("challengerNextPromotionUpdateInMs", &League::challengerNextPromotionUpdateInMs);
    types.Struct<ApexLeagues>("ApexLeagues")
        .Field("challengers", &ApexLeagues::challengers)
        .Field("masters", &ApexLeagues::masters);
}

}  // namespace Orvel::Client::Leagues::Api
