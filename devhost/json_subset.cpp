#include "json_subset.h"

#include <vector>

#include "codec/json_writer.h"
#include "value_builders.h"

namespace tav::host {

namespace {

using wex::BindingProperty;
using wex::BindingPropertyKind;

bool IsInteger(BindingPropertyKind kind) {
    return kind == BindingPropertyKind::Signed || kind == BindingPropertyKind::Unsigned;
}

// Whole numbers compare by their text, so that 64-bit values stay exact; a
// fraction on either side compares by value, so that 2 equals 2.0.
bool SameScalar(const BindingProperty& expected, const BindingProperty& actual) {
    const bool expectedInteger = IsInteger(expected.Kind());
    const bool actualInteger = IsInteger(actual.Kind());
    if (expectedInteger && actualInteger) {
        return expected.ToString() == actual.ToString();
    }
    const bool expectedNumber = expectedInteger || expected.Kind() == BindingPropertyKind::Float;
    const bool actualNumber = actualInteger || actual.Kind() == BindingPropertyKind::Float;
    if (expectedNumber && actualNumber) {
        return *NumberOf(expected) == *NumberOf(actual);
    }
    return expected.Kind() == actual.Kind() && wex::WriteJson(expected) == wex::WriteJson(actual);
}

struct Pair {
    const BindingProperty* expected;
    const BindingProperty* actual;
    std::string path;
};

}  // namespace

bool JsonSubset(const BindingProperty& expected, const BindingProperty& actual, std::string& where) {
    std::vector<Pair> pending{{&expected, &actual, "$"}};
    while (!pending.empty()) {
        const Pair pair = std::move(pending.back());
        pending.pop_back();
        const BindingProperty& want = *pair.expected;
        const BindingProperty& have = *pair.actual;
        const auto mismatch = [&](const std::string& what) {
            where = pair.path + ": " + what;
            return false;
        };
        if (want.Kind() == BindingPropertyKind::Structure) {
            if (have.Kind() != BindingPropertyKind::Structure) {
                return mismatch("expected an object, got " + wex::WriteJson(have));
            }
            for (const auto& member : want.Members()) {
                if (!have.HasMember(member.name)) {
                    return mismatch("missing member \"" + std::string(member.name) + "\"");
                }
                pending.push_back(
                    {&member.value, &have.Member(member.name), pair.path + "." + std::string(member.name)});
            }
        } else if (want.Kind() == BindingPropertyKind::Collection) {
            if (have.Kind() != BindingPropertyKind::Collection || have.Size() != want.Size()) {
                return mismatch("expected a list of " + std::to_string(want.Size()) + ", got " +
                                (have.Kind() == BindingPropertyKind::Collection
                                     ? "a list of " + std::to_string(have.Size())
                                     : wex::WriteJson(have)));
            }
            for (std::size_t index = want.Size(); index-- > 0;) {
                pending.push_back({&want.At(index), &have.At(index), pair.path + "[" + std::to_string(index) + "]"});
            }
        } else if (!SameScalar(want, have)) {
            return mismatch("expected " + wex::WriteJson(want) + ", got " + wex::WriteJson(have));
        }
    }
    return true;
}

}  // namespace tav::host
