#include "diagnostics/log_record.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "diagnostics/log_system.h"

namespace wex {
namespace {

// Registers new names until the mask runs out; exits 0 when that happens after bit 63.
[[noreturn]] void RegisterUntilFull() {
    std::uint64_t last = 0;
    for (int i = 0; i < 64; ++i) {
        std::string name = {'Z', static_cast<char>('A' + i / 26), static_cast<char>('A' + i % 26)};
        std::uint64_t mask = CategoryMask(name);
        if (mask == 0) {
            std::exit(last == std::uint64_t{1} << 63 && CategoryMask("ZAA") != 0 ? 0 : 1);
        }
        last = mask;
    }
    std::exit(2);
}

TEST(CategoryMaskDeathTest, SixtyFourCategoriesAtMost) {
    EXPECT_EXIT(RegisterUntilFull(), ::testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace wex
