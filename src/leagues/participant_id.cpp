#include "leagues/participant_id.h"

#include <limits>

namespace Orvel::Client::Leagues {
namespace {

// White space as the C locale knows it.
bool IsSpace(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

}  // namespace

std::uint64_t ParseParticipantId(std::string_view text) {
    std::size_t at = 0;
    while (at < text.size() && IsSpace(text[at])) {
        ++at;
    }
    bool negative = false;
    if (at < text.size() && (text[at] == '+' || text[at] == '-')) {
        negative = text[at] == '-';
        ++at;
    }
    if (at == text.size() || !IsDigit(text[at])) {
        throw ParticipantIdError("invalid stoull argument");
    }
    constexpr std::uint64_t kMax = std::numeric_limits<std::uint64_t>::max();
    std::uint64_t value = 0;
    for (; at < text.size() && IsDigit(text[at]); ++at) {
        const auto digit = static_cast<std::uint64_t>(text[at] - '0');
        if (value > (kMax - digit) / 10) {
            throw ParticipantIdError("stoull argument out of range");
        }
        value = value * 10 + digit;
    }
    return negative ? 0 - value : value;
}

}  // namespace Orvel::Client::Leagues
