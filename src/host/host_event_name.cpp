#include "host/host_event_name.h"

#include <algorithm>

namespace wex {

std::string ResourceEventName(std::string_view uri) {
    std::string name = "OnJsonApiEvent";
    std::size_t limit = 3;
    std::size_t taken = 0;
    std::size_t start = 0;
    while (start < uri.size() && taken < limit) {
        const std::size_t end = std::min(uri.find('/', start), uri.size());
        const std::string_view segment = uri.substr(start, end - start);
        start = end + 1;
        if (segment.empty()) {
            continue;
        }
        if (taken == 0 && segment == "tav-platform-config") {
            limit = 5;
        }
        name += '_';
        name += segment;
        ++taken;
    }
    return name;
}

std::string LcdsEventName(std::string_view typeName) {
    std::string name = "OnLcdsEvent_";
    name += typeName;
    std::replace(name.begin() + 12, name.end(), '.', '_');
    return name;
}

}  // namespace wex
