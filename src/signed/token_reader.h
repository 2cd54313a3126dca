#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

#include "binding/property.h"

// The errors of the token JSON reader. They end the reading of one token
// segment and are caught by the token operations; none leaves them.
namespace Orvel::Client::Leagues::json {

class Exception : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// Characters that make no token.
class ScanException : public Exception {
  public:
    using Exception::Exception;
};

// Tokens in an order the grammar does not allow.
class ParseException : public Exception {
  public:
    using Exception::Exception;
};

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

// Reads text as one JSON object, the form of a token segment. Numbers become
// doubles, null an empty value. Throws ScanException or ParseException (both
// json::Exception) at the first error, with its message:
//   "Unrecognized escape sequence found in string: \x"
//   "Unexpected character in NUMBER token: <run>"
//   "Expected string: true" (or false, null)
//   "Unexpected character in stream: <c>"
//   "Duplicate object member token: <name>"
//   "Unexpected token: <token>"
//   "Unexpected end of token stream" (a value was needed)
//   "Unexpected End of token stream" (punctuation or a member name was needed)
//   "Expected End of token stream; found <token>"
// Nesting is bounded only by the text, without recursion.
wex::BindingProperty ReadObject(std::string_view text);

}  // namespace Orvel::Client::Leagues::json
