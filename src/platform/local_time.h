#pragma once

#include <cstdint>

namespace wex::platform {

// A moment of the local wall clock, to the millisecond. month 1 to 12, day 1 to 31.
struct LocalTime {
    std::int32_t year = 0;
    std::int32_t month = 0;
    std::int32_t day = 0;
    std::int32_t hour = 0;
    std::int32_t minute = 0;
    std::int32_t second = 0;
    std::int32_t millisecond = 0;
};

LocalTime CurrentLocalTime();

}  // namespace wex::platform
