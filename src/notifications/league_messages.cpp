#include "notifications/league_messages.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "binding/property.h"
#include "codec/json_reader.h"
#include "diagnostics/format_message.h"
#include "diagnostics/log_system.h"
#include "leagues/mappings.h"
#include "leagues/standings.h"

namespace Orvel::Client::Leagues {

namespace {

constexpr std::array kUpdateReasons = {
    NotifyReason::LeaguePointsUpdate, NotifyReason::LeaguePromoted,  NotifyReason::LeagueDemoted,
    NotifyReason::LeagueUpdateDecay,  NotifyReason::MiniseriesStart, NotifyReason::MiniseriesLost,
    NotifyReason::MiniseriesCancel,   NotifyReason::QueueDodge,
};

bool IsUpdateReason(std::string_view reason) {
    return std::find(kUpdateReasons.begin(), kUpdateReasons.end(), reason) != kUpdateReasons.end();
}

}  // namespace

bool IsLeaguesMessage(const Api::SimpleMessage& message) {
    return message.type == "leagues";
}

wex::BindingProperty ReadNotifyParam(const std::string& param) {
    wex::BindingProperty value = wex::ParseJson(param);
    if (!value.IsValid() || value.Kind() != wex::BindingPropertyKind::Structure || !value.HasMember("notifyReason")) {
        return {};
    }
    return value;
}

bool IsLeagueUpdateMessage(const Api::SimpleMessage& message) {
    if (!IsLeaguesMessage(message)) {
        return false;
    }
    return std::any_of(message.params.begin(), message.params.end(), [](const std::string& param) {
        return IsUpdateReason(ReadNotifyParam(param).Member("notifyReason").AsString());
    });
}

namespace {

using wex::BindingProperty;

std::string ReadText(const BindingProperty& value) {
    return std::string(value.AsString());
}

bool ReadBool(const BindingProperty& value) {
    return value.Kind() == wex::BindingPropertyKind::Bool && value.ToBool();
}

std::uint64_t Read64(const BindingProperty& value) {
    return value.AsUInt64(0);
}

std::int64_t Read32(const BindingProperty& value) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(value.AsInt64(0)));
}

void ReadSeries(Api::LeagueNotificationItem& data, const BindingProperty& series) {
    const std::string_view progress = series.Member("progress").AsString();
    if (progress == "null") {
        return;
    }
    data.miniseriesResults = ParseMiniseriesProgress(progress);
    data.miniseriesWins = static_cast<std::uint64_t>(Read32(series.Member("wins")));
}

void ReadLeagueItem(Api::LeagueNotificationItem& data, const BindingProperty& item) {
    data.points = Read32(item.Member("leaguePoints"));
    data.playerOrTeamId = ReadText(item.Member("playerOrTeamId"));
    data.playerOrTeamName = ReadText(item.Member("playerOrTeamName"));
    data.leagueName = StripLeagueName(item.Member("leagueName").AsString());
    data.queueType = std::string(LeagueQueueNameOf(item.Member("queueType").AsString()));
    data.tier = ReadText(item.Member("tier"));
    data.rank = ReadText(item.Member("rank"));
    data.previousPosition = static_cast<std::uint64_t>(Read32(item.Member("previousDayLeaguePosition")));
    data.wins = Read64(item.Member("wins"));
    data.losses = Read64(item.Member("losses"));
    data.lastPlayed = Read64(item.Member("lastPlayed"));
    data.timeUntilDecay = Read32(item.Member("timeUntilDecay"));
    data.inactivityStatus = ReadText(item.Member("inactivityStatus"));
    data.timeUntilInactivityStatusChanges = Read64(item.Member("timeUntilInactivityStatusChanges"));
    data.timeLastDecayMessageShown = Read64(item.Member("timeLastDecayMessageShown"));
    ReadSeries(data, item.Member("miniSeries"));
    data.demotionWarning = Read32(item.Member("demotionWarning"));
    data.seasonEndTier = ReadText(item.Member("seasonEndTier"));
    data.seasonEndRank = ReadText(item.Member("seasonEndRank"));
    data.seasonEndApexPosition = Read64(item.Member("seasonEndApexPosition"));
    data.totalPlayed = Read64(item.Member("totalPlayed"));
    data.inactive = ReadBool(item.Member("inactive"));
    data.displayDecayWarning = ReadBool(item.Member("displayDecayWarning"));
    data.emblems = MakeLeagueEmblems(ReadBool(item.Member("hotStreak")), ReadBool(item.Member("veteran")),
                                     ReadBool(item.Member("freshBlood")));
}

void ReadParam(Api::LeagueNotificationItem& data, const BindingProperty& param) {
    data.notifyReason = ReadText(param.Member("notifyReason"));
    data.leaguePointsDelta = Read32(param.Member("leaguePointsDelta"));
    data.gameId = Read64(param.Member("gameId"));
    if (param.HasMember("minGamesForSeeding")) {
        data.minGamesForSeeding = Read32(param.Member("minGamesForSeeding"));
    }
    ReadLeagueItem(data, param.Member("leagueItem"));
}

}  // namespace

void BuildNotificationData(Api::LeagueNotificationResource& record, const std::vector<std::string>& params) {
    for (const std::string& text : params) {
        const BindingProperty param = ReadNotifyParam(text);
        if (param.IsEmpty()) {
            continue;
        }
        ReadParam(record.data, param);
        record.type = SelectMessageKey(record);
        record.titleType = SelectTitleKey(record);
    }
}

namespace {

std::string KeyOf(std::string_view format, std::string_view reason) {
    return wex::FormatMessage(format, {reason});
}

}  // namespace

bool IsPromoHelperTier(std::string_view tier, std::string_view rank) {
    return tier == "BRONZE" || tier == "SILVER" || (tier == "GOLD" && rank != "I");
}

std::string SelectMessageKey(const Api::LeagueNotificationResource& record) {
    const Api::LeagueNotificationItem& data = record.data;
    const std::string_view reason = data.notifyReason;
    const bool promoHelper = IsPromoHelperTier(data.tier, data.rank);
    if (reason == NotifyReason::LeagueDemoted || reason == NotifyReason::MiniseriesLost) {
        return KeyOf(promoHelper ? "LEAGUES_MESSAGE_PROMOHELPER_%1" : "LEAGUES_MESSAGE_%1", reason);
    }
    if (reason == NotifyReason::MiniseriesStart) {
        if (!promoHelper || data.miniseriesWins == 0) {
            return KeyOf("LEAGUES_MESSAGE_%1", reason);
        }
        return KeyOf(data.miniseriesWins == 1 ? "LEAGUES_MESSAGE_PROMOHELPER_%1_SINGULAR"
                                              : "LEAGUES_MESSAGE_PROMOHELPER_%1_PLURAL",
                     reason);
    }
    if (reason == NotifyReason::LeagueUpdateDecay) {
        return "LEAGUES_SYSTEM_DECAY";
    }
    if (reason == NotifyReason::MiniseriesCancel) {
        const bool decayed = data.displayDecayWarning && data.inactivityStatus == "INACTIVE";
        return decayed ? "LEAGUES_SYSTEM_SERIES_ENDED_DECAY" : "LEAGUES_SYSTEM_SERIES_ENDED";
    }
    return KeyOf("LEAGUES_MESSAGE_%1", reason);
}

const std::map<std::string, std::string, std::less<>> TitleKeyByReason = {
    {std::string(NotifyReason::MiniseriesStart), "LEAGUES_GENERAL_LEAGUE_MINISERIES_TITLE"},
    {std::string(NotifyReason::QueueDodge), "LEAGUES_GENERAL_LEAGUE_MINISERIES_TITLE"},
    {std::string(NotifyReason::MiniseriesLost), "LEAGUES_GENERAL_LEAGUE_MINISERIES_TITLE"},
    {std::string(NotifyReason::MiniseriesCancel), "LEAGUES_SYSTEM_SERIES_ENDED_TITLE_"},
    {std::string(NotifyReason::LeagueUpdateDecay), "LEAGUES_SYSTEM_DECAY_TITLE"},
};

std::string SelectTitleKey(const Api::LeagueNotificationResource& record) {
    const auto found = TitleKeyByReason.find(record.data.notifyReason);
    if (found == TitleKeyByReason.end()) {
        return "LEAGUES_GENERAL_LEAGUE_UPDATE_TITLE";
    }
    if (found->first == NotifyReason::MiniseriesCancel) {
        return found->second + record.data.queueType;
    }
    return found->second;
}

bool AcknowledgeOnServer(wex::PluginBase& module, std::uint64_t accountId, const std::string& msgId) {
    const LCDS::SimpleMessageResponse response{accountId, msgId, "ack"};
    const auto answer = module.Await(
        module.InvokeLcds<wex::BindingProperty>("clientFacadeService", "callPersistenceMessaging", response));
    if (answer.HasFailure()) {
        const std::string message(answer.GetFailure().Message());
        wex::LogMessage(wex::LogLevel::Error, wex::LogCategory::Dbg,
                        "Failed to acknowledge leagues notification '%s': %d - %s", msgId.c_str(),
                        static_cast<int>(answer.GetFailure().Code()), message.c_str());
        return false;
    }
    wex::LogMessage(wex::LogLevel::Always, wex::LogCategory::Dbg, "Acknowledged leagues notification '%s'",
                    msgId.c_str());
    return true;
}

}  // namespace Orvel::Client::Leagues
