#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

#include "support/run_command.h"

namespace {

using tav::test::RunCommand;
using ::testing::HasSubstr;

const std::string kHost = TAV_HOST_PATH;

TEST(TavHostInspect, PrintsWhatThePluginHandedOver) {
    const auto result = RunCommand(kHost + " inspect");
    EXPECT_EQ(result.exitCode, 0) << result.output;
    EXPECT_THAT(result.output, HasSubstr("with core plugin API 18.0.0\n"));
    EXPECT_THAT(result.output, HasSubstr("  plugin API version:     18.0.0\n  short name:             tav-leagues\n"));
    EXPECT_THAT(result.output, HasSubstr("  API table:              "));
    EXPECT_THAT(result.output, HasSubstr("\n  OnCallback: BindingCallbackEvent\n"));
    EXPECT_THAT(result.output, HasSubstr("\n  BindingAsyncCancelEvent (4 bytes)\n    asyncToken: uint32\n"));
    EXPECT_THAT(result.output, HasSubstr("Start: true\nEvent subscriptions (10):\n  OnServiceProxyUuidEvent\n"));
    EXPECT_THAT(result.output, HasSubstr("\nRequests to the host (6):\n  GET /tav-login/v1/session\n"));
    EXPECT_THAT(result.output, HasSubstr("Memory after stop:\n  peak live bytes:        "));
}

TEST(TavHostInspect, TakesTheCoreVersionAndAnIncompatibleOneStopsThePlugin) {
    const auto taken = RunCommand(kHost + " inspect --core-version 18.3.1");
    EXPECT_EQ(taken.exitCode, 0) << taken.output;
    EXPECT_THAT(taken.output, HasSubstr("with core plugin API 18.3.1\n  plugin API version:     18.0.0\n"));
    const auto result = RunCommand(kHost + " inspect --core-version 19.0.0");
    EXPECT_NE(result.exitCode, 0);
    EXPECT_THAT(result.output,
                HasSubstr("ERROR| tav-leagues which supports plugin API 18.0.0 is not compatible with core's plugin "
                          "API 19.0.0\n"));
    EXPECT_THAT(result.output, HasSubstr("ERROR| Assertion failed!\n\nExpression: ALE-EECF0606\n"));
    EXPECT_THAT(result.output, HasSubstr("\ntav-host: the plug-in ended the process on loading with core plugin API "
                                         "19.0.0; offer the version it supports with --core-version X.Y.Z\n"));
}

// The whole output of a refused run: the library's error names the file and gives the system's own reason, or
// the missing entry.
TEST(TavHostInspect, RefusesAMalformedCoreVersionAndALibraryItCannotUse) {
    std::vector<std::tuple<std::string, int, std::string>> cases = {
        {"--plugin /nonexistent/plugin.so", 1,
         "cannot load /nonexistent/plugin.so: /nonexistent/plugin.so: cannot open shared object file: No such file or "
         "directory"},
        {"--plugin libm.so.6", 1, "libm.so.6 does not export load_tav_leagues"},
    };
    for (const std::string version : {"18", "18.0", "18.0.0.1", "a.b.c", "18.-1.0", "18.0.99999999999"}) {
        cases.emplace_back("--core-version '" + version + "'", 2,
                           "--core-version takes major.minor.patch, for example 18.0.0, not '" + version + "'");
    }
    for (const auto& [arguments, exitCode, message] : cases) {
        SCOPED_TRACE(arguments);
        const auto result = RunCommand(kHost + " inspect " + arguments);
        EXPECT_EQ(result.exitCode, exitCode);
        EXPECT_EQ(result.output, "tav-host: " + message + "\n");
    }
}

}  // namespace
