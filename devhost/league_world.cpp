#include "league_world.h"

#include <algorithm>
#include <array>
#include <functional>
#include <optional>
#include <stdexcept>

#include "codec/json_writer.h"
#include "codec/yaml_reader.h"
#include "generated_entries.h"
#include "value_builders.h"
#include "value_shape.h"

namespace tav::host {

namespace {

using wex::BindingProperty;
using wex::BindingPropertyKind;

constexpr std::array<std::string_view, 3> kQueues = {"RANKED_SOLO_5x5", "RANKED_FLEX_SR", "RANKED_FLEX_TT"};
constexpr std::array<std::string_view, 7> kTiers = {"BRONZE",  "SILVER", "GOLD",      "PLATINUM",
                                                    "DIAMOND", "MASTER", "CHALLENGER"};
constexpr std::array<std::string_view, 5> kRanks = {"I", "II", "III", "IV", "V"};
// Invented players of generated lists take ids from here on, far from the world's own.
constexpr std::uint64_t kGeneratedIds = 9'000'000'000;

// A listed entry's members: the server's wire names, but for those the host fills in from the player and
// the list, and "player".
const std::vector<KeyShape> kEntryKeys = {
    {"player", ValueKind::Any, true},
    {"rank", ValueKind::Text},
    {"previousDayLeaguePosition", ValueKind::WholeNumber},
    {"wins", ValueKind::WholeNumber},
    {"losses", ValueKind::WholeNumber},
    {"hotStreak", ValueKind::Bool},
    {"veteran", ValueKind::Bool},
    {"freshBlood", ValueKind::Bool},
    {"miniSeries", ValueKind::Mapping},
    {"leaguePoints", ValueKind::Integer},
    {"inactive", ValueKind::Bool},
    {"displayDecayWarning", ValueKind::Bool},
    {"inactivityStatus", ValueKind::Text},
    {"timeUntilInactivityStatusChanges", ValueKind::WholeNumber},
    {"demotionWarning", ValueKind::WholeNumber},
    {"apexDaysUntilDecay", ValueKind::Integer},
};
const std::vector<KeyShape> kSeriesKeys = {{"progress", ValueKind::Text},
                                           {"wins", ValueKind::WholeNumber},
                                           {"losses", ValueKind::WholeNumber},
                                           {"target", ValueKind::WholeNumber},
                                           {"timeLeftToPlayMillis", ValueKind::WholeNumber}};

std::uint64_t ReadUnsigned(const BindingProperty& node, const std::string& path) {
    CheckKind(node, path, ValueKind::WholeNumber);
    return node.AsUInt64();
}

double ReadNumber(const BindingProperty& node, const std::string& path) {
    CheckKind(node, path, ValueKind::Number);
    return *NumberOf(node);
}

// Texts may be written as numbers too (ids, message ids).
std::string ReadText(const BindingProperty& node, const std::string& path) {
    switch (node.Kind()) {
        case BindingPropertyKind::String:
            return std::string(node.AsString());
        case BindingPropertyKind::Unsigned:
        case BindingPropertyKind::Signed:
            return node.ToString();
        default:
            throw ShapeError(path, "expected a text");
    }
}

std::string ReadName(const BindingProperty& node, const std::string& path, std::span<const std::string_view> names) {
    CheckName(node, path, names);
    return std::string(node.AsString());
}

const BindingProperty& Required(const BindingProperty& node, std::string_view name, const std::string& path) {
    if (!node.HasMember(name)) {
        throw ShapeError(MemberPath(path, name), "missing");
    }
    return node.Member(name);
}

// Calls read for each element of the sequence member name; an absent member has none.
void ForEach(const BindingProperty& node, std::string_view name, const std::string& path,
             const std::function<void(const BindingProperty&, const std::string&)>& read) {
    if (!node.HasMember(name)) {
        return;
    }
    const BindingProperty& list = node.Member(name);
    const std::string listPath = MemberPath(path, name);
    CheckKind(list, listPath, ValueKind::List);
    for (std::size_t index = 0; index < list.Size(); ++index) {
        read(list.At(index), listPath + "[" + std::to_string(index) + "]");
    }
}

WorldPlayer ReadPlayer(const BindingProperty& node, const std::string& path) {
    CheckKeys(node, path, {"summonerId", "accountId", "name"});
    WorldPlayer player;
    player.summonerId = ReadUnsigned(Required(node, "summonerId", path), MemberPath(path, "summonerId"));
    player.accountId = ReadUnsigned(Required(node, "accountId", path), MemberPath(path, "accountId"));
    player.name = ReadText(Required(node, "name", path), MemberPath(path, "name"));
    return player;
}

std::uint64_t ReadPlayerId(const LeagueWorld& world, const BindingProperty& node, const std::string& path) {
    const std::uint64_t id = ReadUnsigned(node, path);
    if (world.FindPlayer(id) == nullptr) {
        throw ShapeError(path, std::to_string(id) + " is not a player of the world");
    }
    return id;
}

// A listed entry: its wire members as written, the player's id and name, the list's queue and tier.
BindingProperty ReadEntry(const LeagueWorld& world, const WorldLeague& league, const BindingProperty& node,
                          const std::string& path) {
    CheckKeys(node, path, kEntryKeys);
    if (node.HasMember("miniSeries")) {
        CheckKeys(node.Member("miniSeries"), MemberPath(path, "miniSeries"), kSeriesKeys);
    }
    const WorldPlayer& player =
        *world.FindPlayer(ReadPlayerId(world, Required(node, "player", path), MemberPath(path, "player")));
    BindingProperty entry = node;
    (void)entry.RemoveMember("player");
    entry.Member("playerOrTeamId") = String(std::to_string(player.summonerId));
    entry.Member("playerOrTeamName") = String(player.name);
    entry.Member("queueType") = String(league.queue);
    entry.Member("tier") = String(league.tier);
    entry.Member("rank") =
        String(node.HasMember("rank") ? ReadName(node.Member("rank"), MemberPath(path, "rank"), kRanks) : "I");
    return entry;
}

WorldLeague ReadLeague(const LeagueWorld& world, const BindingProperty& node, const std::string& path,
                       std::uint64_t firstGeneratedId) {
    CheckKeys(node, path, {"name", "queue", "tier", "nextApexUpdate", "entries", "generate"});
    WorldLeague league;
    league.name = ReadText(Required(node, "name", path), MemberPath(path, "name"));
    league.queue = ReadName(Required(node, "queue", path), MemberPath(path, "queue"), kQueues);
    league.tier = ReadName(Required(node, "tier", path), MemberPath(path, "tier"), kTiers);
    if (node.HasMember("nextApexUpdate")) {
        league.nextApexUpdate = ReadUnsigned(node.Member("nextApexUpdate"), MemberPath(path, "nextApexUpdate"));
    }
    ForEach(node, "entries", path, [&](const BindingProperty& entry, const std::string& entryPath) {
        league.entries.push_back(ReadEntry(world, league, entry, entryPath));
    });
    if (node.HasMember("generate")) {
        const BindingProperty& generate = node.Member("generate");
        const std::string generatePath = MemberPath(path, "generate");
        CheckKeys(generate, generatePath, {"count", "seed"});
        const std::uint64_t count =
            ReadUnsigned(Required(generate, "count", generatePath), MemberPath(generatePath, "count"));
        if (count > 10000) {
            throw ShapeError(MemberPath(generatePath, "count"), "at most 10000 entries are generated");
        }
        const std::uint64_t seed =
            ReadUnsigned(Required(generate, "seed", generatePath), MemberPath(generatePath, "seed"));
        for (BindingProperty& entry :
             GenerateEntries(league, static_cast<std::uint32_t>(count), seed, firstGeneratedId)) {
            league.entries.push_back(std::move(entry));
        }
    }
    // Lists read best first, as the server keeps them.
    std::stable_sort(league.entries.begin(), league.entries.end(),
                     [](const BindingProperty& a, const BindingProperty& b) {
                         return a.Member("leaguePoints").AsInt64() > b.Member("leaguePoints").AsInt64();
                     });
    return league;
}

WorldTeam ReadTeam(const LeagueWorld& world, const BindingProperty& node, const std::string& path) {
    CheckKeys(node, path, {"id", "name", "queueType", "members"});
    WorldTeam team;
    team.id = ReadText(Required(node, "id", path), MemberPath(path, "id"));
    team.name = ReadText(Required(node, "name", path), MemberPath(path, "name"));
    team.queueType = node.HasMember("queueType") ? ReadText(node.Member("queueType"), MemberPath(path, "queueType"))
                                                 : "RANKED_TEAM_5x5";
    ForEach(node, "members", path, [&](const BindingProperty& member, const std::string& memberPath) {
        CheckKeys(member, memberPath, {"player", "played", "won"});
        WorldTeamMember read;
        read.summonerId = ReadPlayerId(world, Required(member, "player", memberPath), MemberPath(memberPath, "player"));
        read.played =
            member.HasMember("played") ? ReadUnsigned(member.Member("played"), MemberPath(memberPath, "played")) : 0;
        read.won = member.HasMember("won") ? ReadUnsigned(member.Member("won"), MemberPath(memberPath, "won")) : 0;
        team.members.push_back(read);
    });
    return team;
}

WorldChampionStats ReadChampionStats(const LeagueWorld& world, const BindingProperty& node, const std::string& path) {
    CheckKeys(node, path, {"player", "champions"});
    WorldChampionStats stats;
    stats.summonerId = ReadPlayerId(world, Required(node, "player", path), MemberPath(path, "player"));
    ForEach(node, "champions", path, [&](const BindingProperty& champion, const std::string& championPath) {
        CheckKeys(champion, championPath, {"championId", "played", "won"});
        WorldChampion read;
        const std::uint64_t id =
            ReadUnsigned(Required(champion, "championId", championPath), MemberPath(championPath, "championId"));
        if (id == 0 || id > 0x7FFFFFFF) {
            throw ShapeError(MemberPath(championPath, "championId"), "expected a champion id from 1 to 2147483647");
        }
        read.championId = static_cast<std::int32_t>(id);
        read.played = ReadUnsigned(Required(champion, "played", championPath), MemberPath(championPath, "played"));
        read.won = ReadUnsigned(Required(champion, "won", championPath), MemberPath(championPath, "won"));
        stats.champions.push_back(read);
    });
    return stats;
}

WorldMessage ReadMessage(const BindingProperty& node, const std::string& path) {
    CheckKeys(node, path, {"msgId", "type", "params"});
    WorldMessage message;
    message.msgId = ReadText(Required(node, "msgId", path), MemberPath(path, "msgId"));
    message.type = node.HasMember("type") ? ReadText(node.Member("type"), MemberPath(path, "type")) : "leagues";
    // A param written as a mapping travels as its JSON text, as the server sends it.
    ForEach(node, "params", path, [&](const BindingProperty& param, const std::string& paramPath) {
        if (param.Kind() != BindingPropertyKind::String && param.Kind() != BindingPropertyKind::Structure) {
            throw ShapeError(paramPath, "expected a mapping or a text");
        }
        message.params.push_back(param.Kind() == BindingPropertyKind::String ? std::string(param.AsString())
                                                                             : wex::WriteJson(param));
    });
    return message;
}

PlatformSettings ReadPlatform(const BindingProperty& node, const std::string& path) {
    CheckKeys(node, path,
              {{"loggedIn", ValueKind::Bool},
               {"gameflowPhase"},
               {"gameflowQueue"},
               {"leagueServiceEnabled", ValueKind::Bool},
               {"JWTEnabled", ValueKind::Bool},
               {"QualificationWarningEnabled", ValueKind::Bool}});
    PlatformSettings platform;
    const auto flag = [&node](std::string_view name, bool otherwise) {
        return node.HasMember(name) ? node.Member(name).ToBool() : otherwise;
    };
    platform.loggedIn = flag("loggedIn", platform.loggedIn);
    platform.leagueServiceEnabled = flag("leagueServiceEnabled", platform.leagueServiceEnabled);
    platform.jwtEnabled = flag("JWTEnabled", platform.jwtEnabled);
    platform.qualificationWarningEnabled = flag("QualificationWarningEnabled", platform.qualificationWarningEnabled);
    if (node.HasMember("gameflowPhase")) {
        platform.gameflowPhase =
            ReadName(node.Member("gameflowPhase"), MemberPath(path, "gameflowPhase"), kGameflowPhases);
    }
    if (node.HasMember("gameflowQueue")) {
        platform.gameflowQueue = ReadText(node.Member("gameflowQueue"), MemberPath(path, "gameflowQueue"));
    }
    return platform;
}

LeagueWorld ReadWorld(const BindingProperty& root) {
    if (root.Kind() != BindingPropertyKind::Structure) {
        throw ShapeError("world", "expected a mapping");
    }
    CheckKeys(
        root, "",
        {"currentPlayer", "tokenMinutes", "players", "leagues", "teams", "championStats", "messages", "platform"});
    LeagueWorld world;
    ForEach(root, "players", "", [&](const BindingProperty& node, const std::string& path) {
        WorldPlayer player = ReadPlayer(node, path);
        if (world.FindPlayer(player.summonerId) != nullptr) {
            throw ShapeError(MemberPath(path, "summonerId"), std::to_string(player.summonerId) + " is listed twice");
        }
        world.players.push_back(std::move(player));
    });
    world.currentPlayer = ReadPlayerId(world, Required(root, "currentPlayer", ""), "currentPlayer");
    if (root.HasMember("tokenMinutes")) {
        world.tokenMinutes = ReadNumber(root.Member("tokenMinutes"), "tokenMinutes");
        // A lifetime within the renewal margin would have every renewal due at once. Expiries are whole
        // seconds, so one just above the margin would still be renewed every second.
        if (!(world.tokenMinutes >= 2.0 && world.tokenMinutes <= 1440.0)) {
            throw ShapeError("tokenMinutes",
                             "expected from 2 to 1440; the plug-in renews its tokens a minute before they expire");
        }
    }
    ForEach(root, "leagues", "", [&](const BindingProperty& node, const std::string& path) {
        const std::uint64_t firstId = kGeneratedIds + world.leagues.size() * 100'000;
        world.leagues.push_back(ReadLeague(world, node, path, firstId));
    });
    ForEach(root, "teams", "", [&](const BindingProperty& node, const std::string& path) {
        world.teams.push_back(ReadTeam(world, node, path));
    });
    ForEach(root, "championStats", "", [&](const BindingProperty& node, const std::string& path) {
        world.championStats.push_back(ReadChampionStats(world, node, path));
    });
    ForEach(root, "messages", "", [&](const BindingProperty& node, const std::string& path) {
        world.messages.push_back(ReadMessage(node, path));
    });
    if (root.HasMember("platform")) {
        world.platform = ReadPlatform(root.Member("platform"), "platform");
    }
    return world;
}

}  // namespace

const WorldPlayer* LeagueWorld::FindPlayer(std::uint64_t summonerId) const {
    const auto found = std::find_if(players.begin(), players.end(), [summonerId](const WorldPlayer& player) {
        return player.summonerId == summonerId;
    });
    return found != players.end() ? &*found : nullptr;
}

const WorldPlayer* LeagueWorld::FindAccount(std::uint64_t accountId) const {
    const auto found = std::find_if(players.begin(), players.end(),
                                    [accountId](const WorldPlayer& player) { return player.accountId == accountId; });
    return found != players.end() ? &*found : nullptr;
}

WorldReading ReadLeagueWorld(std::string_view yaml) {
    WorldReading reading;
    const BindingProperty root = wex::ReadYaml(yaml);
    if (!root.IsValid()) {
        reading.error = std::string(root.GetError());
        return reading;
    }
    try {
        reading.world = ReadWorld(root);
    } catch (const ShapeError& error) {
        reading.error = error.what();
    }
    return reading;
}

}  // namespace tav::host
