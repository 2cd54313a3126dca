#include "notifications/token_json_scanner.h"

#include "binding/value_text.h"
#include "notifications/token_json_exception.h"

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

}  // namespace Orvel::Client::Leagues::json
