#include "api/url_decoding.h"

namespace wex {

namespace {

int HexValue(char c) {
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    if (c >= 'a' && c <= 'f') {
        return c - 'a' + 10;
    }
    if (c >= 'A' && c <= 'F') {
        return c - 'A' + 10;
    }
    return -1;
}

}  // namespace

std::string DecodeUrlComponent(std::string_view text) {
    std::string decoded;
    decoded.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char c = text[at];
        if (c == '+') {
            decoded += ' ';
            continue;
        }
        if (c == '%' && at + 2 < text.size()) {
            const int high = HexValue(text[at + 1]);
            const int low = HexValue(text[at + 2]);
            if (high >= 0 && low >= 0) {
                decoded += static_cast<char>(high * 16 + low);
                at += 2;
                continue;
            }
        }
        decoded += c;
    }
    return decoded;
}

}  // namespace wex
