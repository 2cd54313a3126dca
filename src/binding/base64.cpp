#include "binding/base64.h"

#include <algorithm>

namespace wex {

std::string EncodeBase64(std::span<const std::uint8_t> bytes) {
    static constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (std::size_t at = 0; at < bytes.size(); at += 3) {
        const std::size_t count = std::min<std::size_t>(3, bytes.size() - at);
        std::uint32_t group = std::uint32_t{bytes[at]} << 16;
        if (count > 1) {
            group |= std::uint32_t{bytes[at + 1]} << 8;
        }
        if (count > 2) {
            group |= bytes[at + 2];
        }
        text += kAlphabet[(group >> 18) & 63];
        text += kAlphabet[(group >> 12) & 63];
        text += count > 1 ? kAlphabet[(group >> 6) & 63] : '=';
        text += count > 2 ? kAlphabet[group & 63] : '=';
    }
    return text;
}

}  // namespace wex
