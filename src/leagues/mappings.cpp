#include "leagues/mappings.h"

namespace Orvel::Client::Leagues {

using Api::LeagueQueueType;
using Api::LeagueRank;
using Api::LeagueTier;
using LCDS::QueueType;

LeagueQueueType LeagueQueueTypeOf(QueueType queue) {
    switch (queue) {
        case QueueType::RANKED_SOLO_5x5:
            return LeagueQueueType::SOLO5V5;
        case QueueType::RANKED_FLEX_SR:
            return LeagueQueueType::FLEXSR;
        case QueueType::RANKED_FLEX_TT:
            return LeagueQueueType::FLEXTT;
    }
    return LeagueQueueType::NONE;
}

std::string_view LeagueQueueNameOf(QueueType queue) {
    switch (queue) {
        case QueueType::RANKED_SOLO_5x5:
            return "SOLO5V5";
        case QueueType::RANKED_FLEX_SR:
            return "FLEXSR";
        case QueueType::RANKED_FLEX_TT:
            return "FLEXTT";
    }
    return "NONE";
}

std::string_view LeagueQueueNameOf(std::string_view serverQueueName) {
    if (serverQueueName == "RANKED_FLEX_TT") {
        return "FLEXTT";
    }
    if (serverQueueName == "RANKED_SOLO_5x5") {
        return "SOLO5V5";
    }
    if (serverQueueName == "RANKED_FLEX_SR") {
        return "FLEXSR";
    }
    return "NONE";
}

std::string_view QueueServerName(LeagueQueueType queue) {
    switch (queue) {
        case LeagueQueueType::SOLO5V5:
            return "RANKED_SOLO_5x5";
        case LeagueQueueType::FLEXTT:
            return "RANKED_FLEX_TT";
        case LeagueQueueType::FLEXSR:
            return "RANKED_FLEX_SR";
        case LeagueQueueType::NONE:
            break;
    }
    return "INVALID";
}

LeagueTier LeagueTierOf(LCDS::LeagueTier tier) {
    const auto number = static_cast<std::int32_t>(tier);
    const bool known = number >= static_cast<std::int32_t>(LeagueTier::BRONZE) &&
                       number <= static_cast<std::int32_t>(LeagueTier::CHALLENGER);
    return known ? static_cast<LeagueTier>(number) : LeagueTier::NONE;
}

bool IsApexTier(LeagueTier tier) {
    return tier == LeagueTier::MASTER || tier == LeagueTier::CHALLENGER;
}

namespace {

bool IsKnownRank(LCDS::LeagueRank rank) {
    const auto number = static_cast<std::int32_t>(rank);
    return number >= static_cast<std::int32_t>(LCDS::LeagueRank::I) &&
           number <= static_cast<std::int32_t>(LCDS::LeagueRank::V);
}

}  // namespace

LeagueRank LeagueRankOf(LCDS::LeagueRank rank, LeagueTier tier) {
    if (IsApexTier(tier) || !IsKnownRank(rank)) {
        return LeagueRank::NA;
    }
    return static_cast<LeagueRank>(rank);
}

std::uint64_t DivisionNumberOf(LCDS::LeagueRank rank, LeagueTier tier) {
    // Tiers that are neither apex nor known (NONE) still count their divisions.
    if (IsApexTier(tier) || !IsKnownRank(rank)) {
        return 0;
    }
    return static_cast<std::uint64_t>(rank) + 1;
}

std::vector<Api::Miniseries> ParseMiniseriesProgress(std::string_view progress) {
    std::vector<Api::Miniseries> results;
    results.reserve(progress.size());
    for (const char game : progress) {
        results.push_back(game == 'W' ? Api::Miniseries::W : game == 'L' ? Api::Miniseries::L : Api::Miniseries::N);
    }
    return results;
}

std::vector<Api::LeagueEmblem> MakeLeagueEmblems(bool hotStreak, bool veteran, bool freshBlood) {
    std::vector<Api::LeagueEmblem> emblems;
    if (hotStreak) {
        emblems.push_back(Api::LeagueEmblem::HOTSTREAK);
    }
    if (veteran) {
        emblems.push_back(Api::LeagueEmblem::VETERAN);
    }
    if (freshBlood) {
        emblems.push_back(Api::LeagueEmblem::FRESHBLOOD);
    }
    return emblems;
}

}  // namespace Orvel::Client::Leagues
