#include "event_names.h"

#include <vector>

namespace tav::host {

namespace {

std::vector<std::string_view> PathSegments(std::string_view path) {
    std::vector<std::string_view> segments;
    std::size_t start = 0;
    while (start <= path.size()) {
        std::size_t end = path.find('/', start);
        if (end == std::string_view::npos) {
            end = path.size();
        }
        if (end > start) {
            segments.push_back(path.substr(start, end - start));
        }
        start = end + 1;
    }
    return segments;
}

}  // namespace

std::string ResourceEventName(std::string_view uri) {
    const std::vector<std::string_view> segments = PathSegments(uri);
    const std::size_t used = !segments.empty() && segments.front() == "tav-platform-config" ? 5 : 3;
    std::string name = "OnJsonApiEvent";
    for (std::size_t index = 0; index < segments.size() && index < used; ++index) {
        name.append("_").append(segments[index]);
    }
    return name;
}

std::string ServerMessageEventName(std::string_view typeName) {
    std::string name = "OnLcdsEvent_";
    for (const char c : typeName) {
        name += c == '.' ? '_' : c;
    }
    return name;
}

}  // namespace tav::host
