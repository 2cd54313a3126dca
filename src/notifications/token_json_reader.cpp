#include "notifications/token_json_reader.h"

#include <string>
#include <vector>

#include "notifications/token_json_exception.h"
#include "notifications/token_json_scanner.h"

namespace Orvel::Client::Leagues::json {
namespace {

// The error for a token that may not stand where it is.
[[noreturn]] void Unexpected(const Token& token, bool valueNeeded) {
    if (token.kind != TokenKind::End) {
        throw ParseException("Unexpected token: " + token.text);
    }
    throw ParseException(valueNeeded ? "Unexpected end of token stream" : "Unexpected End of token stream");
}

// Reads the tokens of an object into a tree. Open containers sit on a stack of
// their own rather than on the call stack, so deep nesting cannot exhaust it.
class ObjectParser {
  public:
    explicit ObjectParser(std::string_view text) : scanner_(text) {}

    wex::BindingProperty Read() {
        wex::BindingProperty root;
        const Token first = scanner_.Next();
        if (first.kind != TokenKind::BeginObject) {
            Unexpected(first, true);
        }
        root.MakeStructure();
        open_.push_back({&root, true, 0});
        while (!open_.empty()) {
            ReadNextElement();
        }
        const Token after = scanner_.Next();
        if (after.kind != TokenKind::End) {
            throw ParseException("Expected End of token stream; found " + after.text);
        }
        return root;
    }

  private:
    struct OpenContainer {
        wex::BindingProperty* node;
        bool isObject;
        std::size_t elements;
    };

    // One member or element of the innermost open container, or its end.
    void ReadNextElement() {
        OpenContainer& open = open_.back();
        const TokenKind closing = open.isObject ? TokenKind::EndObject : TokenKind::EndArray;
        Token token = scanner_.Next();
        if (token.kind == closing) {
            open_.pop_back();
            return;
        }
        if (open.elements > 0) {
            if (token.kind != TokenKind::Comma) {
                Unexpected(token, false);
            }
            token = scanner_.Next();
        }
        ++open.elements;
        wex::BindingProperty& slot = open.isObject ? MemberSlot(*open.node, token) : open.node->Append();
        if (open.isObject) {
            token = scanner_.Next();
        }
        StoreValue(slot, token);
    }

    // The new member named by token, after its colon.
    wex::BindingProperty& MemberSlot(wex::BindingProperty& object, const Token& name) {
        if (name.kind != TokenKind::String) {
            Unexpected(name, false);
        }
        if (object.HasMember(name.text)) {
            throw ParseException("Duplicate object member token: " + name.text);
        }
        const Token colon = scanner_.Next();
        if (colon.kind != TokenKind::Colon) {
            Unexpected(colon, false);
        }
        return object.Member(name.text);
    }

    void StoreValue(wex::BindingProperty& slot, const Token& token) {
        switch (token.kind) {
            case TokenKind::String:
                slot.SetString(std::string_view(token.text));
                return;
            case TokenKind::Number:
                slot.SetFloat(token.number);
                return;
            case TokenKind::True:
            case TokenKind::False:
                slot.SetBool(token.kind == TokenKind::True);
                return;
            case TokenKind::Null:
                return;
            case TokenKind::BeginObject:
                slot.MakeStructure();
                open_.push_back({&slot, true, 0});
                return;
            case TokenKind::BeginArray:
                slot.MakeCollection();
                open_.push_back({&slot, false, 0});
                return;
            default:
                Unexpected(token, true);
        }
    }

    TokenScanner scanner_;
    std::vector<OpenContainer> open_;
};

}  // namespace

wex::BindingProperty ReadObject(std::string_view text) {
    return ObjectParser(text).Read();
}

}  // namespace Orvel::Client::Leagues::json
