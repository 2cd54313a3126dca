#include "signed_token.h"

#include <span>

#include "binding/value_text.h"

namespace tav::host {

std::string EncodeBase64Url(const std::string& bytes) {
    std::string text = wex::EncodeBase64(
        std::span<const std::uint8_t>(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()));
    while (!text.empty() && text.back() == '=') {
        text.pop_back();
    }
    for (char& character : text) {
        character = character == '+' ? '-' : character == '/' ? '_' : character;
    }
    return text;
}

std::string MakeSignedToken(std::uint64_t summonerId, const std::string& queue, std::int64_t expiresAt) {
    const std::string header = R"({"alg":"HS256","typ":"JWT"})";
    const std::string claims = R"({"exp":)" + std::to_string(expiresAt) + R"(,"queue":")" + queue + R"(","sub":")" +
                               std::to_string(summonerId) + R"("})";
    return EncodeBase64Url(header) + "." + EncodeBase64Url(claims) + "." + EncodeBase64Url("tav-host signature");
}

}  // namespace tav::host
