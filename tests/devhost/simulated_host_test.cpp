#include "simulated_host.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "plugin/app_module.h"
#include "support/case_table.h"
#include "support/hosted_module.h"

namespace tav::host {
namespace {

using wex::BindingProperty;
using wex::Failure;
using wex::MaybeType;

MaybeType<Failure, std::string> Echo(std::string text) {
    return text;
}

// A streamed body longer than one read of the host; counts its closings, each of which destroys one.
class LongBody : public wex::BodyProducer {
  public:
    static inline int closed = 0;
    ~LongBody() override { ++closed; }
    bool Read(void* buffer, std::uint32_t& size, bool& more) override {
        size = std::min(size, kLength - sent_);
        std::memset(buffer, 'a' + static_cast<int>(sent_ / 4096), size);
        sent_ += size;
        more = sent_ < kLength;
        return true;
    }
    std::uint32_t Length() const override { return kLength; }

  private:
    static constexpr std::uint32_t kLength = 5000;
    std::uint32_t sent_ = 0;
};

// A module with a literal route beside a template one, templates that only the framework's matcher
// tells apart, and a failing route.
class EndpointModule : public wex::AppModule {
  public:
    EndpointModule() : AppModule("tav-endpoints") {}
    void RegisterRoutesAndTypes() override {
        AddRoute(HostMethodGet, "/tav-test/v1/items/{id}", [](std::string id) {
            return Echo("item " + id);
        }).AddPathArgument("id", "");
        AddRoute(HostMethodGet, "/tav-test/v1/items/special", [] { return Echo("special"); });
        AddRoute(HostMethodGet, "/tav-test/v1/files/{+path}", [](std::string path) {
            return Echo("file " + path);
        }).AddPathArgument("path", "");
        AddRoute(HostMethodGet, "/tav-test/v1/tags/{name}", [](std::string name) {
            return Echo("tag " + name);
        }).AddPathArgument("name", "");
        AddRoute(HostMethodGet, "/tav-test/v1/tags/{name}.json", [](std::string name) {
            return Echo("tag as json " + name);
        }).AddPathArgument("name", "");
        AddRoute(HostMethodGet, "/tav-test/v1/search", [](std::string q) {
            return Echo("search " + q);
        }).AddQueryArgument("q", "");
        AddRoute(HostMethodPost, "/tav-test/v1/items/{id}/forbidden", [](std::string) -> MaybeType<Failure, void> {
            return Failure(403, "Forbidden");
        }).AddPathArgument("id", "");
        AddRoute(HostMethodGet, "/tav-test/v1/long", [](const wex::ApiRequestSummary&) {
            wex::ApiResponse response;
            response.headers["X-Kind"] = "long";
            response.producer = std::make_unique<LongBody>();
            return response;
        });
    }
};

class SimulatedHostTest : public ::testing::Test {
  protected:
    void SetUp() override { ASSERT_TRUE(hosted.Start()); }

    test::HostedModule<EndpointModule> hosted;
    SimulatedHost& host = hosted.host();
};

TEST_F(SimulatedHostTest, CallsTheEndpointThatServesThePath) {
    const std::map<std::string, std::uint32_t> methods{
        {"GET", HostMethodGet}, {"POST", HostMethodPost}, {"PUT", HostMethodPut}};
    for (const auto& row : tav::test::ReadCaseTable(__FILE__, "endpoint_calls.tsv", 5)) {
        SCOPED_TRACE(row[1]);
        const EndpointAnswer answer = host.CallEndpoint(methods.at(row[0]), row[1]);
        EXPECT_EQ(answer.status, std::stoul(row[2]));
        EXPECT_EQ(answer.json, row[3]);
        EXPECT_EQ(answer.error, row[4]);
        EXPECT_EQ(answer.failed, !row[4].empty());
    }
}

TEST_F(SimulatedHostTest, ReadsAStreamedBodyWholeAndClosesTheStream) {
    const EndpointAnswer answer = host.CallEndpoint(HostMethodGet, "/tav-test/v1/long");
    EXPECT_EQ(answer.text, std::string(4096, 'a') + std::string(904, 'b'));
    EXPECT_EQ(answer.headers, (std::map<std::string, std::string>{{"X-Kind", "long"}}));
    EXPECT_EQ(LongBody::closed, 1);
}

TEST_F(SimulatedHostTest, KeepsItsRecordsWithinTheLimitByDroppingTheOldestTenth) {
    host.SetRecordLimit(20);
    for (int index = 1; index <= 21; ++index) {
        (void)hosted.module().Request<BindingProperty>(HostMethodGet, "/r" + std::to_string(index));
    }
    ASSERT_EQ(host.Records().journal.size(), 18u);
    EXPECT_EQ(host.Records().journal.front(), "SendRequest GET /r4");
    EXPECT_EQ(host.Records().requests.size(), 18u);
    EXPECT_EQ(host.Records().requests.back().path, "/r21");
}

TEST_F(SimulatedHostTest, StoppingForgetsThePluginsSubscriptionsAndQueuedWork) {
    hosted.module().SubscribeToEvent("/tav-test/v1/entry");
    host.SetResource("/tav-test/v1/entry", "1");
    hosted.Stop();
    EXPECT_EQ(host.SubscriberCount("OnJsonApiEvent_tav-test_v1_entry"), 0u);
    EXPECT_EQ(host.RunUntilIdle(), 0u);
    const EndpointAnswer stopped = host.CallEndpoint(HostMethodGet, "/tav-test/v1/items/1");
    EXPECT_EQ(std::to_string(stopped.status) + " " + stopped.error, "404 No plug-in is started");
    EXPECT_TRUE(stopped.failed);
}

// Waits nest: each end closes the wait begun last, and an end without a beginning says so.
TEST_F(SimulatedHostTest, JournalsEachScheduledCallbackWithItsDelayAndNestedWaitsInnermostFirst) {
    hosted.module().Schedule(
        "refresh", [] {}, 0);
    const std::vector<JournalEntry> scheduled = host.HostJournal().Select({"schedule", 0, 10});
    ASSERT_EQ(scheduled.size(), 1u);
    EXPECT_EQ(scheduled[0].summary, "schedule refresh in 0 s");
    const CoreApi* api = host.StartInfo().api;
    api->BeginWait(api, "Wait: outer", 0);
    api->BeginWait(api, "Wait: yield", 0);
    api->EndWait(api);
    api->EndWait(api);
    api->EndWait(api);
    std::vector<std::string> ends;
    for (const JournalEntry& entry : host.HostJournal().Select({"wait", 0, 10})) {
        if (entry.summary.starts_with("wait over")) {
            ends.push_back(entry.summary.substr(0, entry.summary.find(" after ")));
        }
    }
    EXPECT_EQ(ends, (std::vector<std::string>{"wait over: yield", "wait over: outer", "wait over"}));
}

TEST(WaitSubject, NamesWhatAWaitIsFor) {
    const std::pair<const char*, const char*> rows[] = {
        {"Wait: yield", "yield"},
        {"Wait: future<wex::MaybeType<wex::Failure, Orvel::Client::Leagues::LCDS::LeagueListDTO> >", "league list"},
        {"Wait: future<wex::MaybeType<wex::Failure, std::vector<Orvel::Client::Leagues::Api::LeagueTier> > >",
         "league tier list"},
        {"Wait: future<class wex::MaybeType<class wex::Failure, struct Orvel::Client::Leagues::Api::Team> >", "team"},
        {"Wait: future<class wex::MaybeType<class wex::Failure,class std::vector<struct Orvel::Client::Leagues::Api::"
         "LeagueTier,class std::allocator<struct Orvel::Client::Leagues::Api::LeagueTier> > > >",
         "league tier list"},
        {"Wait: future<wex::MaybeType<wex::Failure, wex::BindingProperty> >", "value"},
    };
    for (const auto& [label, subject] : rows) {
        EXPECT_EQ(WaitSubject(label), subject) << label;
    }
}

}  // namespace
}  // namespace tav::host
