#include "diagnostics/log_record.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "diagnostics/log_system.h"

namespace wex {
namespace {

std::string Name(unsigned bit) {
    return CategoryName(bit).data();
}

TEST(CategoryMask, FixedCategoriesLocFromTheLogSystemAndNewNamesOfThreeCharactersAtMost) {
    AcquireLogSystem();
    const char* fixed[] = {"DBG", "GEN", "XTR", "PRF", "MEM", "DSK", "NET", "TST", "LOC"};
    for (unsigned bit = 0; bit < 9; ++bit) {
        EXPECT_EQ(CategoryMask(fixed[bit]), std::uint64_t{1} << bit);
        EXPECT_EQ(Name(bit), fixed[bit]);
    }
    ReleaseLogSystem();
    std::uint64_t first = CategoryMask("QRY");
    EXPECT_EQ(first, std::uint64_t{1} << 9);
    EXPECT_EQ(CategoryMask("QRY"), first);
    EXPECT_EQ(CategoryMask("QRYX"), first);
    EXPECT_EQ(CategoryMask("DBGX"), LogCategory::Dbg);
    EXPECT_EQ(CategoryMask("QR"), first << 1);
    EXPECT_EQ(Name(10), "QR");
    EXPECT_EQ(Name(63), "???");
    EXPECT_EQ(Name(64), "???");
}

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
