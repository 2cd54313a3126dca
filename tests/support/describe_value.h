#pragma once

#include <cstdio>
#include <string>

#include "binding/property.h"

namespace tav::test {

// A number as a double, whatever its kind.
inline double NumberOf(const wex::BindingProperty& value) {
    using wex::BindingPropertyKind;
    switch (value.Kind()) {
        case BindingPropertyKind::Signed:
            return static_cast<double>(value.AsInt64());
        case BindingPropertyKind::Unsigned:
            return static_cast<double>(value.AsUnsigned());
        default:
            return value.AsDouble();
    }
}

// A one-line picture of a small value tree that shows every node's kind, such
// as {a: signed:1, b: [string:"x", empty]}, so a whole tree compares at once.
// With numbersByValue every number shows as "number:" and its value, whatever
// its kind.
inline std::string DescribeValue(const wex::BindingProperty& value, bool numbersByValue = false) {
    using wex::BindingPropertyKind;
    const BindingPropertyKind kind = value.Kind();
    const bool isNumber = kind == BindingPropertyKind::Signed || kind == BindingPropertyKind::Unsigned ||
                          kind == BindingPropertyKind::Float;
    if (kind == BindingPropertyKind::Float || (isNumber && numbersByValue)) {
        char text[40];
        std::snprintf(text, sizeof text, "%s:%.17g", numbersByValue ? "number" : "float", NumberOf(value));
        return text;
    }
    switch (kind) {
        case BindingPropertyKind::Empty:
            return "empty";
        case BindingPropertyKind::String:
            return "string:\"" + std::string(value.AsString()) + "\"";
        case BindingPropertyKind::Collection: {
            std::string text = "[";
            for (const wex::BindingProperty& element : value.Elements()) {
                text += (text.size() > 1 ? ", " : "") + DescribeValue(element, numbersByValue);
            }
            return text + "]";
        }
        case BindingPropertyKind::Structure: {
            std::string text = "{";
            for (const wex::BindingMember member : value.Members()) {
                text += (text.size() > 1 ? ", " : "") + std::string(member.name) + ": " +
                        DescribeValue(member.value, numbersByValue);
            }
            return text + "}";
        }
        default:
            return std::string(wex::BindingPropertyKindName(kind)) + ":" + value.ToString();
    }
}

// Whether two small trees hold the same value, numbers compared by value
// whatever their kinds: conformance suites write their expectations in JSON,
// which reads every positive integer as "unsigned".
inline bool SameValue(const wex::BindingProperty& actual, const wex::BindingProperty& expected) {
    return DescribeValue(actual, true) == DescribeValue(expected, true);
}

}  // namespace tav::test
