// 10,000 mixed requests through HTTP with faults set and cleared on the way:
// every one is answered, and the plug-in's live bytes come back to their
// level after the first requests. The figures are printed, not timed.
#include <gtest/gtest.h>

#include <chrono>
#include <iostream>
#include <map>

#include "codec/json_reader.h"
#include "live_host_fixture.h"
#include "support/case_table.h"

namespace {

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
    const auto round = tav::test::ReadCaseTable(__FILE__, "mixed_requests.tsv", 3);
    for (std::size_t index = 0; index < kRequests; ++index) {
        const auto& row = round[index % round.size()];
        httplib::Request request;
        request.method = row[0];
        request.path = row[1];
        request.body = row[2];
        const auto answer = client_->send(request);
        ASSERT_TRUE(answer) << row[0] << " " << row[1] << ": " << httplib::to_string(answer.error());
        ++statuses[answer->status];
        if (index + 1 == kWarmUp) {
            afterWarmUp = liveBytes();
        }
        if (index >= kWarmUp && index % round.size() == round.size() - 1) {
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
