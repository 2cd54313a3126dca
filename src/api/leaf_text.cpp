#include "api/leaf_text.h"

#include <cstdint>
#include <string>

#include "api/content_type.h"
#include "codec/json_reader.h"
#include "codec/msgpack_reader.h"
#include "codec/yaml_reader.h"
#include "diagnostics/format_message.h"

namespace wex {

namespace {

bool StartsLikeMessagePack(std::string_view text) {
    if (text.empty()) {
        return false;
    }
    const auto first = static_cast<std::uint8_t>(text.front());
    return (first >= 0x80 && first <= 0x9F) || (first >= 0xDC && first <= 0xDF);
}

std::string_view AfterLeadingSpaces(std::string_view text) {
    const std::size_t start = text.find_first_not_of(' ');
    return start == std::string_view::npos ? std::string_view() : text.substr(start);
}

bool StartsLikeJson(std::string_view text) {
    const std::string_view rest = AfterLeadingSpaces(text);
    return !rest.empty() && (rest.front() == '{' || rest.front() == '[');
}

bool StartsLikeYaml(std::string_view text) {
    return AfterLeadingSpaces(text).starts_with("---");
}

// Keeps a parsed value, or fails status with the format's message.
void Keep(BindingProperty& status, const LeafTarget& target, BindingProperty&& parsed, std::string_view format) {
    if (!parsed.IsValid()) {
        status.SetError(FormatMessage(format, {target.argumentName, target.functionName, parsed.GetError()}));
        return;
    }
    target.slot = std::move(parsed);
}

}  // namespace

void StoreLeafText(BindingProperty& status, const LeafTarget& target, std::string_view text,
                   std::string_view contentType, bool detect) {
    const bool guess = detect && contentType.empty();
    if (HasContentType(contentType, "application/x-msgpack") || (guess && StartsLikeMessagePack(text))) {
        MessagePackResult read = ReadMessagePack(reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
        Keep(status, target, std::move(read.value),
             "Couldn't deserialize MessagePack value for parameter '%1' of '%2': %3");
    } else if (HasContentType(contentType, "application/json") || (guess && StartsLikeJson(text))) {
        Keep(status, target, ParseJson(std::string(text)),
             "Couldn't deserialize JSON value for parameter '%1' of '%2': %3");
    } else if (HasContentType(contentType, "text/x-yaml") || (guess && StartsLikeYaml(text))) {
        Keep(status, target, ReadYaml(text), "Couldn't deserialize YAML value for parameter '%1' of '%2': %3");
    } else if (HasContentType(contentType, "application/octet-stream")) {
        target.slot.SetBlob(std::span(reinterpret_cast<const std::uint8_t*>(text.data()), text.size()));
    } else {
        target.slot.SetString(text);
    }
}

}  // namespace wex
