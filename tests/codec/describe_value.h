#pragma once

#include <cstdio>
#include <string>

#include "binding/property.h"

namespace tav::test {

// A one-line picture of a small value tree that shows every node's kind, such
// as {a: signed:1, b: [string:"x", empty]}, so a whole tree compares at once.
inline std::string DescribeValue(const wex::BindingProperty& value) {
    using wex::BindingPropertyKind;
    switch (value.Kind()) {
        case BindingPropertyKind::Empty:
            return "empty";
        case BindingPropertyKind::Float: {
            char text[40];
            std::snprintf(text, sizeof text, "float:%.17g", value.AsDouble());
            return text;
        }
        case BindingPropertyKind::String:
            return "string:\"" + std::string(value.AsString()) + "\"";
        case BindingPropertyKind::Collection: {
            std::string text = "[";
            for (const wex::BindingProperty& element : value.Elements()) {
                text += (text.size() > 1 ? ", " : "") + DescribeValue(element);
            }
            return text + "]";
        }
        case BindingPropertyKind::Structure: {
            std::string text = "{";
            for (const wex::BindingMember member : value.Members()) {
                text += (text.size() > 1 ? ", " : "") + std::string(member.name) + ": " + DescribeValue(member.value);
            }
            return text + "}";
        }
        default:
            return std::string(wex::BindingPropertyKindName(value.Kind())) + ":" + value.ToString();
    }
}

}  // namespace tav::test
