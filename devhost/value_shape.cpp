#include "value_shape.h"

#include <algorithm>

namespace tav::host {

namespace {

using wex::BindingPropertyKind;

std::string Joined(std::span<const std::string_view> names) {
    std::string text;
    for (std::string_view name : names) {
        text += (text.empty() ? "" : ", ") + std::string(name);
    }
    return text;
}

bool IsKind(const wex::BindingProperty& value, ValueKind kind) {
    const BindingPropertyKind actual = value.Kind();
    switch (kind) {
        case ValueKind::Any:
            return true;
        case ValueKind::Text:
            return actual == BindingPropertyKind::String;
        case ValueKind::WholeNumber:
            return actual == BindingPropertyKind::Unsigned;
        case ValueKind::Integer:
            return actual == BindingPropertyKind::Unsigned || actual == BindingPropertyKind::Signed;
        case ValueKind::Number:
            return actual == BindingPropertyKind::Unsigned || actual == BindingPropertyKind::Signed ||
                   actual == BindingPropertyKind::Float;
        case ValueKind::Bool:
            return actual == BindingPropertyKind::Bool;
        case ValueKind::Mapping:
            return actual == BindingPropertyKind::Structure;
        case ValueKind::List:
            return actual == BindingPropertyKind::Collection;
    }
    return false;
}

const char* Expected(ValueKind kind) {
    switch (kind) {
        case ValueKind::Text:
            return "expected a text";
        case ValueKind::WholeNumber:
            return "expected a whole number, 0 or more";
        case ValueKind::Integer:
            return "expected a whole number";
        case ValueKind::Number:
            return "expected a number";
        case ValueKind::Bool:
            return "expected true or false";
        case ValueKind::Mapping:
            return "expected a mapping";
        case ValueKind::List:
            return "expected a sequence";
        case ValueKind::Any:
            break;
    }
    return "";
}

}  // namespace

std::string MemberPath(const std::string& parent, std::string_view name) {
    return parent.empty() ? std::string(name) : parent + "." + std::string(name);
}

void CheckKind(const wex::BindingProperty& value, const std::string& path, ValueKind kind) {
    if (!IsKind(value, kind)) {
        throw ShapeError(path, Expected(kind));
    }
}

void CheckKeys(const wex::BindingProperty& value, const std::string& path, const std::vector<KeyShape>& keys) {
    CheckKind(value, path, ValueKind::Mapping);
    for (const auto& member : value.Members()) {
        const auto key =
            std::find_if(keys.begin(), keys.end(), [&](const KeyShape& k) { return k.name == member.name; });
        if (key == keys.end()) {
            std::vector<std::string_view> names;
            for (const KeyShape& known : keys) {
                names.push_back(known.name);
            }
            throw ShapeError(MemberPath(path, member.name), names.empty()
                                                                ? "unknown key; nothing goes here"
                                                                : "unknown key; the keys here are " + Joined(names));
        }
        CheckKind(member.value, MemberPath(path, member.name), key->kind);
    }
    for (const KeyShape& key : keys) {
        if (key.required && !value.HasMember(key.name)) {
            throw ShapeError(MemberPath(path, key.name), "missing");
        }
    }
}

void CheckName(const wex::BindingProperty& value, const std::string& path, std::span<const std::string_view> names) {
    CheckKind(value, path, ValueKind::Text);
    if (std::find(names.begin(), names.end(), value.AsString()) == names.end()) {
        throw ShapeError(path, "'" + std::string(value.AsString()) + "' is none of " + Joined(names));
    }
}

}  // namespace tav::host
