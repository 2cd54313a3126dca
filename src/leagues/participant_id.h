#pragma once

#include <cstdint>
#include <stdexcept>
#include <string_view>

namespace Orvel::Client::Leagues {

// Raised when a participant id is not a number; it ends the conversion of the
// whole tiers answer, and the request fails with its text.
class ParticipantIdError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// Reads the leading unsigned decimal number of a participant id: white space
// and one sign may precede the digits (a minus negates modulo 2^64), and
// reading stops at the first character that is not a digit. Throws
// ParticipantIdError with "invalid stoull argument" when no digit comes first
// and with "stoull argument out of range" when the number exceeds 64 bits.
std::uint64_t ParseParticipantId(std::string_view text);

}  // namespace Orvel::Client::Leagues
