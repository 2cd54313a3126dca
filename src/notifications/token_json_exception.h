#pragma once

#include <stdexcept>

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

}  // namespace Orvel::Client::Leagues::json
