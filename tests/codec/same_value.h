#pragma once

#include "binding/property.h"

namespace tav::test {

inline bool IsNumber(const wex::BindingProperty& value) {
    using wex::BindingPropertyKind;
    return value.Kind() == BindingPropertyKind::Signed || value.Kind() == BindingPropertyKind::Unsigned ||
           value.Kind() == BindingPropertyKind::Float;
}

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

// Whether two small trees hold the same value, numbers compared by value
// whatever their kinds: conformance suites write their expectations in JSON,
// which reads every positive integer as "unsigned".
inline bool SameValue(const wex::BindingProperty& actual, const wex::BindingProperty& expected) {
    using wex::BindingPropertyKind;
    if (IsNumber(expected)) {
        return IsNumber(actual) && NumberOf(actual) == NumberOf(expected);
    }
    if (actual.Kind() != expected.Kind() || actual.Size() != expected.Size()) {
        return false;
    }
    if (expected.Kind() == BindingPropertyKind::Collection) {
        for (std::size_t index = 0; index < expected.Size(); ++index) {
            if (!SameValue(actual.At(index), expected.At(index))) {
                return false;
            }
        }
        return true;
    }
    if (expected.Kind() == BindingPropertyKind::Structure) {
        for (const wex::BindingMember member : expected.Members()) {
            if (!actual.HasMember(member.name) || !SameValue(actual.Member(member.name), member.value)) {
                return false;
            }
        }
        return true;
    }
    return actual.ToString() == expected.ToString();
}

}  // namespace tav::test
