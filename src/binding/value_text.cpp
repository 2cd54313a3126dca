#include "binding/value_text.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <string>

namespace wex {

namespace {

// The runtime's parsers read up to a zero byte; the copy provides one, and a
// zero byte inside the text then shows as characters left over.
template <class Parse>
NumberTextResult ParseWhole(std::string_view text, Parse parse) {
    const std::string copy(text);
    char* end = nullptr;
    errno = 0;
    const bool overflow = !parse(copy.c_str(), &end);
    if (end != copy.c_str() + copy.size()) {
        return NumberTextResult::IncorrectFormat;
    }
    return overflow ? NumberTextResult::OutOfRange : NumberTextResult::Ok;
}

bool BeginsWithMinus(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t\n\v\f\r");
    return first != std::string_view::npos && text[first] == '-';
}

}  // namespace

NumberTextResult ParseSignedText(std::string_view text, std::int64_t& value) {
    long long parsed = 0;
    const NumberTextResult result = ParseWhole(text, [&parsed](const char* start, char** end) {
        parsed = std::strtoll(start, end, 0);
        return errno != ERANGE;
    });
    if (result == NumberTextResult::Ok) {
        value = parsed;
    }
    return result;
}

NumberTextResult ParseUnsignedText(std::string_view text, std::uint64_t& value) {
    unsigned long long parsed = 0;
    NumberTextResult result = ParseWhole(text, [&parsed](const char* start, char** end) {
        parsed = std::strtoull(start, end, 0);
        return errno != ERANGE;
    });
    if (result == NumberTextResult::Ok && BeginsWithMinus(text)) {
        result = NumberTextResult::OutOfRange;
    }
    if (result == NumberTextResult::Ok) {
        value = parsed;
    }
    return result;
}

NumberTextResult ParseDoubleText(std::string_view text, double& value) {
    double parsed = 0.0;
    const NumberTextResult result = ParseWhole(text, [&parsed](const char* start, char** end) {
        parsed = std::strtod(start, end);
        // Underflow also reports ERANGE, with a tiny or zero value that is kept.
        return !(errno == ERANGE && std::isinf(parsed));
    });
    if (result == NumberTextResult::Ok) {
        value = parsed;
    }
    return result;
}

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
