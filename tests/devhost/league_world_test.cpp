#include <gtest/gtest.h>

#include "codec/json_writer.h"
#include "league_world.h"

namespace {

using tav::host::ReadLeagueWorld;

constexpr const char* kPlayers = "currentPlayer: 1\nplayers: [{summonerId: 1, accountId: 11, name: One}]\n";

TEST(LeagueWorld, CompletesListedEntriesSortsThemBestFirstAndGeneratesTheSameListForASeed) {
    const std::string text = std::string(kPlayers) +
                             "leagues: [{name: L, queue: RANKED_FLEX_SR, tier: GOLD, entries: [\n"
                             "  {player: 1, leaguePoints: 5}, {player: 1, rank: IV, leaguePoints: 70}]},\n"
                             "  {name: C, queue: RANKED_SOLO_5x5, tier: CHALLENGER, generate: {count: 3, seed: 5}}]\n";
    const auto reading = ReadLeagueWorld(text);
    ASSERT_EQ(reading.error, "");
    const auto& entries = reading.world.leagues.at(0).entries;
    ASSERT_EQ(entries.size(), 2u);
    EXPECT_EQ(wex::WriteJson(entries[0]), R"({"leaguePoints":70,"playerOrTeamId":"1","playerOrTeamName":"One",)"
                                          R"("queueType":"RANKED_FLEX_SR","rank":"IV","tier":"GOLD"})");
    EXPECT_EQ(entries[1].Member("rank").AsString(), "I");
    const auto again = ReadLeagueWorld(text);
    ASSERT_EQ(reading.world.leagues.at(1).entries.size(), 3u);
    // What the generator invents for a seed is part of the world a user sees.
    EXPECT_EQ(wex::WriteJson(reading.world.leagues[1].entries[0]),
              R"({"freshBlood":false,"hotStreak":false,"inactive":false,"leaguePoints":1398,"losses":112,)"
              R"("playerOrTeamId":"9000100000","playerOrTeamName":"Kestvale1","previousDayLeaguePosition":1,)"
              R"("queueType":"RANKED_SOLO_5x5","rank":"I","tier":"CHALLENGER","veteran":true,"wins":129})");
    for (std::size_t index = 0; index < 3; ++index) {
        EXPECT_EQ(wex::WriteJson(reading.world.leagues[1].entries[index]),
                  wex::WriteJson(again.world.leagues[1].entries[index]));
    }
}

TEST(LeagueWorld, NamesTheMemberAtFault) {
    const std::string players = kPlayers;
    const std::string leagueGold = players + "leagues: [{name: L, queue: RANKED_SOLO_5x5, tier: GOLD, ";
    const std::string leagueMaster = players + "leagues: [{name: L, queue: RANKED_SOLO_5x5, tier: MASTER, ";
    const std::string kTokenMinutes =
        "tokenMinutes: expected from 2 to 1440; the plug-in renews its tokens a minute before they expire";
    const std::string kChampionId =
        "championStats[0].champions[0].championId: expected a champion id from 1 to 2147483647";
    const struct {
        std::string text;
        std::string error;
    } cases[] = {
        {"- 1\n", "world: expected a mapping"},
        {"players: []\n", "currentPlayer: missing"},
        {players + "currentPlayer: 2\n", "currentPlayer: 2 is not a player of the world"},
        {"currentPlayer: 1\nplayers: [{summonerId: 1, accountId: 1, name: A}, {summonerId: 1, accountId: 2, name: "
         "B}]\n",
         "players[1].summonerId: 1 is listed twice"},
        {"currentPlayer: 1\nplayers: [{summonerId: -1, accountId: 1, name: A}]\n",
         "players[0].summonerId: expected a whole number, 0 or more"},
        {"currentPlayer: 1\nplayers: {summonerId: 1}\n", "players: expected a sequence"},
        {players + "tokenMinutes: soon\n", "tokenMinutes: expected a number"},
        {players + "tokenMinutes: 1.99\n", kTokenMinutes},
        {players + "tokenMinutes: 1440.01\n", kTokenMinutes},
        {players + "tokenMinuts: 10\n",
         "tokenMinuts: unknown key; the keys here are currentPlayer, tokenMinutes, players, leagues, teams, "
         "championStats, messages, platform"},
        {players + "leagues: [{name: L, queue: RANKED_TEAM, tier: GOLD}]\n",
         "leagues[0].queue: 'RANKED_TEAM' is none of RANKED_SOLO_5x5, RANKED_FLEX_SR, RANKED_FLEX_TT"},
        {players + "leagues: [{name: L, queue: RANKED_SOLO_5x5}]\n", "leagues[0].tier: missing"},
        {leagueGold + "entries: [{player: 1}, {player: 77}]}]\n",
         "leagues[0].entries[1].player: 77 is not a player of the world"},
        {leagueGold + "entries: [{player: 1, rank: VI}]}]\n",
         "leagues[0].entries[0].rank: 'VI' is none of I, II, III, IV, V"},
        {leagueGold + "entries: [{player: 1, leaguePoints: 1.5}]}]\n",
         "leagues[0].entries[0].leaguePoints: expected a whole number"},
        {leagueGold + "entries: [{player: 1, miniSeries: {progress: WN, target: two}}]}]\n",
         "leagues[0].entries[0].miniSeries.target: expected a whole number, 0 or more"},
        {leagueMaster + "generate: {count: 10001, seed: 1}}]\n",
         "leagues[0].generate.count: at most 10000 entries are generated"},
        {leagueMaster + "generate: {count: 3}}]\n", "leagues[0].generate.seed: missing"},
        {players + "championStats: [{player: 1, champions: [{championId: 0, played: 1, won: 1}]}]\n", kChampionId},
        {players + "championStats: [{player: 1, champions: [{championId: 2147483648, played: 1, won: 1}]}]\n",
         kChampionId},
        {players + "teams: [{id: T, name: N, members: [{player: 2}]}]\n",
         "teams[0].members[0].player: 2 is not a player of the world"},
        {players + "messages: [{msgId: 1, params: [[1]]}]\n", "messages[0].params[0]: expected a mapping or a text"},
        {players + "platform: {loggedIn: yes please}\n", "platform.loggedIn: expected true or false"},
        {players + "platform: {gameflowPhase: Lobbyy}\n",
         "platform.gameflowPhase: 'Lobbyy' is none of None, Lobby, Matchmaking, CheckedIntoTournament, ReadyCheck, "
         "ChampSelect, GameStart, FailedToLaunch, InProgress, Reconnect, WaitingForStats, PreEndOfGame, EndOfGame, "
         "TerminatedInError"},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(ReadLeagueWorld(row.text).error, row.error);
    }
    // Every mapping refuses a stray key; the keys it lists instead restate the reader's own tables.
    const struct {
        std::string text;
        const char* key;
    } strays[] = {
        {"currentPlayer: 1\nplayers: [{summonerId: 1, accountId: 11, name: One, nick: O}]\n", "players[0].nick"},
        {leagueGold + "entries: [{player: 1, tier: GOLD}]}]\n", "leagues[0].entries[0].tier"},
        {leagueGold + "generate: {count: 1, seed: 1, size: 2}}]\n", "leagues[0].generate.size"},
        {players + "teams: [{id: T, name: N, members: [{player: 1, lost: 2}]}]\n", "teams[0].members[0].lost"},
        {players + "messages: [{msgId: 1, typ: leagues}]\n", "messages[0].typ"},
        {players + "platform: {darkMode: true}\n", "platform.darkMode"},
    };
    for (const auto& row : strays) {
        SCOPED_TRACE(row.text);
        const std::string error = ReadLeagueWorld(row.text).error;
        EXPECT_EQ(error.substr(0, error.find(';')), std::string(row.key) + ": unknown key");
    }
    EXPECT_NE(ReadLeagueWorld("players: [unclosed\n").error, "");
}

TEST(LeagueWorld, TakesTheBoundaryValues) {
    const std::string players = kPlayers;
    for (const std::string& text : {
             players + "championStats: [{player: 1, champions: [{championId: 1, played: 0, won: 0}]}]\n",
             players + "championStats: [{player: 1, champions: [{championId: 2147483647, played: 1, won: 1}]}]\n",
             players +
                 "leagues: [{name: L, queue: RANKED_SOLO_5x5, tier: MASTER, generate: {count: 10000, seed: 0}}]\n",
             players + "messages: [{msgId: \"7\", params: ['{\"notifyReason\":\"QUEUE_DODGE\"}']}]\n",
         }) {
        SCOPED_TRACE(text);
        EXPECT_EQ(ReadLeagueWorld(text).error, "");
    }
    for (const auto& [text, minutes] : {std::pair{"2", 2.0}, std::pair{"2.5", 2.5}, std::pair{"1440", 1440.0}}) {
        SCOPED_TRACE(text);
        const auto reading = ReadLeagueWorld(std::string(kPlayers) + "tokenMinutes: " + text + "\n");
        ASSERT_EQ(reading.error, "");
        EXPECT_EQ(reading.world.tokenMinutes, minutes);
    }
}

}  // namespace
