#include "host/resource_observers.h"

#include "host/uri_pattern.h"

namespace wex {

void ResourceObservers::Add(const std::string& uri, std::shared_ptr<const ResourceObserver> observer) {
    auto& table = uri.find('*') != std::string::npos ? patterns_ : exact_;
    table.insert_or_assign(uri, std::move(observer));
}

std::vector<std::shared_ptr<const ResourceObserver>> ResourceObservers::Matching(std::string_view uri) const {
    std::vector<std::shared_ptr<const ResourceObserver>> matching;
    if (const auto exact = exact_.find(uri); exact != exact_.end()) {
        matching.push_back(exact->second);
    }
    for (const auto& [pattern, observer] : patterns_) {
        if (MatchesUriPattern(pattern, uri)) {
            matching.push_back(observer);
        }
    }
    return matching;
}

void ResourceObservers::Clear() {
    exact_.clear();
    patterns_.clear();
}

}  // namespace wex
