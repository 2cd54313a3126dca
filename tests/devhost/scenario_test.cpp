#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "scenario.h"
#include "support/case_table.h"

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
    const std::string missing = folder_ + "/none.yaml";
    std::ostringstream out;
    EXPECT_EQ(RunScenarios({failing, passing, missing, later}, {TAV_PLUGIN_PATH, {18, 0, 0}}, out), 1);
    EXPECT_TRUE(out.str().ends_with("  passed, 1 steps\nScenario " + missing + ": cannot read " + missing +
                                    "\nScenario " + later +
                                    ": c\n  skipped: the plug-in has no route GET /tav-leagues/v9/future yet\n"
                                    "Scenarios: 1 passed, 2 failed, 1 skipped\n"))
        << out.str();
}

TEST_F(ScenarioTest, StopsAtTheFirstMismatchWithWhatDiffered) {
    for (const auto& row : tav::test::ReadCaseTable(__FILE__, "scenario_mismatches.tsv", 2)) {
        SCOPED_TRACE(row[0]);
        EXPECT_EQ(Play("name: one\nsteps:\n  - note: first\n  " + row[0] + "\n  - note: never\n", 1),
                  "Scenario s.yaml: one\n  1 ok    -- first\n  2 FAIL  " + row[1] + "\n");
    }
}

TEST_F(ScenarioTest, RefusesFilesThatCannotBePlayed) {
    for (const auto& row : tav::test::ReadCaseTable(__FILE__, "scenario_refusals.tsv", 2)) {
        SCOPED_TRACE(row[0]);
        EXPECT_EQ(Play(row[0] + "\n", 1), "Scenario s.yaml: (no name)\nScenario s.yaml: " + row[1] + "\n");
    }
    EXPECT_EQ(Play("name: lost\nworld: nowhere.yaml\nsteps: [{note: x}]\n", 1),
              "Scenario s.yaml: lost\nScenario s.yaml: cannot read the world file nowhere.yaml\n");
    Write("bad-world.yaml", "currentPlayer: 9\n");
    EXPECT_EQ(Play("name: bad\nworld: bad-world.yaml\nsteps: [{note: x}]\n", 1),
              "Scenario s.yaml: bad\nScenario s.yaml: bad-world.yaml: currentPlayer: 9 is not a player of the world\n");
}

}  // namespace
