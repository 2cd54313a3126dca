#pragma once

// Server-shaped league answers and the API's standings, as JSON text, for
// the end-to-end tests of the league routes.
#include <string>
#include <vector>

namespace tav::test {

inline constexpr const char* kLeagueListClass = "com.orvelsoft.leagues.pojo.LeagueListDTO";
inline constexpr const char* kSummonerLeaguesClass = "com.orvelsoft.platform.leagues.client.dto.SummonerLeaguesDTO";

// One entry of a server league list; series is the progress of a running
// series, "" for none.
inline std::string Item(const std::string& id, const std::string& name, int points, int wins, int losses,
                        const std::string& rank = "I", int previousPosition = 0, bool inactive = false,
                        const std::string& series = "") {
    std::string json = R"({"__class":"com.orvelsoft.leagues.pojo.LeagueItemDTO","playerOrTeamId":")" + id +
                       R"(","playerOrTeamName":")" + name + R"(","leaguePoints":)" + std::to_string(points) +
                       R"(,"wins":)" + std::to_string(wins) + R"(,"losses":)" + std::to_string(losses) +
                       R"(,"rank":")" + rank + R"(","previousDayLeaguePosition":)" + std::to_string(previousPosition) +
                       R"(,"inactive":)" + (inactive ? "true" : "false");
    if (!series.empty()) {
        json += R"(,"miniSeries":{"progress":")" + series + R"(","wins":0,"losses":0,"target":3})";
    }
    return json + "}";
}

// A server league list; requestorsRank only where the answer carries one.
inline std::string ListJson(const std::string& name, const std::string& tier, const std::string& queue,
                            const std::vector<std::string>& items, int maxLeagueSize = 0, long long nextApexUpdate = 0,
                            const std::string& requestorsRank = "") {
    std::string json = R"({"name":")" + name + R"(","tier":")" + tier + R"(","queue":")" + queue +
                       R"(","requestorsName":"Ann","maxLeagueSize":)" + std::to_string(maxLeagueSize) +
                       R"(,"nextApexUpdate":)" + std::to_string(nextApexUpdate);
    if (!requestorsRank.empty()) {
        json += R"(,"requestorsRank":")" + requestorsRank + R"(")";
    }
    json += R"(,"entries":[)";
    for (std::size_t index = 0; index < items.size(); ++index) {
        json += (index != 0 ? "," : "") + items[index];
    }
    return json + "]}";
}

// One standing of an answer.
struct Standing {
    std::string id;
    std::string name;
    int position = 0;
    int points = 0;
    int wins = 0;
    int losses = 0;
    int previousPosition = 0;
    long long positionDelta = 0;
    bool pendingPromotion = false;
    bool pendingDemotion = false;
    std::string miniseries = "[]";
};

inline std::string StandingJson(const Standing& s) {
    return R"({"apexDaysUntilDecay":0,"emblems":[],"id":")" + s.id +
           R"(","inactive":false,"inactivityStatus":"","losses":)" + std::to_string(s.losses) +
           R"(,"miniseriesResults":)" + s.miniseries + R"(,"name":")" + s.name + R"(","pendingDemotion":)" +
           (s.pendingDemotion ? "true" : "false") + R"(,"pendingPromotion":)" +
           (s.pendingPromotion ? "true" : "false") + R"(,"points":)" + std::to_string(s.points) + R"(,"position":)" +
           std::to_string(s.position) + R"(,"positionDelta":)" + std::to_string(s.positionDelta) +
           R"(,"previousPosition":)" + std::to_string(s.previousPosition) + R"(,"wins":)" + std::to_string(s.wins) +
           "}";
}

// A league of one division.
inline std::string LeagueJson(const std::string& leagueName, const std::string& tier, const std::string& queue,
                              const std::string& rank, const std::vector<Standing>& standings,
                              const std::string& requesterRank = "NA", long long nextUpdate = 0) {
    std::string json = R"({"challengerNextPromotionUpdateInMs":)" + std::to_string(nextUpdate) + R"(,"leagueName":")" +
                       leagueName + R"(","leagueTier":")" + tier + R"(","leagues":[{"leagueRank":")" + rank +
                       R"(","standings":[)";
    for (std::size_t index = 0; index < standings.size(); ++index) {
        json += (index != 0 ? "," : "") + StandingJson(standings[index]);
    }
    return json + R"(]}],"name":"Ann","queueType":")" + queue + R"(","requesterLeagueRank":")" + requesterRank +
           R"("})";
}

}  // namespace tav::test
