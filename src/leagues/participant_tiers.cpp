#include "leagues/participant_tiers.h"

#include "leagues/module_types.h"

namespace Orvel::Client::Leagues::Api {

void RegisterParticipantTierRecords(const ModuleTypes& types) {
    types.Struct<AchievedTier>("AchievedTier")
        .Field("queueType", &AchievedTier::queueType)
        .Field("tier", &AchievedTier::tier)
        .Field("division", &AchievedTier::division);
    types.Struct<ParticipantTiers>("ParticipantTiers")
        .Field("summonerId", &ParticipantTiers::summonerId)
        .Field("achievedTiers", &ParticipantTiers::achievedTiers);
}

}  // namespace Orvel::Client::Leagues::Api
