#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/framework_records.h"

namespace wex {

// Takes the change events of one resource, or of every resource that a
// pattern with "*" matches.
using ResourceObserver = std::function<void(const PluginResourceEvent& event)>;

// The module's resource observers: exact URIs and patterns with "*".
class ResourceObservers {
  public:
    // A URI with "*" is a pattern. An observer under the same text is replaced.
    void Add(const std::string& uri, std::shared_ptr<const ResourceObserver> observer);

    // The observers of uri: the exact one first, then every matching pattern
    // in table order. Callers hold them while they run, so observers may be
    // added or dropped meanwhile.
    std::vector<std::shared_ptr<const ResourceObserver>> Matching(std::string_view uri) const;

    void Clear();

  private:
    std::map<std::string, std::shared_ptr<const ResourceObserver>, std::less<>> exact_;
    std::map<std::string, std::shared_ptr<const ResourceObserver>, std::less<>> patterns_;
};

}  // namespace wex
