#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "binding/property.h"
#include "plugin/app_module.h"
#include "types/registry.h"

// The records and enumerations of the league API, and the records of the
// other plug-ins' resources that the module reads; all are registered under
// the module's type namespace with its API tags.
namespace Orvel::Client::Leagues::Api {

enum class Severity : std::int32_t { WARNING = 0, ALERT = 1 };

// Numbered apart from the server's queues: the two flex queues swap places.
enum class LeagueQueueType : std::int32_t { NONE = 0, SOLO5V5 = 1, FLEXTT = 2, FLEXSR = 3 };

enum class LeagueTier : std::int32_t {
    NONE = 0,
    BRONZE = 1,
    SILVER = 2,
    GOLD = 3,
    PLATINUM = 4,
    DIAMOND = 5,
    MASTER = 6,
    CHALLENGER = 7,
};

// The division inside a tier; NA is no division (the apex tiers, unknown ranks).
enum class LeagueRank : std::int32_t { I = 0, II = 1, III = 2, IV = 3, V = 4, NA = 5 };

// One game of a promotion series: won, lost, not yet played.
enum class Miniseries : std::int32_t { W = 0, L = 1, N = 2 };

enum class LeagueEmblem : std::int32_t { VETERAN = 0, HOTSTREAK = 1, FRESHBLOOD = 2 };

// One player's (or team's) row in a division.
struct LeagueStanding {
    std::string id;
    std::string name;
    std::uint64_t position = 0;  // 1-based place in its division; 0 until numbered
    std::int64_t positionDelta = 0;
    std::uint64_t previousPosition = 0;  // 0 when unknown
    std::vector<LeagueEmblem> emblems;
    std::uint64_t wins = 0;
    std::uint64_t losses = 0;
    std::vector<Miniseries> miniseriesResults;
    std::int64_t points = 0;
    bool inactive = false;
    bool pendingPromotion = false;
    bool pendingDemotion = false;
    std::string inactivityStatus;
    std::int64_t apexDaysUntilDecay = 0;

    // Not registered: the apex order reads the series counts.
    std::uint64_t miniseriesWins = 0;
    std::uint64_t miniseriesLosses = 0;
    LeagueTier leagueTier = LeagueTier::NONE;
};

struct LeagueDivision {
    LeagueRank leagueRank = LeagueRank::I;
    std::vector<LeagueStanding> standings;  // in place order
};

struct League {
    LeagueQueueType queueType = LeagueQueueType::NONE;
    LeagueTier leagueTier = LeagueTier::NONE;
    LeagueRank requesterLeagueRank = LeagueRank::NA;
    std::string leagueName;
    std::string name;                     // the requester's name
    std::vector<LeagueDivision> leagues;  // ascending by rank
    std::uint64_t challengerNextPromotionUpdateInMs = 0;

    // Not registered: the number of places, which bounds the challenger league
    // and after which master places are numbered.
    std::uint64_t maxLeagueSize = 0;
};

struct ApexLeagues {
    std::vector<League> challengers;
    std::vector<League> masters;  // in the same queue order
};

struct LeagueTeamMember {
    std::uint64_t id = 0;
    std::string name;
    std::uint64_t totalGamePlayed = 0;  // 0 when unknown
    float winRate = 0;                  // percent, 0 when unknown
};

struct LeagueTeam {
    std::string id;  // the team's full id
    std::string name;
    std::vector<LeagueTeamMember> members;  // in roster order
};

// One of a player's most played champions.
struct LeagueChampAndStat {
    std::int32_t championId = 0;
    std::int64_t totalGamePlayed = 0;
    float winRate = 0;  // percent
};

// The part of the summoner plug-in's summoner resource that is read to find
// the account whose statistics name the top champions.
struct LeaguesSummoner {
    std::uint64_t summonerId = 0;
    std::uint64_t accountId = 0;
};

struct AchievedTier {
    LeagueQueueType queueType = LeagueQueueType::NONE;
    LeagueTier tier = LeagueTier::NONE;
    std::uint64_t division = 0;  // 1 for I to 5 for V; 0 for the apex tiers and unknown ranks
};

struct ParticipantTiers {
    std::uint64_t summonerId = 0;
    std::vector<AchievedTier> achievedTiers;
};

// The league facts of a notification.
struct LeagueNotificationItem {
    std::string notifyReason;
    std::int64_t leaguePointsDelta = 0;
    std::uint64_t gameId = 0;
    std::int64_t minGamesForSeeding = -1;  // only a message that carries it sets it
    std::string playerOrTeamId;
    std::string playerOrTeamName;
    std::string leagueName;
    std::string queueType;
    std::string tier;
    std::string rank;
    std::int64_t points = 0;
    std::uint64_t previousPosition = 0;
    std::uint64_t wins = 0;
    std::uint64_t losses = 0;
    std::uint64_t lastPlayed = 0;
    std::int64_t timeUntilDecay = 0;
    std::string inactivityStatus;
    std::uint64_t timeUntilInactivityStatusChanges = 0;
    std::uint64_t timeLastDecayMessageShown = 0;
    std::vector<Miniseries> miniseriesResults;
    bool displayDecayWarning = false;
    std::int64_t demotionWarning = 0;
    std::string seasonEndTier;
    std::string seasonEndRank;
    std::uint64_t seasonEndApexPosition = 0;
    std::vector<LeagueEmblem> emblems;
    bool inactive = false;
    std::uint64_t totalPlayed = 0;
    std::uint64_t miniseriesWins = 0;
    std::uint64_t miniseriesTimeLeftToPlayMillis = 0;
};

// One notification, registered as LeaguesNotification.
struct LeagueNotificationResource {
    std::uint64_t id = 0;
    std::string msgId;  // not registered: the server's id, to acknowledge the message there
    std::string type;
    std::string titleType;
    Severity severity = Severity::ALERT;
    LeagueNotificationItem data;
    std::uint64_t priority = 0;
    bool acknowledgedByPlayer = false;
};

// The season-reward namespace of the platform configuration.
struct SeasonRewardConfig {
    bool QualificationWarningEnabled = false;
};

// A message stored for the player on the server; each param is JSON text.
struct SimpleMessage {
    std::uint64_t accountId = 0;
    std::string msgId;
    std::string type;
    std::vector<std::string> params;
};

// The part of the login data packet that the plug-in reads.
struct LoginDataPacket {
    std::vector<SimpleMessage> simpleMessages;
};

enum class LoginSessionStates : std::int32_t { IN_PROGRESS = 0, SUCCEEDED = 1, LOGGING_OUT = 2, ERROR = 3 };

struct LoginSession {
    LoginSessionStates state = LoginSessionStates::IN_PROGRESS;
    std::uint64_t summonerId = 0;
    std::uint64_t accountId = 0;
};

enum class GameflowPhase : std::int32_t {
    None = 0,
    Lobby = 1,
    Matchmaking = 2,
    CheckedIntoTournament = 3,
    ReadyCheck = 4,
    ChampSelect = 5,
    GameStart = 6,
    FailedToLaunch = 7,
    InProgress = 8,
    Reconnect = 9,
    WaitingForStats = 10,
    PreEndOfGame = 11,
    EndOfGame = 12,
    TerminatedInError = 13,
};

struct Queue {
    wex::BindingProperty type;  // held as received; read as a server queue where needed
};

struct GameflowGameData {
    Queue queue;
};

// The part of the gameflow plug-in's session that the plug-in reads.
struct GameflowSession {
    GameflowPhase phase = GameflowPhase::None;
    GameflowGameData gameData;
};

}  // namespace Orvel::Client::Leagues::Api

namespace Orvel::Client::Leagues {

// Registers the module's own types: each is named by the module's type
// namespace followed by its base name and carries the module's API tags.
class ModuleTypes {
  public:
    ModuleTypes(const wex::AppModule& module, wex::BindingTypeRegistry& registry)
        : module_(module), registry_(registry) {}

    template <class Structure>
    wex::BindingStructBuilder<Structure> Struct(std::string_view baseName) const {
        return registry_.Struct<Structure>(NameOf(baseName), module_.ApiTags());
    }

    template <class Enumeration>
    wex::BindingEnumBuilder<Enumeration> Enum(std::string_view baseName) const {
        return registry_.Enum<Enumeration>(NameOf(baseName), module_.ApiTags());
    }

  private:
    std::string NameOf(std::string_view baseName) const {
        std::string name = module_.TypeNamespace();
        name += baseName;
        return name;
    }

    const wex::AppModule& module_;
    wex::BindingTypeRegistry& registry_;
};

// Registers the league API records and enumerations. Runs after the server records.
void RegisterLeagueApiTypes(const wex::AppModule& module, wex::BindingTypeRegistry& registry);

}  // namespace Orvel::Client::Leagues
