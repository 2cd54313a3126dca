#include "leagues/query_conversion.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "leagues/mappings.h"

namespace Orvel::Client::Leagues {

std::int64_t StatCount(float value) {
    using Limits = std::numeric_limits<std::int64_t>;
    // 2^63 is exact as a float; every float below it converts.
    constexpr float kBeyondMax = 9223372036854775808.0f;
    if (std::isnan(value)) {
        return 0;
    }
    if (value >= kBeyondMax) {
        return Limits::max();
    }
    if (value < -kBeyondMax) {
        return Limits::min();
    }
    return static_cast<std::int64_t>(value);
}

namespace {

void ApplyPlayerStats(const LCDS::AggregatedStats& stats, Api::LeagueTeamMember& member) {
    std::optional<std::int64_t> played;
    std::optional<std::int64_t> won;
    for (const LCDS::AggregatedStat& stat : stats.lifetimeStatistics) {
        if (played && won) {
            break;
        }
        if (stat.championId != 0) {
            continue;
        }
        if (stat.statType == "TOTAL_SESSIONS_PLAYED") {
            played = StatCount(stat.value);
        } else if (stat.statType == "TOTAL_SESSIONS_WON") {
            won = StatCount(stat.value);
        }
    }
    // A negative count is no count.
    member.totalGamePlayed = played ? static_cast<std::uint64_t>(std::max<std::int64_t>(*played, 0)) : 0;
    member.winRate =
        played && *played >= 1 && won ? static_cast<float>(*won) / static_cast<float>(*played) * 100.0f : 0.0f;
}

}  // namespace

std::vector<Api::LeagueTeamMember> MakeTeamMembers(const LCDS::RosterDTO& roster) {
    std::vector<Api::LeagueTeamMember> members;
    std::unordered_set<std::uint64_t> seen;
    for (const LCDS::TeamMemberInfoDTO& entry : roster.memberList) {
        if (seen.insert(entry.playerId).second) {
            members.push_back({entry.playerId, entry.playerName, 0, 0.0f});
        }
    }
    return members;
}

void ApplyTeamMemberStats(const std::vector<LCDS::TeamAggregatedStats>& teamStats,
                          std::vector<Api::LeagueTeamMember>& members) {
    std::unordered_map<std::uint64_t, Api::LeagueTeamMember*> membersById;
    for (Api::LeagueTeamMember& member : members) {
        membersById.emplace(member.id, &member);
    }
    for (const LCDS::TeamAggregatedStats& team : teamStats) {
        for (const LCDS::PlayerAggregatedStats& player : team.playerAggregatedStatsList) {
            const auto found = membersById.find(player.playerId);
            if (found != membersById.end()) {
                ApplyPlayerStats(player.aggregatedStats, *found->second);
            }
        }
    }
}

namespace {

const LCDS::AggregatedStat* FindStat(const std::vector<LCDS::AggregatedStat>& stats, std::string_view statType,
                                     std::int32_t championId) {
    const auto found = std::find_if(stats.begin(), stats.end(), [&](const LCDS::AggregatedStat& stat) {
        return stat.statType == statType && stat.championId == championId;
    });
    return found != stats.end() ? &*found : nullptr;
}

}  // namespace

std::vector<Api::LeagueChampAndStat> ConvertTopChampions(const LCDS::AggregatedStats& stats) {
    const std::vector<LCDS::AggregatedStat>& lifetime = stats.lifetimeStatistics;
    std::vector<Api::LeagueChampAndStat> champions;
    for (const LCDS::AggregatedStat& played : lifetime) {
        if (played.championId == 0 || played.statType != "TOTAL_SESSIONS_PLAYED") {
            continue;
        }
        const std::int64_t games = StatCount(played.value);
        const LCDS::AggregatedStat* won = FindStat(lifetime, "TOTAL_SESSIONS_WON", played.championId);
        // No games and a won count gives infinity or NaN, as the division says.
        const float winRate = won != nullptr ? won->value / static_cast<float>(games) * 100.0f : 0.0f;
        champions.push_back({played.championId, games, winRate});
    }
    std::stable_sort(champions.begin(), champions.end(),
                     [](const Api::LeagueChampAndStat& a, const Api::LeagueChampAndStat& b) {
                         return a.totalGamePlayed > b.totalGamePlayed;
                     });
    if (champions.size() > TopChampionCount) {
        champions.resize(TopChampionCount);
    }
    return champions;
}

namespace {

// White space as the C locale knows it.
bool IsSpace(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

}  // namespace

std::uint64_t ParseParticipantId(std::string_view text) {
    std::size_t at = 0;
    while (at < text.size() && IsSpace(text[at])) {
        ++at;
    }
    bool negative = false;
    if (at < text.size() && (text[at] == '+' || text[at] == '-')) {
        negative = text[at] == '-';
        ++at;
    }
    if (at == text.size() || !IsDigit(text[at])) {
        throw ParticipantIdError("invalid stoull argument");
    }
    constexpr std::uint64_t kMax = std::numeric_limits<std::uint64_t>::max();
    std::uint64_t value = 0;
    for (; at < text.size() && IsDigit(text[at]); ++at) {
        const auto digit = static_cast<std::uint64_t>(text[at] - '0');
        if (value > (kMax - digit) / 10) {
            throw ParticipantIdError("stoull argument out of range");
        }
        value = value * 10 + digit;
    }
    return negative ? 0 - value : value;
}

std::vector<Api::ParticipantTiers> GroupParticipantTiers(const std::vector<LCDS::LeagueTierAndRankDTO>& tiers) {
    std::vector<Api::ParticipantTiers> participants;
    std::unordered_map<std::uint64_t, std::size_t> indexById;
    for (const LCDS::LeagueTierAndRankDTO& entry : tiers) {
        const Api::LeagueTier tier = LeagueTierOf(entry.tier);
        const Api::AchievedTier achieved{LeagueQueueTypeOf(entry.queueType), tier, DivisionNumberOf(entry.rank, tier)};
        const std::uint64_t summonerId = ParseParticipantId(entry.playerOrTeamId);
        const auto [found, isNew] = indexById.try_emplace(summonerId, participants.size());
        if (isNew) {
            participants.push_back({summonerId, {}});
        }
        participants[found->second].achievedTiers.push_back(achieved);
    }
    return participants;
}

namespace {

template <class T, class ItemText>
std::string BracketedList(const std::vector<T>& items, ItemText itemText) {
    std::string text = "[";
    for (std::size_t index = 0; index < items.size(); ++index) {
        if (index != 0) {
            text += ',';
        }
        text += itemText(items[index]);
    }
    text += ']';
    return text;
}

}  // namespace

std::string ParticipantIdListText(const std::vector<std::uint64_t>& summonerIds) {
    return BracketedList(summonerIds, [](std::uint64_t id) { return std::to_string(id); });
}

std::string QueueListText(const std::vector<Api::LeagueQueueType>& queueTypes) {
    return BracketedList(queueTypes,
                         [](Api::LeagueQueueType queue) { return '"' + std::string(QueueServerName(queue)) + '"'; });
}

}  // namespace Orvel::Client::Leagues
