#include "leagues/stat_count.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

namespace Orvel::Client::Leagues {
namespace {

TEST(StatCount, TruncatesTowardZeroAndSaturatesOutsideTheRange) {
    using Limits = std::numeric_limits<std::int64_t>;
    struct Row {
        float value;
        std::int64_t count;
    };
    const Row rows[] = {
        {0.0f, 0},
        {10.9f, 10},
        {-10.9f, -10},
        {9223371487098961920.0f, 9223371487098961920},  // the largest float below 2^63
        {9223372036854775808.0f, Limits::max()},        // 2^63
        {-9223372036854775808.0f, Limits::min()},       // -2^63 fits
        {-1e19f, Limits::min()},
        {std::numeric_limits<float>::infinity(), Limits::max()},
        {-std::numeric_limits<float>::infinity(), Limits::min()},
        {std::numeric_limits<float>::quiet_NaN(), 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.value);
        EXPECT_EQ(StatCount(row.value), row.count);
    }
}

}  // namespace
}  // namespace Orvel::Client::Leagues
