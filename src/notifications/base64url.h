#pragma once

#include <string>
#include <string_view>

namespace Orvel::Client::Leagues {

// The bytes of a base64url text (RFC 4648, "-" and "_" in place of "+" and
// "/", padding optional). Every four characters give three bytes; a last group
// of two or three characters gives one or two, a lone last character nothing.
// Decoding stops at the first "=" or at any character outside the alphabet.
std::string DecodeBase64Url(std::string_view text);

}  // namespace Orvel::Client::Leagues
