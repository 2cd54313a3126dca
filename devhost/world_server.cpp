#include "world_server.h"

#include <chrono>

#include "codec/json_reader.h"
#include "codec/json_writer.h"
#include "signed_token.h"
#include "value_builders.h"

namespace tav::host {

namespace {

using wex::BindingProperty;

constexpr const char* kLeagueListClass = "com.orvelsoft.leagues.pojo.LeagueListDTO";
constexpr const char* kTeamClass = "com.orvelsoft.team.dto.TeamDTO";
constexpr const char* kTeamStatsClass = "com.orvelsoft.platform.statistics.TeamAggregatedStats";
constexpr const char* kAggregatedStatsClass = "com.orvelsoft.platform.statistics.AggregatedStats";
constexpr const char* kMessageResponseClass =
    "com.orvelsoft.platform.messaging.persistence.SimpleDialogMessageResponse";

ServerAnswer Answered(const char* className, BindingProperty body) {
    ServerAnswer answer;
    answer.className = className;
    answer.body = std::move(body);
    return answer;
}

const BindingProperty* FindEntry(const WorldLeague& league, std::string_view playerId) {
    for (const BindingProperty& entry : league.entries) {
        if (entry.Member("playerOrTeamId").AsString() == playerId) {
            return &entry;
        }
    }
    return nullptr;
}

BindingProperty Entries(const WorldLeague& league, std::size_t limit) {
    BindingProperty entries = EmptyCollection();
    for (std::size_t index = 0; index < league.entries.size() && index < limit; ++index) {
        entries.Append() = league.entries[index];
    }
    return entries;
}

// A summoner league list: the league as the player sees it.
BindingProperty SummonerLeagues(const LeagueWorld& world, std::uint64_t summonerId) {
    const WorldPlayer* player = world.FindPlayer(summonerId);
    BindingProperty lists = EmptyCollection();
    for (const WorldLeague& league : world.leagues) {
        const BindingProperty* entry = FindEntry(league, std::to_string(summonerId));
        if (entry == nullptr) {
            continue;
        }
        lists.Append() = Structure({{"name", String(league.name)},
                                    {"tier", String(league.tier)},
                                    {"queue", String(league.queue)},
                                    {"requestorsName", String(player != nullptr ? player->name : "")},
                                    {"requestorsRank", entry->Member("rank")},
                                    {"entries", Entries(league, league.entries.size())},
                                    {"nextApexUpdate", Unsigned(league.nextApexUpdate)}});
    }
    return Structure({{"summonerLeagues", lists}});
}

// The apex list of a queue; a queue without one answers an empty list, as the server does.
BindingProperty ApexList(const LeagueWorld& world, std::string_view tier, std::string_view queue, std::size_t limit) {
    for (const WorldLeague& league : world.leagues) {
        if (league.tier == tier && league.queue == queue) {
            return Structure(
                {{"name", String(league.name)},
                 {"tier", String(league.tier)},
                 {"queue", String(league.queue)},
                 {"requestorsName", String("")},
                 {"entries", Entries(league, limit)},
                 {"nextApexUpdate", Unsigned(league.nextApexUpdate)},
                 {"maxLeagueSize", Unsigned(limit < league.entries.size() ? limit : league.entries.size())}});
        }
    }
    return Structure(
        {{"name", String("")}, {"tier", String(tier)}, {"queue", String(queue)}, {"entries", EmptyCollection()}});
}

BindingProperty MyEntries(const LeagueWorld& world, const std::function<void(BindingProperty&)>& extend) {
    BindingProperty entries = EmptyCollection();
    const std::string id = std::to_string(world.currentPlayer);
    for (const WorldLeague& league : world.leagues) {
        if (const BindingProperty* entry = FindEntry(league, id); entry != nullptr) {
            BindingProperty& copy = entries.Append();
            copy = *entry;
            extend(copy);
        }
    }
    return Structure({{"summonerLeagues", entries}});
}

// Arguments "[12,34]" and "[\"RANKED_SOLO_5x5\"]": the tier of each player in each queue that has one.
ServerAnswer Tiers(const LeagueWorld& world, const BindingProperty& arguments) {
    const BindingProperty ids = wex::ParseJson(std::string(arguments.At(0).AsString()));
    const BindingProperty queues = wex::ParseJson(std::string(arguments.At(1).AsString()));
    if (ids.Kind() != wex::BindingPropertyKind::Collection || queues.Kind() != wex::BindingPropertyKind::Collection) {
        return ServerAnswer::Failure("getTiersForParticipants takes two JSON lists, ids and queue names");
    }
    BindingProperty tiers = EmptyCollection();
    for (const BindingProperty& id : ids.Elements()) {
        for (const BindingProperty& queue : queues.Elements()) {
            for (const WorldLeague& league : world.leagues) {
                const BindingProperty* entry =
                    league.queue == queue.AsString() ? FindEntry(league, id.ToString()) : nullptr;
                if (entry != nullptr) {
                    tiers.Append() = Structure({{"playerOrTeamId", entry->Member("playerOrTeamId")},
                                                {"playerOrTeamName", entry->Member("playerOrTeamName")},
                                                {"queueType", String(league.queue)},
                                                {"tier", String(league.tier)},
                                                {"rank", entry->Member("rank")}});
                }
            }
        }
    }
    return Answered("com.orvelsoft.leagues.pojo.LeagueTierAndRankDTO", tiers);
}

BindingProperty Stat(std::uint64_t id, std::int32_t championId, const char* type, std::uint64_t value) {
    return Structure({{"id", Unsigned(id)},
                      {"championId", Signed(championId)},
                      {"statType", String(type)},
                      {"value", Float(static_cast<double>(value))}});
}

void AppendGames(BindingProperty& stats, std::int32_t championId, std::uint64_t played, std::uint64_t won) {
    stats.Append() = Stat(stats.Size() + 1, championId, "TOTAL_SESSIONS_PLAYED", played);
    stats.Append() = Stat(stats.Size() + 1, championId, "TOTAL_SESSIONS_WON", won);
}

ServerAnswer Team(const LeagueWorld& world, std::string_view id) {
    for (const WorldTeam& team : world.teams) {
        if (team.id != id) {
            continue;
        }
        BindingProperty members = EmptyCollection();
        for (const WorldTeamMember& member : team.members) {
            members.Append() = Structure({{"playerId", Unsigned(member.summonerId)},
                                          {"playerName", String(world.FindPlayer(member.summonerId)->name)}});
        }
        return Answered(kTeamClass, Structure({{"teamId", Structure({{"fullId", String(team.id)}})},
                                               {"name", String(team.name)},
                                               {"roster", Structure({{"memberList", members}})}}));
    }
    return ServerAnswer::Failure("No team with id " + std::string(id), 404);
}

ServerAnswer TeamStats(const LeagueWorld& world, std::string_view id) {
    BindingProperty answer = EmptyCollection();
    for (const WorldTeam& team : world.teams) {
        if (team.id != id) {
            continue;
        }
        BindingProperty players = EmptyCollection();
        for (const WorldTeamMember& member : team.members) {
            BindingProperty lifetime = EmptyCollection();
            AppendGames(lifetime, 0, member.played, member.won);
            players.Append() = Structure({{"playerId", Unsigned(member.summonerId)},
                                          {"aggregatedStats", Structure({{"lifetimeStatistics", lifetime}})}});
        }
        answer.Append() = Structure({{"id", Structure({{"fullId", String(team.id)}})},
                                     {"queueType", String(team.queueType)},
                                     {"playerAggregatedStatsList", players}});
    }
    return Answered(kTeamStatsClass, answer);
}

ServerAnswer ChampionStats(const LeagueWorld& world, std::uint64_t accountId) {
    const WorldPlayer* player = world.FindAccount(accountId);
    BindingProperty lifetime = EmptyCollection();
    std::uint64_t played = 0;
    std::uint64_t won = 0;
    for (const WorldChampionStats& stats : world.championStats) {
        if (player == nullptr || stats.summonerId != player->summonerId) {
            continue;
        }
        for (const WorldChampion& champion : stats.champions) {
            AppendGames(lifetime, champion.championId, champion.played, champion.won);
            played += champion.played;
            won += champion.won;
        }
    }
    AppendGames(lifetime, 0, played, won);
    return Answered(kAggregatedStatsClass,
                    Structure({{"key", Structure({{"userId", Unsigned(accountId)}, {"gameMode", String("CLASSIC")}})},
                               {"lifetimeStatistics", lifetime}}));
}

std::int64_t SystemSeconds() {
    return std::chrono::duration_cast<std::chrono::seconds>(std::chrono::system_clock::now().time_since_epoch())
        .count();
}

}  // namespace

WorldServer::WorldServer(std::shared_ptr<const LeagueWorld> world, std::function<std::int64_t()> clock)
    : world_(std::move(world)), clock_(clock ? std::move(clock) : &SystemSeconds) {}

void WorldServer::SetFault(const std::string& destination, const std::string& method, ServerFault fault) {
    faults_.insert_or_assign(std::make_pair(destination, method), std::move(fault));
}

ServerAnswer WorldServer::Answer(std::string_view destination, std::string_view method,
                                 const wex::BindingProperty& arguments) {
    const auto fault = faults_.find(std::make_pair(std::string(destination), std::string(method)));
    if (fault == faults_.end()) {
        return WorldAnswer(destination, method, arguments);
    }
    const ServerFault& change = fault->second;
    ServerAnswer answer = change.error.empty() ? WorldAnswer(destination, method, arguments)
                                               : ServerAnswer::Failure(change.error, change.status);
    answer.delaySeconds = change.delaySeconds;
    if (!change.className.empty()) {
        answer.className = change.className;
    }
    if (change.malformed) {
        answer.payloadText = R"({"summonerLeagues":[{"tier":)";
    }
    return answer;
}

ServerAnswer WorldServer::WorldAnswer(std::string_view destination, std::string_view method,
                                      const wex::BindingProperty& arguments) {
    const std::string call = std::string(destination) + "." + std::string(method);
    if (destination == "leagues") {
        return LeaguesAnswer(method, arguments);
    }
    if (call == "summonerTeamService.findTeamById") {
        return Team(*world_, arguments.At(0).AsString());
    }
    if (call == "playerStatsService.getTeamAggregatedStats") {
        return TeamStats(*world_, arguments.At(0).AsString());
    }
    if (call == "playerStatsService.getAggregatedStats") {
        return ChampionStats(*world_, arguments.At(0).AsUInt64());
    }
    if (call == "clientFacadeService.callPersistenceMessaging") {
        // The server keeps no answer worth reading for an acknowledgement.
        return Answered(kMessageResponseClass, BindingProperty());
    }
    if (call == "teambuilder-draft.setJwtAsGameCustomizationV1") {
        return Answered("", Structure({}));
    }
    return ServerAnswer::Failure("The game server has no method " + call, 404);
}

ServerAnswer WorldServer::LeaguesAnswer(std::string_view method, const wex::BindingProperty& arguments) {
    const LeagueWorld& world = *world_;
    if (method == "getAllMyLeagues") {
        return Answered("com.orvelsoft.platform.leagues.client.dto.SummonerLeaguesDTO",
                        SummonerLeagues(world, world.currentPlayer));
    }
    if (method == "getAllLeaguesForPlayer") {
        return Answered("com.orvelsoft.platform.leagues.client.dto.SummonerLeaguesDTO",
                        SummonerLeagues(world, arguments.At(0).AsUInt64()));
    }
    if (method == "getChallengerLeague") {
        return ApexAnswer("CHALLENGER", arguments.At(0).AsString(), SIZE_MAX);
    }
    if (method == "getMasterLeagueTopX") {
        const std::uint64_t limit = std::strtoull(std::string(arguments.At(1).AsString()).c_str(), nullptr, 10);
        return ApexAnswer("MASTER", arguments.At(0).AsString(), limit);
    }
    if (method == "getTiersForParticipants") {
        return Tiers(world, arguments);
    }
    if (method == "getMyLeaguePositions") {
        return Answered("com.orvelsoft.platform.leagues.client.dto.SummonerLeagueItemsDTO",
                        MyEntries(world, [](BindingProperty&) {}));
    }
    if (method == "getMySignedLeaguePositions") {
        const double lifetime = nextTokenSeconds_.value_or(world.tokenMinutes * 60.0);
        nextTokenSeconds_.reset();
        const std::int64_t expiresAt = clock_() + static_cast<std::int64_t>(lifetime);
        return Answered("", MyEntries(world, [&](BindingProperty& entry) {
                            entry.Member("jwt") = String(MakeSignedToken(
                                world.currentPlayer, std::string(entry.Member("queueType").AsString()), expiresAt));
                        }));
    }
    return ServerAnswer::Failure("The game server has no method leagues." + std::string(method), 404);
}

// An apex list is the largest answer and the world never changes, so its text is written once: building and
// writing hundreds of entries on every call made the host, not the plug-in, the cost of an apex route.
ServerAnswer WorldServer::ApexAnswer(std::string_view tier, std::string_view queue, std::size_t limit) {
    std::string key = std::string(tier) + " " + std::string(queue) + " " + std::to_string(limit);
    auto cached = apexTexts_.find(key);
    if (cached == apexTexts_.end()) {
        if (apexTexts_.size() >= kApexTextLimit) {
            apexTexts_.clear();  // queues and limits come from requests: keep the cache bounded
        }
        cached = apexTexts_.emplace(std::move(key), wex::WriteJson(ApexList(*world_, tier, queue, limit))).first;
    }
    ServerAnswer answer;
    answer.className = kLeagueListClass;
    answer.payloadText = cached->second;
    return answer;
}

}  // namespace tav::host
