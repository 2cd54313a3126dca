#include "host/uri_pattern.h"

#include <gtest/gtest.h>

namespace wex {
namespace {

TEST(MatchesUriPattern, AStarTakesOneSegment) {
    const struct {
        const char* pattern;
        const char* uri;
        bool matches;
    } rows[] = {
        {"/tav-summoner/v1/summoners/*", "/tav-summoner/v1/summoners/42", true},
        {"/tav-summoner/v1/summoners/*", "/tav-summoner/v1/summoners/42/icon", false},
        {"/tav-summoner/v1/summoners/*", "/tav-summoner/v1/summoners/", false},
        {"/tav-summoner/v1/summoners/*", "/tav-summoner/v1/summoners", false},
        {"/tav-summoner/v1/summoners/*/icon", "/tav-summoner/v1/summoners/42/icon", true},
        {"/tav-summoner/v1/summoners/*/icon", "/tav-summoner/v1/summoners//icon", true},
        {"/tav-summoner/v1/summoners/*/icon", "/tav-summoner/v1/summoners/42/icons", false},
        {"/a/*x", "/a/bx", false},  // the star takes the whole run
        {"/a/*/*", "/a/b/c", true},
        {"/a/*/*", "/a/b/", false},
        {"*", "anything", true},
        {"*", "", false},
        {"*", "/", false},
        {"/exact", "/exact", true},
        {"/exact", "/exactly", false},
        {"", "", true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.pattern) + " against " + row.uri);
        EXPECT_EQ(MatchesUriPattern(row.pattern, row.uri), row.matches);
    }
}

}  // namespace
}  // namespace wex
