#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <httplib.h>
#include <signal.h>
#include <sys/wait.h>

#include <cstdio>
#include <regex>
#include <thread>

#include "support/run_command.h"

namespace {

using ::testing::HasSubstr;

// tav-host started as `make run` starts it, but on a free port, quiet, with its output read through a pipe. The shell
// prints its own process id, which tav-host takes over. It is killed with the test, should a timeout end the test
// before the host.
class ServedHost {
  public:
    ServedHost()
        : output_(popen(
              ("echo $$; exec setpriv --pdeathsig KILL " + std::string(TAV_HOST_PATH) + " serve --port 0 --quiet 2>&1")
                  .c_str(),
              "r")),
          pid_(std::stoi(ReadUntil(""))) {}
    ~ServedHost() {
        if (output_ != nullptr) {
            Stop();
        }
    }

    // Reads the output up to the line that starts with prefix; that line, or empty at the end.
    std::string ReadUntil(const std::string& prefix) {
        char line[4096];
        while (output_ != nullptr && fgets(line, sizeof line, output_) != nullptr) {
            if (std::string(line).rfind(prefix, 0) == 0) {
                return line;
            }
        }
        return {};
    }
    void Interrupt() const { Send(SIGINT); }
    void Send(int signal) const { kill(pid_, signal); }
    // The exit code once it has ended.
    int Wait() {
        const int status = pclose(output_);
        output_ = nullptr;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    int Stop() {
        Interrupt();
        return Wait();
    }

  private:
    FILE* output_;
    pid_t pid_;
};

TEST(TavHostServe, ServesThePluginAndItsApiTableAndStopsOnInterrupt) {
    ServedHost host;
    const std::string listening = host.ReadUntil("Listening on ");
    std::smatch port;
    ASSERT_TRUE(std::regex_search(listening, port, std::regex(R"(^Listening on http://127\.0\.0\.1:(\d+)\n$)")))
        << listening;
    EXPECT_EQ(host.ReadUntil("Current player: "), "Current player: Ardent Vale (summoner 1001)\n");
    EXPECT_THAT(host.ReadUntil("  curl "), ::testing::StartsWith("  curl http://127.0.0.1:" + port[1].str() + "/"));
    EXPECT_EQ(host.ReadUntil("Stop with Ctrl-C."), "Stop with Ctrl-C.\n");
    httplib::Client client("127.0.0.1", std::stoi(port[1]));
    const auto api = client.Get("/devhost/api");
    ASSERT_TRUE(api);
    EXPECT_THAT(api->body, HasSubstr(R"("method":"POST","path":"/tav-leagues/v2/notifications/{id}/acknowledge",)"));
    EXPECT_THAT(api->body, HasSubstr(R"({"description":"Fired when a callback is invoked.","name":"OnCallback",)"));
    EXPECT_THAT(api->body,
                HasSubstr(R"("fields":[{"name":"asyncToken","type":"uint32"}],"name":"BindingAsyncCancelEvent")"));
    host.Interrupt();
    EXPECT_THAT(host.ReadUntil("Stopped."), HasSubstr("Stopped. Memory after stop:"));
    EXPECT_THAT(host.ReadUntil("  live:"), HasSubstr(" bytes"));
    EXPECT_EQ(host.Wait(), 0);
}

TEST(TavHostServe, AnInterruptDuringADelayedAnswerSaysWhatItWaitsForAndStopsAtOnce) {
    ServedHost host;
    const std::string listening = host.ReadUntil("Listening on ");
    httplib::Client client("127.0.0.1", std::stoi(listening.substr(listening.rfind(':') + 1)));
    ASSERT_EQ(client.Put("/devhost/faults/leagues/getAllMyLeagues", R"({"delaySeconds":5})", "")->status, 204);
    std::thread slow([&listening] {
        httplib::Client waiting("127.0.0.1", std::stoi(listening.substr(listening.rfind(':') + 1)));
        (void)waiting.Get("/tav-leagues/v1/summoner-leagues/1001");
    });
    while (client.Get("/devhost/journal?kind=server")->body.find("getAllMyLeagues -> pending") == std::string::npos) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    const auto interrupted = std::chrono::steady_clock::now();
    host.Interrupt();
    EXPECT_THAT(
        host.ReadUntil("Stopping: "),
        ::testing::MatchesRegex("Stopping: the plug-in waits for leagues\\.getAllMyLeagues, held [45] s more by "
                                "a fault; answering it now\\. Ctrl-C again quits at once\\.\n"));
    EXPECT_EQ(host.Wait(), 0);
    slow.join();
    EXPECT_LT(std::chrono::steady_clock::now() - interrupted, std::chrono::seconds(2));
}

// Stopped, the host keeps both signals pending until it continues, so the second one always finds the first.
TEST(TavHostServe, ASecondInterruptQuitsAtOnceWithoutStoppingThePlugin) {
    ServedHost host;
    ASSERT_EQ(host.ReadUntil("Stop with Ctrl-C."), "Stop with Ctrl-C.\n");
    for (const int signal : {SIGSTOP, SIGINT, SIGTERM, SIGCONT}) {
        host.Send(signal);
    }
    EXPECT_EQ(host.ReadUntil("tav-host: "), "tav-host: quit without stopping the plug-in\n");
    EXPECT_EQ(host.Wait(), 130);
}

}  // namespace
