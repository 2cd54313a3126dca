#include "leagues/server_dtos.h"

#include <gtest/gtest.h>

#include <string>

#include "codec/json_reader.h"
#include "support/loaded_module.h"
#include "types/native_conversion.h"

namespace Orvel::Client::Leagues {
namespace {

// Server answers read through the module's registry; what the reviewed type
// text cannot show: a null member and the failure of an unknown enumerator.
TEST(DtoFromJson, ANullSeriesLeavesTheRecordEmptyAndAnUnknownQueueNamesTheServerEnumeration) {
    test::LoadedModule loaded;
    wex::BindingProperty status;
    LCDS::LeagueItemDTO item;
    wex::FromBinding(status, item, wex::ParseJson(R"({"playerOrTeamId": "7", "miniSeries": null, "wins": 3})"),
                     "<value>", loaded.Registry());
    EXPECT_EQ(status.GetError(), "");
    const LCDS::MiniSeriesDTO& series = item.miniSeries;
    EXPECT_EQ(item.playerOrTeamId + " " + std::to_string(item.wins) + " [" + series.progress + "] " +
                  std::to_string(series.wins + series.losses + series.target + series.timeLeftToPlayMillis),
              "7 3 [] 0");
    LCDS::LeagueListDTO list;
    wex::FromBinding(status, list, wex::ParseJson(R"({"queue": "RANKED_TEAM_3x3"})"), "<value>", loaded.Registry());
    EXPECT_EQ(status.GetError(), "RANKED_TEAM_3x3 is not a valid LeaguesLcdsQueueType enumeration value for 'queue'.");
}

}  // namespace
}  // namespace Orvel::Client::Leagues
