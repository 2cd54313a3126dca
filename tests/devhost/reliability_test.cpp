// 10,000 mixed requests through HTTP with faults set and cleared on the way:
// every one is answered, and the plug-in's live bytes come back to their
// level after the first requests. The figures are printed, not timed.
#include <gtest/gtest.h>

#include <chrono>
#include <iostream>
#include <map>

#include "codec/json_reader.h"
#include "live_host_fixture.h"

namespace {

struct Request {
    const char* method;
    const char* path;
    const char* body;
};

// One round of every kind of request; answers are checked for having a status the host gives, not for content.
// Pushed league messages are left out: the plug-in keeps every notification for the session, so they grow the
// live bytes by design.
constexpr Request kRound[] = {
    {"GET", "/tav-leagues/v1/summoner-leagues/1001", ""},
    {"PUT", "/devhost/faults/leagues/getAllMyLeagues", R"({"error":"down","status":503})"},
    {"GET", "/tav-leagues/v1/summoner-leagues/1001", ""},
    {"GET", "/tav-leagues/v1/challenger-leagues", ""},
    {"PUT", "/devhost/faults/leagues/getChallengerLeague", R"({"malformed":true})"},
    {"GET", "/tav-leagues/v1/challenger-leagues", ""},
    {"PUT", "/devhost/faults/summonerTeamService/findTeamById", R"({"className":"com.example.Other"})"},
    {"GET", "/tav-leagues/v1/teams/TEAM-4F2A-91C3", ""},
    {"GET", "/tav-leagues/v1/summoner-top-champs/1001", ""},
    {"GET", "/tav-leagues/v2/tiers?summonerIds.0=1001&queueTypes.0=SOLO5V5", ""},
    {"GET", "/tav-leagues/v2/notifications", ""},
    {"POST", "/tav-leagues/v2/notifications/3/acknowledge", ""},
    {"GET", "/tav-leagues/v2/summoner-leagues/current-summoner/signed-leagues", ""},
    {"PUT", "/devhost/gameflow", R"({"phase":"ChampSelect","queue":"RANKED_FLEX_SR"})"},
    {"PUT", "/devhost/gameflow", R"({"phase":"EndOfGame","queue":"RANKED_FLEX_SR"})"},
    {"POST", "/devhost/clock", R"({"seconds":30})"},
    {"GET", "/tav-leagues/v1/summoner-leagues/x", ""},
    {"PUT", "/devhost/gameflow", "{not json"},
    {"DELETE", "/devhost/faults", ""},
};

using tav::test::LiveHostTest;

TEST_F(LiveHostTest, AnswersTenThousandMixedRequestsWithoutGrowingTheLiveBytes) {
    Serve();
    constexpr std::size_t kRequests = 10000;
    constexpr std::size_t kWarmUp = 1000;
    const auto liveBytes = [this] {
        return wex::ParseJson(client_->Get("/devhost/memory")->body).Member("liveBytes").AsUInt64();
    };
    std::map<int, std::size_t> statuses;
    std::uint64_t afterWarmUp = 0;
    std::uint64_t highest = 0;
    const auto started = std::chrono::steady_clock::now();
    for (std::size_t index = 0; index < kRequests; ++index) {
        const Request& request = kRound[index % std::size(kRound)];
        httplib::Request sent;
        sent.method = request.method;
        sent.path = request.path;
        sent.body = request.body;
        const auto answer = client_->send(sent);
        ASSERT_TRUE(answer) << request.method << " " << request.path << ": " << httplib::to_string(answer.error());
        ++statuses[answer->status];
        if (index + 1 == kWarmUp) {
            afterWarmUp = liveBytes();
        }
        if (index >= kWarmUp && index % std::size(kRound) == std::size(kRound) - 1) {
            highest = std::max(highest, liveBytes());
        }
    }
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count();
    const std::uint64_t atEnd = liveBytes();

    std::cout << kRequests << " requests in " << seconds << " s; live bytes after " << kWarmUp << ": " << afterWarmUp
              << ", highest after: " << highest << ", at the end: " << atEnd << "; statuses:";
    for (const auto& [status, count] : statuses) {
        std::cout << ' ' << status << " x" << count;
    }
    std::cout << std::endl;
    EXPECT_EQ(statuses.count(504), 0u);
    // Far more host calls than that were made: the journals keep the latest. One answer holds a page of them.
    EXPECT_EQ(wex::ParseJson(client_->Get("/devhost/journal?limit=1000")->body).Size(), 1000u);
    stop_ = true;
    hostThread_.join();
    for (const std::size_t kept :
         {session_.Host().Records().journal.size(), session_.Host().HostJournal().Select({"", 0, SIZE_MAX}).size()}) {
        EXPECT_GT(kept, 9000u);
        EXPECT_LE(kept, 10000u);
    }
    EXPECT_LE(atEnd, afterWarmUp);
    // Between rounds the plug-in may hold a request's worth more, never a growing amount.
    EXPECT_LE(highest, afterWarmUp + 4096);
}

}  // namespace
