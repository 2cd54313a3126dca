#include "leagues/participant_tiers_conversion.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "leagues/participant_id.h"

namespace Orvel::Client::Leagues {
namespace {

LCDS::LeagueTierAndRankDTO TierOf(std::string id, LCDS::QueueType queue, LCDS::LeagueTier tier, LCDS::LeagueRank rank) {
    return {std::move(id), "", queue, tier, rank};
}

// "summonerId: queue/tier/division ..." per participant, with the API numbers.
std::vector<std::string> Describe(const std::vector<Api::ParticipantTiers>& participants) {
    std::vector<std::string> texts;
    for (const Api::ParticipantTiers& participant : participants) {
        std::string text = std::to_string(participant.summonerId) + ":";
        for (const Api::AchievedTier& tier : participant.achievedTiers) {
            text += " " + std::to_string(static_cast<int>(tier.queueType)) + "/" +
                    std::to_string(static_cast<int>(tier.tier)) + "/" + std::to_string(tier.division);
        }
        texts.push_back(text);
    }
    return texts;
}

TEST(GroupParticipantTiers, GroupsRepeatedIdsInTheOrderTheyFirstAppear) {
    using enum LCDS::QueueType;
    using enum LCDS::LeagueTier;
    using enum LCDS::LeagueRank;
    const auto participants = GroupParticipantTiers({
        TierOf("12", RANKED_SOLO_5x5, GOLD, II),
        TierOf("34", RANKED_FLEX_SR, MASTER, I),
        TierOf("12", RANKED_FLEX_TT, CHALLENGER, V),
        TierOf(" +012", RANKED_FLEX_SR, BRONZE, V),
    });
    EXPECT_EQ(Describe(participants), (std::vector<std::string>{"12: 1/3/2 2/7/0 3/1/5", "34: 3/6/0"}));
}

TEST(GroupParticipantTiers, UnknownServerValuesMapToTheirFallbacks) {
    const auto participants = GroupParticipantTiers(
        {TierOf("5", static_cast<LCDS::QueueType>(0), static_cast<LCDS::LeagueTier>(0),
                static_cast<LCDS::LeagueRank>(2)),
         TierOf("5", LCDS::QueueType::RANKED_SOLO_5x5, LCDS::LeagueTier::SILVER, static_cast<LCDS::LeagueRank>(5))});
    EXPECT_EQ(Describe(participants), std::vector<std::string>{"5: 0/0/3 1/2/0"});
}

TEST(GroupParticipantTiers, AnEmptyAnswerGivesNoParticipants) {
    EXPECT_TRUE(GroupParticipantTiers({}).empty());
}

TEST(GroupParticipantTiers, AnIdThatIsNotANumberEndsTheWholeConversion) {
    const std::vector<LCDS::LeagueTierAndRankDTO> tiers = {
        TierOf("12", LCDS::QueueType::RANKED_SOLO_5x5, LCDS::LeagueTier::GOLD, LCDS::LeagueRank::I),
        TierOf("team-1", LCDS::QueueType::RANKED_SOLO_5x5, LCDS::LeagueTier::GOLD, LCDS::LeagueRank::I),
    };
    try {
        (void)GroupParticipantTiers(tiers);
        FAIL() << "no exception";
    } catch (const ParticipantIdError& error) {
        EXPECT_STREQ(error.what(), "invalid stoull argument");
    }
}

TEST(ParseParticipantId, ReadsTheLeadingDecimalNumber) {
    const std::pair<std::string, std::uint64_t> rows[] = {
        {"0", 0},
        {"42", 42},
        {"007", 7},
        {" \t\n\v\f\r42", 42},
        {"+42", 42},
        {"42abc", 42},
        {"42 43", 42},
        {"0x1F", 0},
        {"1e3", 1},
        {"18446744073709551615", 18446744073709551615u},
        {"000000000000000000000018446744073709551615", 18446744073709551615u},
        {"-1", 18446744073709551615u},
        {"-18446744073709551615", 1},
        {"-0", 0},
        {std::string("12\0"
                     "34",
                     5),
         12},
    };
    for (const auto& [text, id] : rows) {
        SCOPED_TRACE(text);
        EXPECT_EQ(ParseParticipantId(text), id);
    }
}

TEST(ParseParticipantId, FailsWithTheTextOfItsErrorKind) {
    const std::pair<std::string, const char*> rows[] = {
        {"", "invalid stoull argument"},
        {"   ", "invalid stoull argument"},
        {"abc", "invalid stoull argument"},
        {"+", "invalid stoull argument"},
        {"-", "invalid stoull argument"},
        {"+-1", "invalid stoull argument"},
        {"--1", "invalid stoull argument"},
        {"x12", "invalid stoull argument"},
        {"\xC2\xA0"
         "12",
         "invalid stoull argument"},
        {"18446744073709551616", "stoull argument out of range"},
        {"-18446744073709551616", "stoull argument out of range"},
        {"99999999999999999999", "stoull argument out of range"},
        {"184467440737095516150", "stoull argument out of range"},
    };
    for (const auto& [text, message] : rows) {
        SCOPED_TRACE(text);
        try {
            (void)ParseParticipantId(text);
            ADD_FAILURE() << "no exception";
        } catch (const ParticipantIdError& error) {
            EXPECT_STREQ(error.what(), message);
        }
    }
}

}  // namespace
}  // namespace Orvel::Client::Leagues
