#include "plugin/plugin_identity.h"

#include "diagnostics/format_message.h"
#include "diagnostics/log_system.h"

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

ApiVersion PluginApiVersion() {
    return ApiVersion{kPluginApiMajor, kPluginApiMinor, kPluginApiPatch, {}, {}};
}

std::string GetFullNameFromShortNameAndType(std::string_view shortName, const PluginType& type) {
    std::string prefix;
    if (type.name == kBackendPluginType.name) {
        prefix = "wex-be-";
    } else if (type.name == kFrontendPluginType.name) {
        prefix = "wex-fe-";
    } else {
        prefix = "wex-xx-";
        const std::string message =
            FormatMessage("GetFullNameFromShortNameAndType(\"%1\", \"%2\") called with an unknown type",
                          {shortName, std::string_view(type.name)});
        LogMessage(LogLevel::Error, LogCategory::Dbg, "            Plugin Manager| %s", message.c_str());
    }
    return prefix + std::string(shortName);
}

PluginName MakePluginName(std::string_view shortName, const PluginType& type) {
    return PluginName{GetFullNameFromShortNameAndType(shortName, type), std::string(shortName), type.name,
                      type.variant};
}

}  // namespace wex
