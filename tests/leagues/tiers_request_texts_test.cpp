#include "leagues/tiers_request_texts.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace Orvel::Client::Leagues {
namespace {

using Api::LeagueQueueType;

TEST(TiersRequestTexts, IdsAreDecimalBetweenBracketsWithoutSpaces) {
    struct Row {
        std::vector<std::uint64_t> ids;
        const char* text;
    };
    const Row rows[] = {
        {{}, "[]"},
        {{0}, "[0]"},
        {{12, 34}, "[12,34]"},
        {{std::numeric_limits<std::uint64_t>::max(), 1}, "[18446744073709551615,1]"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(ParticipantIdListText(row.ids), row.text);
    }
}

TEST(TiersRequestTexts, QueuesAreQuotedServerNamesAndNoneIsInvalid) {
    struct Row {
        std::vector<LeagueQueueType> queues;
        const char* text;
    };
    const Row rows[] = {
        {{}, "[]"},
        {{LeagueQueueType::SOLO5V5, LeagueQueueType::FLEXTT}, R"(["RANKED_SOLO_5x5","RANKED_FLEX_TT"])"},
        {{LeagueQueueType::FLEXSR}, R"(["RANKED_FLEX_SR"])"},
        {{LeagueQueueType::NONE, LeagueQueueType::SOLO5V5}, R"(["INVALID","RANKED_SOLO_5x5"])"},
        {{static_cast<LeagueQueueType>(9)}, R"(["INVALID"])"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(QueueListText(row.queues), row.text);
    }
}

}  // namespace
}  // namespace Orvel::Client::Leagues
