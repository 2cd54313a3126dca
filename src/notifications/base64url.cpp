#include "notifications/base64url.h"

#include <cstdint>

namespace Orvel::Client::Leagues {
namespace {

// The six bits a character stands for; -1 for a character outside the alphabet.
int SextetOf(char c) {
    if (c >= 'A' && c <= 'Z') {
        return c - 'A';
    }
    if (c >= 'a' && c <= 'z') {
        return c - 'a' + 26;
    }
    if (c >= '0' && c <= '9') {
        return c - '0' + 52;
    }
    if (c == '-' || c == '+') {
        return 62;
    }
    if (c == '_' || c == '/') {
        return 63;
    }
    return -1;
}

}  // namespace

// The padding that the url alphabet leaves out needs no restoring: it would
// only stop the decoding where the text ends anyway.
std::string DecodeBase64Url(std::string_view text) {
    std::string bytes;
    bytes.reserve(text.size() / 4 * 3 + 2);
    std::uint32_t bits = 0;
    int bitCount = 0;
    for (const char c : text) {
        const int sextet = SextetOf(c);
        if (sextet < 0) {
            break;
        }
        bits = (bits << 6) | static_cast<std::uint32_t>(sextet);
        bitCount += 6;
        if (bitCount >= 8) {
            bitCount -= 8;
            bytes.push_back(static_cast<char>((bits >> bitCount) & 0xFF));
        }
    }
    return bytes;
}

}  // namespace Orvel::Client::Leagues
