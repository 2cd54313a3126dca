#pragma once

// Server-shaped league answers, as JSON text, for the end-to-end tests of the
// league routes.
#include <string>
#include <vector>

namespace tav::test {

inline constexpr const char* kLeagueListClass = "com.orvelsoft.leagues.pojo.LeagueListDTO";
inline constexpr const char* kSummonerLeaguesClass = "com.orvelsoft.platform.leagues.client.dto.SummonerLeaguesDTO";

// One entry of a server league list.
inline std::string Item(const std::string& id, const std::string& name, int points, int wins, int losses,
                        int previousPosition = 0) {
    return R"({"__class":"com.orvelsoft.leagues.pojo.LeagueItemDTO","playerOrTeamId":")" + id +
           R"(","playerOrTeamName":")" + name + R"(","leaguePoints":)" + std::to_string(points) + R"(,"wins":)" +
           std::to_string(wins) + R"(,"losses":)" + std::to_string(losses) +
           R"(,"rank":"I","previousDayLeaguePosition":)" + std::to_string(previousPosition) + R"(,"inactive":false})";
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

}  // namespace tav::test
