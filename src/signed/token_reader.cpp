#include "signed/token_reader.h"

#include <string>
#include <vector>

#include "binding/value_text.h"

namespace Orvel::Client::Leagues::json {

namespace {

bool IsWhiteSpace(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

bool IsNumberCharacter(char c) {
    return (c >= '0' && c <= '9') || c == '.' || c == 'e' || c == 'E' || c == '-' || c == '+';
}

// The kind of a punctuation character; End for any other character.
TokenKind PunctuationOf(char c) {
    switch (c) {
        case '{':
            return TokenKind::BeginObject;
        case '}':
            return TokenKind::EndObject;
        case '[':
            return TokenKind::BeginArray;
        case ']':
            return TokenKind::EndArray;
        case ':':
            return TokenKind::Colon;
        case ',':
            return TokenKind::Comma;
        default:
            return TokenKind::End;
    }
}

}  // namespace

Token TokenScanner::Next() {
    while (at_ < text_.size() && IsWhiteSpace(text_[at_])) {
        ++at_;
    }
    if (at_ == text_.size()) {
        return Token{};
    }
    const char c = text_[at_];
    if (const TokenKind punctuation = PunctuationOf(c); punctuation != TokenKind::End) {
        ++at_;
        return Token{punctuation, std::string(1, c)};
    }
    switch (c) {
        case '"':
            return ScanString();
        case 't':
            return ScanWord("true", TokenKind::True);
        case 'f':
            return ScanWord("false", TokenKind::False);
        case 'n':
            return ScanWord("null", TokenKind::Null);
        default:
            break;
    }
    if (c == '-' || (c >= '0' && c <= '9')) {
        return ScanNumber();
    }
    throw ScanException("Unexpected character in stream: " + std::string(1, c));
}

// The end of the text also closes a string: whatever the parser needs after
// it is then missing, which it reports.
Token TokenScanner::ScanString() {
    Token token{TokenKind::String, {}};
    ++at_;
    while (at_ < text_.size() && text_[at_] != '"') {
        const char c = text_[at_++];
        if (c == '\\') {
            AppendEscaped(token.text);
        } else {
            token.text.push_back(c);
        }
    }
    if (at_ < text_.size()) {
        ++at_;
    }
    return token;
}

void TokenScanner::AppendEscaped(std::string& text) {
    if (at_ == text_.size()) {
        throw ScanException("Unrecognized escape sequence found in string: \\");
    }
    const char escaped = text_[at_++];
    switch (escaped) {
        case '"':
        case '\\':
        case '/':
            text.push_back(escaped);
            return;
        case 'b':
            text.push_back('\b');
            return;
        case 'f':
            text.push_back('\f');
            return;
        case 'n':
            text.push_back('\n');
            return;
        case 'r':
            text.push_back('\r');
            return;
        case 't':
            text.push_back('\t');
            return;
        case 'u':
            // Kept as written: the four digits follow as plain characters.
            text += "\\u";
            return;
        default:
            throw ScanException("Unrecognized escape sequence found in string: \\" + std::string(1, escaped));
    }
}

Token TokenScanner::ScanNumber() {
    const std::size_t start = at_;
    while (at_ < text_.size() && IsNumberCharacter(text_[at_])) {
        ++at_;
    }
    Token token{TokenKind::Number, std::string(text_.substr(start, at_ - start))};
    if (wex::ParseDoubleText(token.text, token.number) != wex::NumberTextResult::Ok) {
        throw ScanException("Unexpected character in NUMBER token: " + token.text);
    }
    return token;
}

Token TokenScanner::ScanWord(std::string_view word, TokenKind kind) {
    if (text_.substr(at_, word.size()) != word) {
        throw ScanException("Expected string: " + std::string(word));
    }
    at_ += word.size();
    return Token{kind, std::string(word)};
}

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
