#include "signed/jwt_token.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "signed/token_reader.h"

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

namespace {

std::vector<std::string> SplitAtDots(std::string_view text) {
    std::vector<std::string> pieces;
    std::size_t start = 0;
    for (std::size_t dot = text.find('.'); dot != std::string_view::npos; dot = text.find('.', start)) {
        pieces.emplace_back(text.substr(start, dot - start));
        start = dot + 1;
    }
    pieces.emplace_back(text.substr(start));
    return pieces;
}

wex::BindingProperty ErrorObject() {
    wex::BindingProperty object;
    object.Member("error").SetBool(true);
    return object;
}

// The object of segment number index, its decoded text kept in decoded.
wex::BindingProperty ReadSegmentObject(const std::vector<std::string>& segments, std::size_t index,
                                       std::string& decoded) {
    if (index >= segments.size() || segments[index].empty()) {
        return ErrorObject();
    }
    decoded = DecodeBase64Url(segments[index]);
    try {
        return json::ReadObject(decoded);
    } catch (const json::Exception& error) {
        wex::BindingProperty object;
        object.Member("error").SetString(error.what());
        return object;
    }
}

}  // namespace

const std::vector<std::string>& JwtToken::Segments() {
    Parse();
    return segments_;
}

wex::BindingProperty JwtToken::Header() {
    Parse();
    return firstSegmentObject_;
}

wex::BindingProperty JwtToken::Claims() {
    Parse();
    return secondSegmentObject_;
}

const std::string& JwtToken::Signature() {
    Parse();
    return thirdSegment_;
}

void JwtToken::Parse() {
    if (parsed_) {
        return;
    }
    segments_ = SplitAtDots(token_);
    firstSegmentObject_ = ReadSegmentObject(segments_, 0, firstSegment_);
    secondSegmentObject_ = ReadSegmentObject(segments_, 1, secondSegment_);
    if (segments_.size() > 2 && !segments_[2].empty()) {
        thirdSegment_ = DecodeBase64Url(segments_[2]);
    } else {
        thirdSegment_ = "NO_VALID_CRYPTO_SEGMENT_FOUND_IN_TOKEN";
    }
    parsed_ = true;
}

}  // namespace Orvel::Client::Leagues
