#include "host/uri_pattern.h"

namespace wex {

bool MatchesUriPattern(std::string_view pattern, std::string_view uri) {
    std::size_t at = 0;
    for (std::size_t index = 0; index < pattern.size(); ++index) {
        if (pattern[index] != '*') {
            if (at == uri.size() || uri[at] != pattern[index]) {
                return false;
            }
            ++at;
            continue;
        }
        // The star takes the whole run without backtracking.
        std::size_t end = uri.find('/', at);
        if (end == std::string_view::npos) {
            end = uri.size();
        }
        if (index + 1 == pattern.size() && end == at) {
            return false;
        }
        at = end;
    }
    return at == uri.size();
}

}  // namespace wex
