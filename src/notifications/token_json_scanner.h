#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace Orvel::Client::Leagues::json {

enum class TokenKind {
    BeginObject,
    EndObject,
    BeginArray,
    EndArray,
    Colon,
    Comma,
    String,
    Number,
    True,
    False,
    Null,
    End
};

struct Token {
    TokenKind kind = TokenKind::End;
    std::string text;   // as error messages show it: a string's content, a number as written
    double number = 0;  // for Number
};

// Cuts a text into JSON tokens one at a time, so that the first error in the
// text is the one reported.
class TokenScanner {
  public:
    explicit TokenScanner(std::string_view text) : text_(text) {}

    // The next token, or End once only white space is left. Throws
    // ScanException for characters that make no token.
    Token Next();

  private:
    Token ScanString();
    // Reads the escape after a backslash into text.
    void AppendEscaped(std::string& text);
    Token ScanNumber();
    Token ScanWord(std::string_view word, TokenKind kind);

    std::string_view text_;
    std::size_t at_ = 0;
};

}  // namespace Orvel::Client::Leagues::json
