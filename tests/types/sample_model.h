#pragma once

#include <gtest/gtest.h>

#include <charconv>
#include <cstdint>
#include <map>
#include <string>
#include <type_traits>
#include <vector>

#include "binding/property.h"
#include "support/describe_value.h"
#include "types/native_conversion.h"
#include "types/registry.h"

namespace sample::leagues {

enum class Tier : std::int32_t { NONE = 0, GOLD = 3, PLATINUM = 4 };

struct Standing {
    std::string id;
    std::uint64_t position = 0;
    std::int64_t points = 0;
    bool inactive = false;
    std::vector<Tier> pastTiers;
    Tier tier = Tier::NONE;
};

struct Division {
    std::string name;
    std::vector<Standing> standings;
    std::map<std::string, std::int32_t> counts;
    wex::BindingProperty extra;
    std::vector<std::uint8_t> badge;
    float ratio = 0;
};

// Two fields, both required.
struct Key {
    std::string region;
    std::int32_t number = 0;
};

// Fields that are left out when they hold nothing.
struct Sparse {
    std::int32_t count = 0;
    std::string label;
    wex::BindingProperty extra;
    Key key;
};

struct Unregistered {
    int value = 0;
};

inline void Register(wex::BindingTypeRegistry& registry) {
    const std::vector<std::string> tags = {"sample"};
    registry.Enum<Tier>("SampleTier", tags)
        .Value("NONE", Tier::NONE)
        .Value("GOLD", Tier::GOLD)
        .Value("PLATINUM", Tier::PLATINUM);
    registry.Struct<Standing>("SampleStanding", tags)
        .Field("id", &Standing::id)
        .Field("position", &Standing::position)
        .Field("points", &Standing::points)
        .Field("inactive", &Standing::inactive)
        .Field("pastTiers", &Standing::pastTiers)
        .Field("tier", &Standing::tier);
    registry.Struct<Division>("SampleDivision", tags)
        .Field("name", &Division::name)
        .Field("standings", &Division::standings)
        .Field("counts", &Division::counts)
        .Field("extra", &Division::extra)
        .Field("badge", &Division::badge)
        .Field("ratio", &Division::ratio);
    registry.Struct<Key>("SampleKey")
        .Field("region", &Key::region, wex::BindingFieldOption::Required)
        .Field("number", &Key::number, wex::BindingFieldOption::Required);
    registry.Struct<Sparse>("SampleSparse")
        .Field("count", &Sparse::count, wex::BindingFieldOption::OmitWhenDefault)
        .Field("label", &Sparse::label, wex::BindingFieldOption::OmitWhenDefault)
        .Field("extra", &Sparse::extra, wex::BindingFieldOption::OmitWhenDefault)
        .Field("key", &Sparse::key, wex::BindingFieldOption::OmitWhenDefault);
}

// A registry holding the sample model, fresh for each test.
class SampleRegistry : public ::testing::Test {
  protected:
    void SetUp() override { Register(registry_); }
    wex::BindingTypeRegistry registry_;
};

}  // namespace sample::leagues

namespace wex::test {

// The picture of a valid value, else its message.
inline std::string Outcome(const BindingProperty& value) {
    return value.IsValid() ? tav::test::DescribeValue(value) : std::string(value.GetError());
}

// Numbers in their shortest exact form, anything else as the picture of its binding form.
template <class T>
std::string Show(const T& value, const BindingTypeRegistry& registry) {
    if constexpr (std::is_arithmetic_v<T> && !std::is_same_v<T, bool>) {
        char text[40];
        return std::string(text, std::to_chars(text, text + sizeof text, value).ptr);
    }
    return tav::test::DescribeValue(ToBinding(value, registry));
}

// The value each conversion starts from: 77, which no case converts to, or the type's default.
template <class T>
T Start() {
    if constexpr (std::is_arithmetic_v<T> || std::is_enum_v<T>) {
        return static_cast<T>(77);
    }
    return T{};
}

// Converts input into out under the name "field", requiring a value or not; the message, or "" on success.
template <class T, bool kRequired = false>
std::string ConvertInto(T& out, const BindingProperty& input, const BindingTypeRegistry& registry) {
    BindingProperty status;
    if constexpr (kRequired) {
        FromBindingRequired(status, out, input, "field", registry);
    } else {
        FromBinding(status, out, input, "field", registry);
    }
    return std::string(status.GetError());
}

// Converts input under the name "field" into a T holding Start<T>(): the value shown on success, else the
// message, marked when the failure changed the value.
template <class T, bool kRequired = false>
std::string Into(const BindingProperty& input, const BindingTypeRegistry& registry) {
    T out = Start<T>();
    const std::string message = ConvertInto<T, kRequired>(out, input, registry);
    if (message.empty()) {
        return Show(out, registry);
    }
    return message + (Show(out, registry) == Show(Start<T>(), registry) ? "" : " (changed)");
}

// Into of one type, for tables of several.
using Conversion = std::string (*)(const BindingProperty&, const BindingTypeRegistry&);

}  // namespace wex::test
