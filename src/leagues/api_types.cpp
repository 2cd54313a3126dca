#include "leagues/api_types.h"

namespace Orvel::Client::Leagues {

namespace {

using namespace Api;

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

void RegisterTeamRecords(const ModuleTypes& types) {
    types.Struct<LeagueTeamMember>("LeagueTeamMember")
        .Field("id", &LeagueTeamMember::id)
        .Field("name", &LeagueTeamMember::name)
        .Field("totalGamePlayed", &LeagueTeamMember::totalGamePlayed)
        .Field("winRate", &LeagueTeamMember::winRate);
    types.Struct<LeagueTeam>("LeagueTeam")
        .Field("id", &LeagueTeam::id)
        .Field("name", &LeagueTeam::name)
        .Field("members", &LeagueTeam::members);
}

void RegisterChampionStatRecords(const ModuleTypes& types) {
    types.Struct<LeagueChampAndStat>("LeagueChampAndStat")
        .Field("championId", &LeagueChampAndStat::championId)
        .Field("totalGamePlayed", &LeagueChampAndStat::totalGamePlayed)
        .Field("winRate", &LeagueChampAndStat::winRate);
    types.Struct<LeaguesSummoner>("LeaguesSummoner")
        .Field("summonerId", &LeaguesSummoner::summonerId)
        .Field("accountId", &LeaguesSummoner::accountId);
}

void RegisterParticipantTierRecords(const ModuleTypes& types) {
    types.Struct<AchievedTier>("AchievedTier")
        .Field("queueType", &AchievedTier::queueType)
        .Field("tier", &AchievedTier::tier)
        .Field("division", &AchievedTier::division);
    types.Struct<ParticipantTiers>("ParticipantTiers")
        .Field("summonerId", &ParticipantTiers::summonerId)
        .Field("achievedTiers", &ParticipantTiers::achievedTiers);
}

void RegisterNotificationRecords(const ModuleTypes& types) {
    using Item = LeagueNotificationItem;
    types.Struct<Item>("LeagueNotificationItem")
        .Field("notifyReason", &Item::notifyReason)
        .Field("leaguePointsDelta", &Item::leaguePointsDelta)
        .Field("gameId", &Item::gameId)
        .Field("minGamesForSeeding", &Item::minGamesForSeeding)
        .Field("playerOrTeamId", &Item::playerOrTeamId)
        .Field("playerOrTeamName", &Item::playerOrTeamName)
        .Field("leagueName", &Item::leagueName)
        .Field("queueType", &Item::queueType)
        .Field("tier", &Item::tier)
        .Field("rank", &Item::rank)
        .Field("points", &Item::points)
        .Field("previousPosition", &Item::previousPosition)
        .Field("wins", &Item::wins)
        .Field("losses", &Item::losses)
        .Field("lastPlayed", &Item::lastPlayed)
        .Field("timeUntilDecay", &Item::timeUntilDecay)
        .Field("inactivityStatus", &Item::inactivityStatus)
        .Field("timeUntilInactivityStatusChanges", &Item::timeUntilInactivityStatusChanges)
        .Field("timeLastDecayMessageShown", &Item::timeLastDecayMessageShown)
        .Field("miniseriesResults", &Item::miniseriesResults)
        .Field("displayDecayWarning", &Item::displayDecayWarning)
        .Field("demotionWarning", &Item::demotionWarning)
        .Field("seasonEndTier", &Item::seasonEndTier)
        .Field("seasonEndRank", &Item::seasonEndRank)
        .Field("seasonEndApexPosition", &Item::seasonEndApexPosition)
        .Field("emblems", &Item::emblems)
        .Field("inactive", &Item::inactive)
        .Field("totalPlayed", &Item::totalPlayed)
        .Field("miniseriesWins", &Item::miniseriesWins)
        .Field("miniseriesTimeLeftToPlayMillis", &Item::miniseriesTimeLeftToPlayMillis);
    using Resource = LeagueNotificationResource;
    types.Struct<Resource>("LeaguesNotification")
        .Field("id", &Resource::id)
        .Field("type", &Resource::type)
        .Field("titleType", &Resource::titleType)
        .Field("severity", &Resource::severity)
        .Field("data", &Resource::data)
        .Field("priority", &Resource::priority)
        .Field("acknowledgedByPlayer", &Resource::acknowledgedByPlayer);
}

void RegisterLoginRecords(const ModuleTypes& types) {
    types.Struct<SeasonRewardConfig>("LeaguesSeasonRewardConfig")
        .Field("QualificationWarningEnabled", &SeasonRewardConfig::QualificationWarningEnabled);
    types.Struct<SimpleMessage>("SimpleMessage")
        .Field("accountId", &SimpleMessage::accountId)
        .Field("msgId", &SimpleMessage::msgId)
        .Field("type", &SimpleMessage::type)
        .Field("params", &SimpleMessage::params);
    types
        .Struct<LoginDataPacket>("LeaguesLoginDataPacket")  //
        .Field("simpleMessages", &LoginDataPacket::simpleMessages);
    types.Enum<LoginSessionStates>("LoginSessionStates")
        .Value("IN_PROGRESS", LoginSessionStates::IN_PROGRESS)
        .Value("ERROR", LoginSessionStates::ERROR)
        .Value("SUCCEEDED", LoginSessionStates::SUCCEEDED)
        .Value("LOGGING_OUT", LoginSessionStates::LOGGING_OUT);
    types.Struct<LoginSession>("LoginSession")
        .Field("state", &LoginSession::state)
        .Field("summonerId", &LoginSession::summonerId)
        .Field("accountId", &LoginSession::accountId);
}

void RegisterGameflowRecords(const ModuleTypes& types) {
    types.Enum<GameflowPhase>("GameflowPhase")
        .Value("None", GameflowPhase::None)
        .Value("Lobby", GameflowPhase::Lobby)
        .Value("Matchmaking", GameflowPhase::Matchmaking)
        .Value("CheckedIntoTournament", GameflowPhase::CheckedIntoTournament)
        .Value("ReadyCheck", GameflowPhase::ReadyCheck)
        .Value("ChampSelect", GameflowPhase::ChampSelect)
        .Value("GameStart", GameflowPhase::GameStart)
        .Value("FailedToLaunch", GameflowPhase::FailedToLaunch)
        .Value("InProgress", GameflowPhase::InProgress)
        .Value("Reconnect", GameflowPhase::Reconnect)
        .Value("WaitingForStats", GameflowPhase::WaitingForStats)
        .Value("PreEndOfGame", GameflowPhase::PreEndOfGame)
        .Value("EndOfGame", GameflowPhase::EndOfGame)
        .Value("TerminatedInError", GameflowPhase::TerminatedInError);
    types.Struct<Queue>("Queue").Field("type", &Queue::type);
    types.Struct<GameflowGameData>("GameflowGameData").Field("queue", &GameflowGameData::queue);
    types.Struct<GameflowSession>("GameflowSession")
        .Field("phase", &GameflowSession::phase)
        .Field("gameData", &GameflowSession::gameData);
}

}  // namespace

void RegisterLeagueApiTypes(const wex::AppModule& module, wex::BindingTypeRegistry& registry) {
    const ModuleTypes types(module, registry);
    RegisterApiEnums(types);
    RegisterLeagueRecords(types);
    RegisterTeamRecords(types);
    RegisterChampionStatRecords(types);
    RegisterNotificationRecords(types);
    RegisterLoginRecords(types);
    RegisterParticipantTierRecords(types);
    RegisterGameflowRecords(types);
}

}  // namespace Orvel::Client::Leagues
