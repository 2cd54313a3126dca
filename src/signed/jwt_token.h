#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "binding/property.h"

namespace Orvel::Client::Leagues {

// The bytes of a base64url text (RFC 4648, "-" and "_" in place of "+" and
// "/", padding optional). Every four characters give three bytes; a last group
// of two or three characters gives one or two, a lone last character nothing.
// Decoding stops at the first "=" or at any character outside the alphabet.
std::string DecodeBase64Url(std::string_view text);

// A signed token in compact form: base64url segments joined by dots, the
// first a header object, the second the claims set, the third the signature
// (kept, never checked). The segments are read on the first use of any
// accessor; a missing or empty object segment reads as {"error": true}, one
// that is not a JSON object as {"error": "<the reader's message>"}, so no
// reading error leaves the token. [host-thread]
class JwtToken {
  public:
    explicit JwtToken(std::string token) : token_(std::move(token)) {}

    // The pieces between the dots, empty ones included: a text without a dot
    // is one segment, the empty text one empty segment.
    const std::vector<std::string>& Segments();
    // Copies of the objects of the first and the second segment.
    wex::BindingProperty Header();
    wex::BindingProperty Claims();
    // The decoded bytes of the third segment, or
    // "NO_VALID_CRYPTO_SEGMENT_FOUND_IN_TOKEN" when it is missing or empty.
    const std::string& Signature();
    bool Parsed() const { return parsed_; }

  private:
    void Parse();

    std::string token_;
    std::vector<std::string> segments_;
    std::string firstSegment_;
    std::string secondSegment_;
    std::string thirdSegment_;
    wex::BindingProperty secondSegmentObject_;
    wex::BindingProperty firstSegmentObject_;
    bool parsed_ = false;
};

}  // namespace Orvel::Client::Leagues
