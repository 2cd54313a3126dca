#include "leagues/api_types.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/loaded_module.h"
#include "types/native_conversion.h"

namespace Orvel::Client::Leagues {
namespace {

class LeagueApiTypes : public ::testing::Test {
  protected:
    test::LoadedModule loaded;
};

std::vector<std::string> MemberNames(const wex::BindingProperty& value) {
    std::vector<std::string> names;
    for (const wex::BindingMember member : value.Members()) {
        names.emplace_back(member.name);
    }
    return names;
}

TEST_F(LeagueApiTypes, ALeagueSerialisesInNameOrderWithoutItsMaximumSize) {
    Api::League league;
    league.maxLeagueSize = 200;
    const wex::BindingProperty value = wex::ToBinding(league, loaded.Registry());
    ASSERT_TRUE(value.IsValid()) << value.GetError();
    EXPECT_EQ(MemberNames(value),
              (std::vector<std::string>{"challengerNextPromotionUpdateInMs", "leagueName", "leagueTier", "leagues",
                                        "name", "queueType", "requesterLeagueRank"}));
    EXPECT_EQ(value.Member("requesterLeagueRank").EnumValue(), static_cast<std::int32_t>(Api::LeagueRank::NA));
}

TEST_F(LeagueApiTypes, AStandingSerialisesWithoutItsSeriesCountsAndTier) {
    Api::LeagueStanding standing;
    standing.miniseriesWins = 2;
    standing.miniseriesLosses = 1;
    standing.leagueTier = Api::LeagueTier::GOLD;
    const wex::BindingProperty value = wex::ToBinding(standing, loaded.Registry());
    ASSERT_TRUE(value.IsValid()) << value.GetError();
    EXPECT_EQ(MemberNames(value),
              (std::vector<std::string>{"apexDaysUntilDecay", "emblems", "id", "inactive", "inactivityStatus", "losses",
                                        "miniseriesResults", "name", "pendingDemotion", "pendingPromotion", "points",
                                        "position", "positionDelta", "previousPosition", "wins"}));
}

}  // namespace
}  // namespace Orvel::Client::Leagues
