#include <arpa/inet.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <httplib.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <regex>
#include <thread>

#include "codec/json_reader.h"
#include "codec/json_writer.h"
#include "http_gateway.h"
#include "live_host_fixture.h"
#include "support/case_table.h"
#include "world_source.h"

namespace {

using tav::host::GatewayOptions;
using tav::host::HostSession;
using tav::test::DemoWorld;
using tav::test::LiveHostTest;
using ::testing::HasSubstr;
using wex::BindingProperty;

// A connection that sends its request as written, which the client library would amend; reads give up
// after a second without data.
class RawConnection {
  public:
    explicit RawConnection(int port) : socket_(socket(AF_INET, SOCK_STREAM, 0)) {
        const timeval second{1, 0};
        setsockopt(socket_, SOL_SOCKET, SO_RCVTIMEO, &second, sizeof second);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(static_cast<std::uint16_t>(port));
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        EXPECT_EQ(connect(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    }
    ~RawConnection() { close(socket_); }

    // Sends request; answers what came back until it holds until (by default, until the peer closes) or a
    // read gives up.
    std::string Exchange(const std::string& request, std::string_view until = {}) {
        EXPECT_EQ(send(socket_, request.data(), request.size(), 0), static_cast<ssize_t>(request.size()));
        std::string received;
        char buffer[4096];
        ssize_t count = 0;
        while ((until.empty() || received.find(until) == std::string::npos) &&
               (count = recv(socket_, buffer, sizeof buffer, 0)) > 0) {
            received.append(buffer, static_cast<std::size_t>(count));
        }
        return received;
    }

  private:
    int socket_;
};

TEST_F(LiveHostTest, AnswersEveryKindOfRequestWithItsStatusAndJson) {
    Serve();
    for (const auto& row : tav::test::ReadCaseTable(__FILE__, "gateway_requests.tsv", 5)) {
        SCOPED_TRACE(row[0] + " " + row[1] + " " + row[2]);
        httplib::Request request;
        request.method = row[0];
        request.path = row[1];
        request.body = row[2];
        const auto result = client_->send(request);
        ASSERT_TRUE(result) << httplib::to_string(result.error());
        EXPECT_EQ(result->status, std::stoi(row[3]));
        if (row[4] != "*") {
            EXPECT_EQ(result->body, row[4]);
        }
    }
}

TEST_F(LiveHostTest, AnswersWrongMethodsCrossOriginCallsAndLongOrMissingBodiesWithTheirHeaders) {
    Serve();
    for (auto row : tav::test::ReadCaseTable(__FILE__, "gateway_wire.tsv", 2)) {
        SCOPED_TRACE(row[0].substr(0, 100));
        if (const std::size_t at = row[0].find("<1048577 spaces>"); at != std::string::npos) {
            row[0].replace(at, 16, std::string(0x100001, ' '));
        }
        const std::string answer = RawConnection(live_->Port()).Exchange(row[0]);
        EXPECT_EQ(answer.substr(std::min<std::size_t>(9, answer.size())), row[1]);
    }
    // The same from the other loopback origins.
    for (const char* origin : {"http://127.0.0.1:3000", "https://[::1]:8443", "http://localhost"}) {
        const auto answer = client_->Get("/devhost/switches", {{"Origin", origin}});
        ASSERT_TRUE(answer);
        EXPECT_EQ(answer->get_header_value("Access-Control-Allow-Origin"), origin);
    }
}

TEST_F(LiveHostTest, JournalsRequestsServerCallsAndWaitsInWordsAndPrintsALinePerRequest) {
    std::ostringstream console;
    GatewayOptions options;
    options.requestLog = &console;
    Serve(options);
    const auto lines = [this](const std::string& query) {
        std::vector<std::string> summaries;
        for (const auto& entry : wex::ParseJson(client_->Get("/devhost/journal" + query)->body).Elements()) {
            summaries.push_back(std::regex_replace(std::string(entry.Member("summary").AsString()),
                                                   std::regex(R"(in \d+ ms|after \d+ ms)"), "in N ms"));
            EXPECT_TRUE(std::regex_match(std::string(entry.Member("time").AsString()),
                                         std::regex(R"(20\d\d-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3}Z)")));
        }
        return summaries;
    };
    // Events name their kind and resource.
    EXPECT_THAT(lines("?kind=event"), ::testing::Contains("event OnJsonApiEvent Update /tav-leagues/v2/notifications"));
    ASSERT_EQ(client_->Delete("/devhost/journal")->status, 204);
    ASSERT_EQ(client_->Get("/tav-leagues/v1/summoner-leagues/1001")->status, 200);
    ASSERT_EQ(client_->Put("/devhost/faults/leagues/getAllMyLeagues", R"({"error":"down"})", "")->status, 204);
    ASSERT_EQ(client_->Get("/tav-leagues/v1/summoner-leagues/1001")->status, 500);
    EXPECT_EQ(lines("?kind=server"), (std::vector<std::string>{"server leagues.getAllMyLeagues -> 200 in N ms",
                                                               "server leagues.getAllMyLeagues -> 500 down in N ms"}));
    EXPECT_EQ(lines("?kind=wait&limit=2"),
              (std::vector<std::string>{"wait: summoner leagues", "wait over: summoner leagues in N ms"}));
    EXPECT_EQ(lines("?kind=http"),
              (std::vector<std::string>{"http GET /tav-leagues/v1/summoner-leagues/1001 -> 200 in N ms",
                                        "http PUT /devhost/faults/leagues/getAllMyLeagues -> 204 in N ms",
                                        "http GET /tav-leagues/v1/summoner-leagues/1001 -> 500 in N ms"}));
    const auto last = wex::ParseJson(client_->Get("/devhost/journal?limit=1")->body);
    const std::uint64_t lastId = last.Elements()[0].Member("id").AsUInt64();
    EXPECT_EQ(lines("?since=" + std::to_string(lastId - 2)).size(), 2u);
    EXPECT_EQ(last.Elements()[0].Member("detail").AsString(),
              R"(/tav-leagues/v1/summoner-leagues/1001 -> {"message":"Error requesting league for summoner id: 1001, )"
              R"(error: down","status":500})");
    // The log tells its levels by name.
    BindingProperty logged = wex::ParseJson(client_->Get("/devhost/log?limit=1")->body).Elements()[0];
    logged.RemoveMember("time");
    EXPECT_EQ(wex::WriteJson(logged), R"({"category":"DBG","level":"ERROR","message":"Failed to get leagues: down"})");
    // Each connection logs on its own thread once its answer is out, so the lines are compared in order of
    // their text, when the host has stopped.
    stop_ = true;
    hostThread_.join();
    std::vector<std::string> printed;
    std::istringstream text(std::regex_replace(console.str(), std::regex(R"( \d+ ms\n)"), " N ms\n"));
    for (std::string line; std::getline(text, line);) {
        printed.push_back(line);
    }
    std::sort(printed.begin(), printed.end());
    EXPECT_EQ(printed, (std::vector<std::string>{"DELETE /devhost/journal 204 N ms", "GET /devhost/journal 200 N ms",
                                                 "GET /devhost/journal 200 N ms", "GET /devhost/journal 200 N ms",
                                                 "GET /devhost/journal 200 N ms", "GET /devhost/journal 200 N ms",
                                                 "GET /devhost/journal 200 N ms", "GET /devhost/log 200 N ms",
                                                 "GET /tav-leagues/v1/summoner-leagues/1001 200 N ms",
                                                 "GET /tav-leagues/v1/summoner-leagues/1001 500 N ms",
                                                 "PUT /devhost/faults/leagues/getAllMyLeagues 204 N ms"}));
}

TEST_F(LiveHostTest, NeedsTheTokenWhenItHasOneAndKeepsItFromThePlugin) {
    GatewayOptions options;
    options.accessToken = "s3cret";
    Serve(options);
    for (const auto& row : tav::test::ReadCaseTable(__FILE__, "gateway_token.tsv", 4)) {
        SCOPED_TRACE(row[0] + " " + row[1]);
        httplib::Headers headers;
        if (!row[1].empty()) {
            headers.emplace("Authorization", row[1]);
        }
        const auto answer = client_->Get(row[0], headers);
        ASSERT_TRUE(answer);
        EXPECT_EQ(answer->status, std::stoi(row[2])) << answer->body;
        if (!row[3].empty()) {
            EXPECT_EQ(answer->body, row[3]);
        }
    }
}

TEST_F(LiveHostTest, ASlowServerAnswerDoesNotHoldUpOtherRequests) {
    Serve();
    const auto fault = client_->Put("/devhost/faults/leagues/getAllMyLeagues", R"({"delaySeconds":2})", "");
    ASSERT_TRUE(fault);
    ASSERT_EQ(fault->status, 204);
    std::atomic<bool> slowAnswered{false};
    int slowStatus = 0;
    std::thread slow([&] {
        httplib::Client client("127.0.0.1", live_->Port());
        const auto answer = client.Get("/tav-leagues/v1/summoner-leagues/1001");
        slowStatus = answer ? answer->status : -1;
        slowAnswered = true;
    });
    // Let the slow request reach the plug-in and start waiting for the server.
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    const auto team = client_->Get("/tav-leagues/v1/teams/TEAM-4F2A-91C3");
    const bool answeredFirst = !slowAnswered;
    slow.join();
    ASSERT_TRUE(team);
    EXPECT_EQ(team->status, 200);
    EXPECT_TRUE(answeredFirst);
    EXPECT_EQ(slowStatus, 200);
}

TEST_F(LiveHostTest, ServesRequestsBesideAsManyEventStreamsAsItTakesFeedsThemAndEndsThemWhenItStops) {
    GatewayOptions options;
    options.maxEventStreams = 20;
    Serve(options);
    const std::string request = "GET /devhost/events HTTP/1.1\r\nHost: tav\r\nConnection: close\r\n\r\n";
    std::vector<std::unique_ptr<RawConnection>> streams;
    for (int index = 0; index < 20; ++index) {
        streams.push_back(std::make_unique<RawConnection>(live_->Port()));
        ASSERT_THAT(streams.back()->Exchange(request, ": tav-host events\n\n"), HasSubstr("200 OK")) << index;
    }
    RawConnection refused(live_->Port());
    EXPECT_THAT(refused.Exchange(request),
                HasSubstr(R"({"message":"tav-host serves at most 20 event streams at once; close one to open )"
                          R"(another","status":503})"));
    client_->set_read_timeout(std::chrono::seconds(1));
    const auto answer = client_->Get("/devhost/faults");
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->status, 200);
    // What the plug-in publishes reaches the streams.
    for (const char* phase : {"ChampSelect", "EndOfGame"}) {
        const std::string body = std::string(R"({"phase":")") + phase + R"(","queue":"RANKED_SOLO_5x5"})";
        ASSERT_EQ(client_->Put("/devhost/gameflow", body, "")->status, 204);
    }
    EXPECT_THAT(streams.front()->Exchange("", R"(,"uri":"/tav-leagues/v2/notifications"})"),
                HasSubstr("\r\nevent: OnJsonApiEvent\ndata: {\"data\":[{"));
    // A stream ends as a chunked answer should, with its last chunk, rather than being cut off.
    stop_ = true;
    EXPECT_THAT(streams.front()->Exchange("", "0\r\n\r\n"), ::testing::EndsWith("0\r\n\r\n"));
}

// The gateway alone, with the test standing in for the host's thread.
class GatewayTest : public ::testing::Test {
  protected:
    GatewayTest() {
        GatewayOptions options;
        options.answerTimeout = std::chrono::milliseconds(300);
        gateway_ = std::make_unique<tav::host::HttpGateway>(session_, queue_, events_, options);
        EXPECT_TRUE(gateway_->Bind());
        gateway_->Start();
    }
    ~GatewayTest() override {
        events_.Close();
        queue_.Close();
        gateway_->Stop();
    }

    HostSession session_{DemoWorld()};
    tav::host::HostWorkQueue queue_;
    tav::host::EventStream events_;
    std::unique_ptr<tav::host::HttpGateway> gateway_;
};

// A reader that fell behind by more than the stream keeps goes on from the oldest event kept.
TEST(EventStream, KeepsItsLastEventsForReadersThatFellBehind) {
    tav::host::EventStream events;
    for (std::size_t index = 0; index <= tav::host::EventStream::kKept; ++index) {
        events.Publish({"e", std::to_string(index)});
    }
    std::uint64_t next = 0;
    std::string text;
    ASSERT_TRUE(events.Wait(next, text, std::chrono::milliseconds(0)));
    EXPECT_EQ(text, "event: e\ndata: 1\n\n");
    EXPECT_EQ(next, 2u);
    EXPECT_EQ(events.Next(), tav::host::EventStream::kKept + 1);
}

TEST_F(GatewayTest, RefusesItsPortWhileTakenAndTakesItAgainAtOnceWhenFree) {
    GatewayOptions options;
    options.port = gateway_->Port();
    EXPECT_FALSE(tav::host::HttpGateway(session_, queue_, events_, options).Bind());
    // A connection that the server closed first keeps the port in TIME_WAIT for a while.
    httplib::Client client("127.0.0.1", gateway_->Port());
    ASSERT_TRUE(client.Get("/devhost/nothing", {{"Connection", "close"}}));
    events_.Close();
    queue_.Close();
    gateway_->Stop();
    EXPECT_TRUE(tav::host::HttpGateway(session_, queue_, events_, options).Bind());
}

// Work whose asker is gone (answered 504, or left) stays queued; running it later harms no later request.
TEST_F(GatewayTest, AnswersLateWorkWith504AndOutlivesAClientThatLeaves) {
    httplib::Client client("127.0.0.1", gateway_->Port());
    const auto late = client.Get("/devhost/faults");
    ASSERT_TRUE(late);
    EXPECT_EQ(late->status, 504);
    EXPECT_EQ(late->body, R"({"message":"The host did not answer in time","status":504})");
    {
        httplib::Client impatient("127.0.0.1", gateway_->Port());
        impatient.set_read_timeout(std::chrono::milliseconds(50));
        EXPECT_FALSE(impatient.Get("/devhost/faults"));
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(350));
    EXPECT_EQ(queue_.RunQueued(), 2u);

    std::thread host([&] {
        while (queue_.RunQueued() == 0) {
            queue_.WaitForWork(std::chrono::milliseconds(10));
        }
    });
    const auto next = client.Get("/devhost/faults");
    host.join();
    ASSERT_TRUE(next);
    EXPECT_EQ(next->status, 200);
    EXPECT_EQ(next->body, "[]");
}

}  // namespace
