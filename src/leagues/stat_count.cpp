#include "leagues/stat_count.h"

#include <cmath>
#include <limits>

namespace Orvel::Client::Leagues {

std::int64_t StatCount(float value) {
    using Limits = std::numeric_limits<std::int64_t>;
    // 2^63 is exact as a float; every float below it converts.
    constexpr float kBeyondMax = 9223372036854775808.0f;
    if (std::isnan(value)) {
        return 0;
    }
    if (value >= kBeyondMax) {
        return Limits::max();
    }
    if (value < -kBeyondMax) {
        return Limits::min();
    }
    return static_cast<std::int64_t>(value);
}

}  // namespace Orvel::Client::Leagues
