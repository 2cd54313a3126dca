#include <gtest/gtest.h>

#include <ctime>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "platform/process_info.h"

namespace wex::platform {
namespace {

#ifdef _WIN32
TEST(ExecutableName, IsTheFullPathOfTheRunningBinary) {
    const std::string name = ExecutableName();
    const std::string file = "\\test_platform.exe";
    ASSERT_GT(name.size(), file.size()) << name;
    EXPECT_EQ(name.substr(name.size() - file.size()), file);
    EXPECT_EQ(name.substr(1, 2), ":\\") << name;
}
#else
TEST(ExecutableName, IsTheBaseNameOfTheRunningBinary) {
    EXPECT_EQ(ExecutableName(), "test_platform");
}
#endif

TEST(CurrentThreadId, IsStableOnAThreadAndDiffersBetweenThreads) {
    const void* mine = CurrentThreadId();
    EXPECT_EQ(CurrentThreadId(), mine);
    std::set<const void*> ids = {mine};
    std::vector<std::thread> threads;
    std::vector<const void*> seen(3);
    for (std::size_t i = 0; i < seen.size(); ++i) {
        threads.emplace_back([&seen, i] { seen[i] = CurrentThreadId(); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    ids.insert(seen.begin(), seen.end());
    EXPECT_EQ(ids.size(), 4u);
}

TEST(CurrentLocalTime, AgreesWithTheCLibraryAndStaysInRange) {
    std::time_t before = std::time(nullptr);
    LocalTime now = CurrentLocalTime();
    std::time_t after = std::time(nullptr);
    std::tm parts{};
    parts.tm_year = now.year - 1900;
    parts.tm_mon = now.month - 1;
    parts.tm_mday = now.day;
    parts.tm_hour = now.hour;
    parts.tm_min = now.minute;
    parts.tm_sec = now.second;
    parts.tm_isdst = -1;
    std::time_t seen = std::mktime(&parts);
    EXPECT_GE(seen, before);
    EXPECT_LE(seen, after);
    EXPECT_GE(now.millisecond, 0);
    EXPECT_LE(now.millisecond, 999);
}

TEST(MonotonicNanoseconds, NeverGoesBackAndMovesWithTime) {
    std::uint64_t first = MonotonicNanoseconds();
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
    std::uint64_t second = MonotonicNanoseconds();
    EXPECT_GE(second - first, 2'000'000u);
}

}  // namespace
}  // namespace wex::platform
