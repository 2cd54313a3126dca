#pragma once

#include <cstdint>
#include <string>

namespace tav::host {

// A signed token as the league service hands them out: header, claims and
// signature, each base64url without padding, joined by dots. The claims name
// the player ("sub"), the queue and the expiry ("exp", whole seconds since
// 1970). Nothing checks the signature, so it is a fixed text.
std::string MakeSignedToken(std::uint64_t summonerId, const std::string& queue, std::int64_t expiresAt);

std::string EncodeBase64Url(const std::string& bytes);

}  // namespace tav::host
