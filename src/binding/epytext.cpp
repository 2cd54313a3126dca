#include "binding/epytext.h"

#include <algorithm>
#include <vector>

#include "binding/registry.h"

namespace wex {

namespace {

constexpr std::string_view kLineEnd = "\r\n";

std::string RegisteredName(const BindingTypeIdentity* identity, const BindingTypeRegistry& registry) {
    const BindingTypeInfo* type = identity != nullptr ? registry.FindType(identity->id) : nullptr;
    return type != nullptr ? type->name : std::string();
}

std::string KindText(BindingTypeKind kind, const BindingTypeIdentity* identity, const BindingTypeRegistry& registry) {
    switch (kind) {
        case BindingTypeKind::Blob:
            return "bytearray";
        case BindingTypeKind::Enum:
        case BindingTypeKind::Struct:
            return "L{" + RegisteredName(identity, registry) + "}";
        case BindingTypeKind::Vector:
        case BindingTypeKind::Map:
        case BindingTypeKind::None:
            return {};
        default:
            return std::string(BindingTypeKindName(kind));
    }
}

// The description and the blank line after it.
std::string Heading(std::string_view description) {
    return EpytextEscape(description) + std::string(kLineEnd) + std::string(kLineEnd);
}

std::string TagsLine(const std::vector<std::string>& tags) {
    if (tags.empty()) {
        return {};
    }
    std::string line = "@tags: ";
    for (std::size_t index = 0; index < tags.size(); ++index) {
        line += (index != 0 ? "," : "") + tags[index];
    }
    return line + std::string(kLineEnd);
}

}  // namespace

std::string EpytextEscape(std::string_view text) {
    std::string escaped;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char c = text[at];
        if (at == 0 && c == '-') {
            escaped += "E{-}";
        } else if (c == '{') {
            escaped += "E{lb}";
        } else if (c == '}') {
            escaped += "E{rb}";
        } else {
            escaped += c;
        }
    }
    return escaped;
}

std::string EpytextType(const BindingTypeIdentifier& type, const BindingTypeRegistry& registry) {
    if (type.kind == BindingTypeKind::Vector || type.kind == BindingTypeKind::Map) {
        const std::string element = KindText(type.elementKind, type.type, registry);
        return (type.kind == BindingTypeKind::Vector ? "list[" : "dict[") + element + "]";
    }
    return KindText(type.kind, type.type, registry);
}

std::string EpytextOfFunction(const BindingFunctionInfo& function, const BindingTypeRegistry& registry) {
    std::string text;
    if (!function.description.empty()) {
        text += Heading(function.description);
    }
    if (!function.help.empty()) {
        text += Heading(function.help);
    }
    for (const BindingArgumentInfo& argument : function.arguments) {
        if (!argument.description.empty()) {
            text += "@param " + argument.name + ": " + (argument.optional ? "(optional) " : "") +
                    EpytextEscape(argument.description) + std::string(kLineEnd);
        }
    }
    for (const BindingArgumentInfo& argument : function.arguments) {
        text += "@type " + argument.name + ": " + EpytextType(argument.type, registry) + std::string(kLineEnd);
    }
    const std::string resultType = EpytextType(function.result, registry);
    if (function.result.kind != BindingTypeKind::None) {
        text += "@rtype: " + resultType + std::string(kLineEnd);
    }
    text += TagsLine(function.tags);
    if (function.threadSafe) {
        text += "@threadsafe: true" + std::string(kLineEnd);
    }
    if (function.async) {
        text += "@async: " + resultType + std::string(kLineEnd);
    }
    return text;
}

std::string EpytextOfType(const BindingTypeInfo& type, const BindingTypeRegistry& registry) {
    std::string text = Heading(type.description);
    if (!type.isEnum) {
        for (const BindingFieldInfo& field : type.fields) {
            text += "@ivar " + field.name + ": " + EpytextEscape(field.description) + std::string(kLineEnd);
            text += "@type " + field.name + ": " + EpytextType(field.type, registry) + std::string(kLineEnd);
        }
        return text + TagsLine(type.tags);
    }
    std::vector<const BindingEnumValueInfo*> enumerators;
    for (const auto& [name, enumerator] : type.enumValues) {
        enumerators.push_back(&enumerator);
    }
    std::stable_sort(enumerators.begin(), enumerators.end(),
                     [](const auto* left, const auto* right) { return left->value < right->value; });
    for (const BindingEnumValueInfo* enumerator : enumerators) {
        text += "@cvar " + enumerator->name + ": (" + std::to_string(enumerator->value) + ")";
        if (!enumerator->description.empty()) {
            text += " " + EpytextEscape(enumerator->description);
        }
        text += kLineEnd;
    }
    text += TagsLine(type.tags);
    return text + "@size: " + std::to_string(type.size) + std::string(kLineEnd);
}

std::string EpytextOfEvent(const BindingEventInfo& event) {
    return Heading(event.description) + TagsLine(event.tags);
}

}  // namespace wex
