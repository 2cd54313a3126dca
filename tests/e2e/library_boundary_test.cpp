// The built shared library, loaded and driven through its C entry only.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "address_sanitizer.h"
#include "plugin_library.h"
#include "simulated_host.h"
#ifndef _WIN32
#include "support/run_command.h"
#endif

namespace {

using tav::host::CoreVersion;
using tav::host::PluginLibrary;
using tav::host::SimulatedHost;

// The ELF tables; a DLL's are checked by the dll_tables test (cmake/check_dll_tables.cmake).
#ifndef _WIN32
TEST(LibraryBoundary, ExportsOnlyItsEntryAndNeedsNoCxxRuntimeOfTheHost) {
    std::istringstream symbols(tav::test::RunCommand(std::string("nm -D --defined-only ") + TAV_PLUGIN_PATH).output);
    std::set<std::string> exported;
    std::string address, type, name;
    while (symbols >> address >> type >> name) {
        exported.insert(type + " " + name);
    }
    EXPECT_EQ(exported, (std::set<std::string>{"T load_tav_leagues"}));
    const std::string needed =
        tav::test::RunCommand(std::string("readelf -d ") + TAV_PLUGIN_PATH + " | grep NEEDED").output;
    EXPECT_EQ(needed.find("libstdc++"), std::string::npos) << needed;
}
#endif

#ifdef __linux__
// Closed, the library leaves the process, and with it every static it holds.
TEST(LibraryBoundary, ClosingTheLibraryUnmapsIt) {
    if (tav::host::kUnderAddressSanitizer) {
        GTEST_SKIP() << "libraries stay mapped under the sanitizer, for its reports";
    }
    const auto mapped = [] {
        std::ifstream maps("/proc/self/maps");
        const std::string text{std::istreambuf_iterator<char>(maps), {}};
        return text.find(std::filesystem::canonical(TAV_PLUGIN_PATH).string()) != std::string::npos;
    };
    {
        PluginLibrary library;
        ASSERT_TRUE(library.Open(TAV_PLUGIN_PATH)) << library.error();
        EXPECT_TRUE(mapped());
    }
    EXPECT_FALSE(mapped());
}
#endif

// A library closed while its plug-in runs stops the plug-in first, which gives its subscriptions back.
TEST(LibraryBoundary, ClosingALibraryStopsItsPlugin) {
    SimulatedHost host;
    {
        PluginLibrary library;
        ASSERT_TRUE(library.Open(TAV_PLUGIN_PATH)) << library.error();
        ASSERT_TRUE(library.Load(CoreVersion{}));
        ASSERT_TRUE(host.Start(library));
    }
    ASSERT_FALSE(host.Records().subscriptions.empty());
    EXPECT_EQ(host.Records().unsubscriptions.size(), host.Records().subscriptions.size());
}

// The library opened, not yet loaded.
class OpenedLibrary : public ::testing::Test {
  protected:
    void SetUp() override { ASSERT_TRUE(library.Open(TAV_PLUGIN_PATH)) << library.error(); }

    PluginLibrary library;
};

TEST_F(OpenedLibrary, LoadGivesItsNameAndCountsItsOwnAllocations) {
    const auto before = library.Memory();
    ASSERT_TRUE(library.Load(CoreVersion{18, 7, 2}));
    // Packed: copied before gtest binds a reference.
    const char* const shortName = library.loadInfo().shortName;
    EXPECT_STREQ(shortName, "tav-leagues");
    if (tav::host::kUnderAddressSanitizer) {
        GTEST_SKIP() << "the sanitizer's allocator serves the plug-in before its counting wrappers see a call";
    }
    const auto loaded = library.Memory();
    EXPECT_GT(loaded.allocations, before.allocations);
    EXPECT_GT(loaded.allocatedBytes, before.allocatedBytes);
    EXPECT_GE(loaded.peakLiveBytes, loaded.LiveBytes());
    library.Stop();
    const auto stopped = library.Memory();
    EXPECT_GT(stopped.frees, loaded.frees);
    EXPECT_LT(stopped.LiveBytes(), loaded.LiveBytes());
}

// A host that calls back after Stop hands the plug-in addresses of freed
// memory; the plug-in must notice without reading them (the asan preset checks).
TEST_F(OpenedLibrary, AfterStopDropsLaterCallsWithOneLineEach) {
    ASSERT_TRUE(library.Load(CoreVersion{}));
    SimulatedHost host;
    ASSERT_TRUE(host.Start(library));
    const HostEndpointRecord* const endpoint = library.loadInfo().apiTable->endpoints;
    const HostEndpointFunction entry = endpoint->entry;
    const HostEndpointContext* const context = endpoint->context;
    const std::uint32_t method = endpoint->method;
    host.PushServerMessage("com.orvelsoft.platform.messaging.persistence.SimpleDialogMessage", "{}");
    host.RunTurn();  // the message's handler is scheduled for the next turn, which never comes
    ASSERT_FALSE(host.Records().schedules.empty());
    const tav::host::RecordedSchedule schedule = host.Records().schedules.back();
    const tav::host::RecordedSubscription subscription = host.Records().subscriptions.front();
    host.Stop(library);
    EXPECT_FALSE(library.loaded());

    testing::internal::CaptureStderr();
    schedule.callback(schedule.userData);
    HostEvent event{};
    event.name = subscription.name.c_str();
    event.userData = subscription.userData;
    subscription.callback(&event);
    HostRequest request{};
    request.method = method;
    request.path = "/tav-leagues/v2/notifications";
    request.endpointContext = context;
    HostResponse response{};
    entry(&response, &request);
    const std::string log = testing::internal::GetCapturedStderr();

    EXPECT_STREQ(response.error, "The plug-in has stopped");
    const std::uint32_t status = response.status;  // packed: copied before gtest binds a reference
    EXPECT_EQ(status, 503u);
    response.release(&response);
    std::vector<std::string> messages;
    std::istringstream lines(log);
    for (std::string line; std::getline(lines, line);) {
        messages.push_back(line.substr(line.find("| ") + 2));
    }
    EXPECT_EQ(messages, (std::vector<std::string>{
                            "Dropped a scheduled callback: it has run or its module has stopped",
                            "Dropped event " + subscription.name + ": its module has stopped",
                            "Refused a request for /tav-leagues/v2/notifications: its module has stopped",
                        }));
}

}  // namespace
