#include "notifications/notification_data.h"

#include <cstdint>

#include "binding/property.h"
#include "leagues/league_list_conversion.h"
#include "leagues/server_mappings.h"
#include "notifications/league_message.h"
#include "notifications/message_key.h"
#include "notifications/title_key.h"

namespace Orvel::Client::Leagues {
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

}  // namespace Orvel::Client::Leagues
