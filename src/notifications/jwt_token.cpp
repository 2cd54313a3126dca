#include "notifications/jwt_token.h"

#include <cstddef>
#include <string_view>

#include "notifications/base64url.h"
#include "notifications/token_json_exception.h"
#include "notifications/token_json_reader.h"

namespace Orvel::Client::Leagues {
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
