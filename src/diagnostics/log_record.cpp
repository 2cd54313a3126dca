#include "diagnostics/log_record.h"

#include <atomic>
#include <mutex>

namespace wex {

const char* LogLevelName(LogLevel level) {
    switch (level) {
        case LogLevel::Okay:
            return "  OKAY";
        case LogLevel::Warn:
            return "  WARN";
        case LogLevel::Error:
            return " ERROR";
        case LogLevel::Always:
            return "ALWAYS";
    }
    return "??????";
}

namespace {

// A name of up to three characters packed into one word, so that readers never
// see a half-written name. 0 marks a bit that has no name yet.
constexpr std::uint32_t Pack(std::string_view name) {
    std::uint32_t packed = 0;
    for (std::size_t i = 0; i < name.size() && i < 3; ++i) {
        packed |= static_cast<std::uint32_t>(static_cast<unsigned char>(name[i])) << (8 * i);
    }
    return packed;
}

std::atomic<std::uint32_t> gNames[kMaxLogCategories] = {Pack("DBG"), Pack("GEN"), Pack("XTR"), Pack("PRF"),
                                                        Pack("MEM"), Pack("DSK"), Pack("NET"), Pack("TST")};
// The highest bit in use.
std::atomic<unsigned> gHighest{7};
// Serialises registrations so that one name never gets two bits.
std::mutex gRegistration;

}  // namespace

std::uint64_t CategoryMask(std::string_view name) {
    std::uint32_t packed = Pack(name);
    std::lock_guard guard(gRegistration);
    unsigned highest = gHighest.load();
    for (unsigned bit = 0; bit <= highest; ++bit) {
        if (gNames[bit].load(std::memory_order_relaxed) == packed) {
            return std::uint64_t{1} << bit;
        }
    }
    if (highest + 1 >= kMaxLogCategories) {
        return 0;
    }
    gNames[highest + 1].store(packed);
    gHighest.fetch_add(1);
    return std::uint64_t{1} << (highest + 1);
}

std::array<char, 4> CategoryName(unsigned bit) {
    std::uint32_t packed = bit < kMaxLogCategories ? gNames[bit].load(std::memory_order_relaxed) : 0;
    if (packed == 0) {
        return {'?', '?', '?', '\0'};
    }
    return {static_cast<char>(packed & 0xFF), static_cast<char>((packed >> 8) & 0xFF),
            static_cast<char>((packed >> 16) & 0xFF), '\0'};
}

}  // namespace wex
