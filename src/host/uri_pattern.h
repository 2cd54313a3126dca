#pragma once

#include <string_view>

namespace wex {

// Whether uri matches pattern as a whole. Characters other than "*" match
// themselves; "*" matches a run of characters up to the next "/", which may
// be empty only where a "/" follows in the URI (a "*" at the end of the
// pattern takes at least one character):
//   /summoners/* matches /summoners/42, but not /summoners/42/icon nor /summoners/
bool MatchesUriPattern(std::string_view pattern, std::string_view uri);

}  // namespace wex
