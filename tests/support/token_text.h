#pragma once

#include <algorithm>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "binding/value_text.h"

namespace Orvel::Client::Leagues::test {

// Bytes in base64url without padding, by way of the framework's standard encoder.
inline std::string EncodeBase64Url(std::string_view bytes) {
    std::string text = wex::EncodeBase64(
        std::span<const std::uint8_t>(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()));
    std::replace(text.begin(), text.end(), '+', '-');
    std::replace(text.begin(), text.end(), '/', '_');
    text.erase(std::remove(text.begin(), text.end(), '='), text.end());
    return text;
}

// A compact token of a header, a claims set and a signature.
inline std::string MakeToken(std::string_view claims, std::string_view header = R"({"alg":"RS256"})",
                             std::string_view signature = "signature") {
    return EncodeBase64Url(header) + "." + EncodeBase64Url(claims) + "." + EncodeBase64Url(signature);
}

}  // namespace Orvel::Client::Leagues::test
