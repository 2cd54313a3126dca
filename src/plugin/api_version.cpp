#include "plugin/api_version.h"

namespace wex {

std::string ApiVersion::ToString() const {
    std::string text = std::to_string(major) + "." + std::to_string(minor) + "." + std::to_string(patch);
    if (!preRelease.empty()) {
        text += "-" + preRelease;
    }
    if (!buildMetadata.empty()) {
        text += "+" + buildMetadata;
    }
    return text;
}

ApiVersion PluginApiVersion() { return ApiVersion{kPluginApiMajor, kPluginApiMinor, kPluginApiPatch, {}, {}}; }

}  // namespace wex
