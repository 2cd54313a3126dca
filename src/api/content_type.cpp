#include "api/content_type.h"

#include <cctype>

namespace wex {

bool HasContentType(std::string_view contentType, std::string_view prefix) {
    if (contentType.size() < prefix.size()) {
        return false;
    }
    for (std::size_t at = 0; at < prefix.size(); ++at) {
        if (std::tolower(static_cast<unsigned char>(contentType[at])) !=
            std::tolower(static_cast<unsigned char>(prefix[at]))) {
            return false;
        }
    }
    return true;
}

}  // namespace wex
