#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "scenario.h"

namespace {

using tav::host::RunScenarios;

// A scenario file in a folder of its own, removed at the end.
class ScenarioTest : public ::testing::Test {
  protected:
    ScenarioTest() {
        char folder[] = "/tmp/tav-scenario-XXXXXX";
        folder_ = mkdtemp(folder);
    }
    ~ScenarioTest() override { std::filesystem::remove_all(folder_); }

    std::string Write(const std::string& name, const std::string& text) {
        const std::string path = folder_ + "/" + name;
        std::ofstream(path) << text;
        return path;
    }
    // Plays the text; the report with the file's folder taken out.
    std::string Play(const std::string& text, int expectedCode) {
        const std::string path = Write("s.yaml", text);
        std::ostringstream out;
        EXPECT_EQ(RunScenarios({path}, {TAV_PLUGIN_PATH, {18, 0, 0}}, out), expectedCode);
        std::string report = out.str();
        for (std::size_t at; (at = report.find(folder_ + "/")) != std::string::npos;) {
            report.erase(at, folder_.size() + 1);
        }
        const std::string summary = expectedCode == 0   ? "Scenarios: 1 passed, 0 failed, 0 skipped\n"
                                    : expectedCode == 1 ? "Scenarios: 0 passed, 1 failed, 0 skipped\n"
                                                        : "Scenarios: 0 passed, 0 failed, 1 skipped\n";
        EXPECT_TRUE(report.ends_with(summary)) << report;
        return report.substr(0, report.size() - std::min(report.size(), summary.size()));
    }

    std::string folder_;
};

TEST_F(ScenarioTest, ReportsEachStepAndPasses) {
    EXPECT_EQ(Play("name: controls\n"
                   "steps:\n"
                   "  - note: hello\n"
                   "  - advance: 60\n"
                   "  - gameflow: {phase: ChampSelect}\n"
                   "  - call: {path: /x}\n"
                   "    expect: {status: 404, message: No endpoint for /x, json: {status: 404}}\n"
                   "  - expect: {log: [\"7311'\"]}\n",
                   0),
              "Scenario s.yaml: controls\n"
              "  1 ok    -- hello\n"
              "  2 ok    advance 60 s\n"
              "  3 ok    gameflow {\"phase\":\"ChampSelect\"}\n"
              "  4 ok    call GET /x: 404\n"
              "  5 ok    expect {\"log\":[\"7311'\"]}\n"
              "  passed, 5 steps\n");
}

TEST_F(ScenarioTest, PlaysEveryFileAfterAFailureAndCountsThem) {
    const std::string passing = Write("a.yaml", "name: a\nsteps: [{note: x}]\n");
    const std::string failing = Write("b.yaml", "name: b\nsteps: [{call: {path: /x}, expect: {status: 200}}]\n");
    const std::string later = Write("c.yaml", "name: c\nrequires: [GET /tav-leagues/v9/future]\nsteps: [{note: x}]\n");
    std::ostringstream out;
    EXPECT_EQ(RunScenarios({failing, passing, later}, {TAV_PLUGIN_PATH, {18, 0, 0}}, out), 1);
    EXPECT_TRUE(out.str().ends_with("  passed, 1 steps\nScenario " + later +
                                    ": c\n  skipped: the plug-in has no route GET /tav-leagues/v9/future yet\n"
                                    "Scenarios: 1 passed, 1 failed, 1 skipped\n"))
        << out.str();
}

TEST_F(ScenarioTest, StopsAtTheFirstMismatchWithWhatDiffered) {
    const struct {
        const char* step;
        const char* failure;
    } cases[] = {
        {"- call: {path: /x}\n  expect: {status: 200}",
         "call GET /x: 404, expected 200 ({\"message\":\"No endpoint for /x\",\"status\":404})"},
        {"- call: {path: /x}\n  expect: {json: {status: 400}}",
         "call GET /x: 404, answer $.status: expected 400, got 404"},
        {"- call: {path: /x}\n  expect: {message: Nope}",
         "call GET /x: 404, expected the message \"Nope\", got {\"message\":\"No endpoint for /x\",\"status\":404}"},
        {"- call: {path: /x}\n  expect: {contains: [1]}", "call GET /x: 404, no element holds 1"},
        {"- expect: {events: [{name: OnJsonApiEvent, payload: {uri: /a}}]}",
         "no event {\"name\":\"OnJsonApiEvent\",\"payload\":{\"uri\":\"/a\"}} was published"},
        {"- expect: {serverCalls: [{destination: leagues, method: getAllMyLeagues}]}",
         "no server call {\"destination\":\"leagues\",\"method\":\"getAllMyLeagues\"} was made"},
        {"- expect: {log: [Failed]}", "no log line contains \"Failed\""},
        {"- expect: {hostCalls: [SubscribeHostEvent OnNothing]}",
         "no host call contains \"SubscribeHostEvent OnNothing\""},
        {"- advance: 0",
         "POST /devhost/clock answered 400 {\"message\":\"The clock moves on by {\\\"seconds\\\": N}, N more than 0 "
         "and at "
         "most 86400\",\"status\":400}"},
        {"- expect: {hostCalls: [ScheduleCallback wex-be-tav-leagues:revalidate-jwt 53]}",
         "no host call contains \"ScheduleCallback wex-be-tav-leagues:revalidate-jwt 53\""},
        // At login the plug-in logs that it acknowledged the stored message '7311'.
        {"- expect: {log: [\"1'\"]}", "no log line contains \"1'\""},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.step);
        std::string step = row.step;
        for (std::size_t at = 0; (at = step.find('\n', at)) != std::string::npos; at += 3) {
            step.insert(at + 1, "  ");
        }
        EXPECT_EQ(Play("name: one\nsteps:\n  - note: first\n  " + step + "\n  - note: never\n", 1),
                  std::string("Scenario s.yaml: one\n  1 ok    -- first\n  2 FAIL  ") + row.failure + "\n");
    }
}

TEST_F(ScenarioTest, RefusesFilesThatCannotBePlayed) {
    const struct {
        const char* text;
        const char* refusal;
    } cases[] = {
        {"steps: []", "a scenario needs \"steps\", a list of at least one step"},
        {"nme: x\nsteps: [{note: x}]", "nme: unknown key; the keys here are name, world, requires, steps"},
        {"steps: [{note: x}, []]", "steps[1]: a step is a mapping with one action, such as {login: {}}"},
        {"steps: [{dance: {}}]", "steps[0]: unknown step \"dance\""},
        {"steps: [{login: {}, logout: {}}]", "steps[0].logout: unknown key; the keys here are login"},
        {"steps: [{call: {path: /x}, expect: {stauts: 500}}]",
         "steps[0].expect.stauts: unknown key; the keys here are status, json, contains, lacks, message"},
        {"steps: [{call: {path: /x}, expect: {status: '500'}}]",
         "steps[0].expect.status: expected a whole number, 0 or more"},
        {"steps: [{call: {method: GET}}]", "steps[0].call.path: missing"},
        {"steps: [{fault: {method: getAllMyLeagues, error: down}}]", "steps[0].fault.destination: missing"},
        {"steps: [{fault: {destination: leagues, error: down}}]", "steps[0].fault.method: missing"},
        {"steps: [{expect: {events: [{nam: OnX}]}}]",
         "steps[0].expect.events[0].nam: unknown key; the keys here are name, payload"},
        {"steps: [{expect: {log: [[x]]}}]", "steps[0].expect.log[0]: expected a text"},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(Play(std::string(row.text) + "\n", 1),
                  std::string("Scenario s.yaml: (no name)\nScenario s.yaml: ") + row.refusal + "\n");
    }
    EXPECT_EQ(Play("name: lost\nworld: nowhere.yaml\nsteps: [{note: x}]\n", 1),
              "Scenario s.yaml: lost\nScenario s.yaml: cannot read the world file nowhere.yaml\n");
    Write("bad-world.yaml", "currentPlayer: 9\n");
    EXPECT_EQ(Play("name: bad\nworld: bad-world.yaml\nsteps: [{note: x}]\n", 1),
              "Scenario s.yaml: bad\nScenario s.yaml: bad-world.yaml: currentPlayer: 9 is not a player of the world\n");
    std::ostringstream out;
    EXPECT_EQ(RunScenarios({folder_ + "/none.yaml"}, {TAV_PLUGIN_PATH, {18, 0, 0}}, out), 1);
    EXPECT_EQ(out.str(), "Scenario " + folder_ + "/none.yaml: cannot read " + folder_ +
                             "/none.yaml\nScenarios: 0 passed, 1 failed, 0 skipped\n");
}

TEST_F(ScenarioTest, SkipsWhenThePluginLacksARouteItNeeds) {
    EXPECT_EQ(Play("name: later\nrequires: [GET /tav-leagues/v9/future]\nsteps: [{note: x}]\n", 77),
              "Scenario s.yaml: later\n  skipped: the plug-in has no route GET /tav-leagues/v9/future yet\n");
}

}  // namespace
