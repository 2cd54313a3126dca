#include "host/events.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "../codec/testdata_file.h"

namespace wex {

namespace {

const std::filesystem::path kFolder = std::filesystem::path(__FILE__).parent_path();

TEST(ResourceEventName, TakesTheFirstThreeSegmentsOrFiveUnderThePlatformConfiguration) {
    const auto rows = tav::test::ReadCases("resource_event_names.tsv", kFolder);
    ASSERT_EQ(rows.size(), 7u);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.at(0));
        EXPECT_EQ(ResourceEventName(row[0]), row.at(1));
    }
    // Every dot of a server message's type becomes an underscore.
    EXPECT_EQ(LcdsEventName(".a.b"), "OnLcdsEvent__a_b");
}

TEST(MatchesUriPattern, AStarTakesOneSegment) {
    const auto rows = tav::test::ReadCases("uri_patterns.tsv", kFolder);
    ASSERT_EQ(rows.size(), 11u);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.at(0) + " against " + row.at(1));
        EXPECT_EQ(MatchesUriPattern(row[0], row[1]), row.at(2) == "yes");
    }
}

}  // namespace

}  // namespace wex
