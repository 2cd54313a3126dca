// The signed-token reader on any bytes: as a whole token, whose reading errors
// must stay inside it, and as the JSON of one segment, which either fails with
// a json::Exception or gives an object whose JSON text reads back.
#include <cstddef>
#include <cstdint>
#include <string>

#include "codec/json_writer.h"
#include "signed/jwt_token.h"
#include "signed/token_reader.h"

namespace Leagues = Orvel::Client::Leagues;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    Leagues::JwtToken token(text);
    const wex::BindingProperty claims = token.Claims();
    const wex::BindingProperty header = token.Header();
    token.Signature();
    if (claims.Kind() != wex::BindingPropertyKind::Structure || header.Kind() != wex::BindingPropertyKind::Structure) {
        __builtin_trap();
    }
    try {
        const std::string written = wex::WriteJson(Leagues::json::ReadObject(text));
        Leagues::json::ReadObject(written);
    } catch (const Leagues::json::Exception&) {
    }
    return 0;
}
