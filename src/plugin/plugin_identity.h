#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace wex {

// What identifies a plug-in to the platform: the plug-in API version it was
// built for, and its names.

// A plug-in API version. Only the three numbers cross the boundary.
struct ApiVersion {
    std::uint32_t major = 0;
    std::uint32_t minor = 0;
    std::uint32_t patch = 0;
    std::string preRelease;
    std::string buildMetadata;

    // "major.minor.patch", then "-preRelease" and "+buildMetadata" when not empty.
    std::string ToString() const;
};

// The version this plug-in was built for.
inline constexpr std::uint32_t kPluginApiMajor = 18;
inline constexpr std::uint32_t kPluginApiMinor = 0;
inline constexpr std::uint32_t kPluginApiPatch = 0;

ApiVersion PluginApiVersion();

// A core can host a plug-in when the majors are equal and the core's
// (minor, patch) is not below the plug-in's. The strings are not compared.
[[nodiscard]] constexpr bool IsCompatible(const ApiVersion& plugin, const ApiVersion& core) {
    if (core.major != plugin.major) {
        return false;
    }
    return core.minor > plugin.minor || (core.minor == plugin.minor && core.patch >= plugin.patch);
}

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
