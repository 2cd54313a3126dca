#pragma once

#include <string>
#include <string_view>

namespace wex {

struct PluginType {
    std::string name;
    std::string variant;
};

inline const PluginType kBackendPluginType{"backend", ""};
inline const PluginType kFrontendPluginType{"frontend", ""};

struct PluginName {
    std::string fullName;
    std::string shortName;
    std::string typeName;
    std::string typeVariant;
};

// "wex-be-" or "wex-fe-" followed by the short name; an unknown type gives
// "wex-xx-" and an ERROR line. The type's name is compared exactly.
std::string GetFullNameFromShortNameAndType(std::string_view shortName, const PluginType& type);

PluginName MakePluginName(std::string_view shortName, const PluginType& type);

}  // namespace wex
