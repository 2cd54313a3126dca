#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <span>
#include <stdexcept>

#include "codec/json_reader.h"
#include "sample_model.h"
#include "support/case_table.h"
#include "types/host_value.h"

namespace wex {
namespace {

using namespace sample::leagues;
using namespace wex::test;

using Conversions = SampleRegistry;

// An input as conversions.tsv writes it: JSON, or a kind and its value.
BindingProperty Input(const std::string& text) {
    const std::string kind = text.substr(0, text.find(' '));
    BindingProperty value;
    if (kind == "signed") {
        value.SetSigned(std::stoll(text.substr(7)));
    } else if (kind == "float") {
        value.SetFloat(std::strtod(text.c_str() + 6, nullptr));
    } else if (kind == "enum" || kind == "tier") {
        value.SetEnum(std::stoi(text.substr(5)),
                      kind == "tier" ? BindingTypeIdentity::Of<Tier>() : BindingTypeIdentity::Reserved());
    } else if (kind == "blob") {
        value.SetBlob(std::span(reinterpret_cast<const std::uint8_t*>(text.data()) + 5, text.size() - 5));
    } else {
        value = ParseJson(text);
    }
    return value;
}

// Into the host's form and back, with or without the registry that names enumerators.
template <bool kNamed>
std::string ThroughHost(const BindingProperty& input, const BindingTypeRegistry& registry) {
    HostValue host{};
    if (!BindingToHostValue(input, host, kNamed ? &registry : nullptr)) {
        return "not converted";
    }
    const std::string shown = Outcome(HostValueToBinding(host, "value"));
    ReleaseHostValue(host);
    return shown;
}

// Into a Division, its binding form into a Division again, and that one's binding form through the host's, where
// enumerators show by name only when they carry their type.
std::string TwiceThroughHost(const BindingProperty& input, const BindingTypeRegistry& registry) {
    Division first;
    std::string message = ConvertInto(first, input, registry);
    Division second;
    message += ConvertInto(second, ToBinding(first, registry), registry);
    return message.empty() ? ThroughHost<true>(ToBinding(second, registry), registry) : message;
}

TEST_F(Conversions, EachCaseOfTheTable) {
    const std::map<std::string, Conversion, std::less<>> targets = {
        {"bool", Into<bool>},
        {"object", Into<BindingProperty>},
        {"int8", Into<std::int8_t>},
        {"int16", Into<std::int16_t>},
        {"int32", Into<std::int32_t>},
        {"int64", Into<std::int64_t>},
        {"uint8", Into<std::uint8_t>},
        {"uint16", Into<std::uint16_t>},
        {"uint32", Into<std::uint32_t>},
        {"uint64", Into<std::uint64_t>},
        {"float", Into<float>},
        {"double", Into<double>},
        {"string", Into<std::string>},
        {"blob", Into<std::vector<std::uint8_t>>},
        {"SampleTier", Into<Tier>},
        {"SampleStanding", Into<Standing>},
        {"SampleKey", Into<Key>},
        {"SampleSparse", Into<Sparse>},
        {"SampleDivision", Into<Division>},
        {"SampleDivision twice through host", TwiceThroughHost},
        {"required SampleStanding", Into<Standing, true>},
        {"required int64", Into<std::int64_t, true>},
        {"Unregistered", Into<Unregistered>},
        {"vector of int32", Into<std::vector<std::int32_t>>},
        {"vector of bool", Into<std::vector<bool>>},
        {"vector of vector of string", Into<std::vector<std::vector<std::string>>>},
        {"map of int32", Into<std::map<std::string, std::int32_t>>},
        {"host", ThroughHost<true>},
        {"host without registry", ThroughHost<false>}};
    for (const auto& row : tav::test::ReadCaseTable(__FILE__, "conversions.tsv", 3)) {
        SCOPED_TRACE(row[0] + " | " + row[1]);
        const auto target = targets.find(row[0]);
        ASSERT_NE(target, targets.end());
        EXPECT_EQ(target->second(Input(row[1]), registry_), row[2]);
    }
}

TEST_F(Conversions, ATextIsReadWholeAndAnUnregisteredEnumerationIsNamedByItsIdentity) {
    BindingProperty zeroInside;
    zeroInside.SetString(std::string_view("12\0", 3));
    EXPECT_EQ(Into<std::int64_t>(zeroInside, registry_),
              "Value " + std::string("12\0", 3) + " for 'field' of type int64 is in an incorrect format");
    enum class Loose { A = 1 };
    EXPECT_EQ(Into<Loose>(ParseJson("1"), registry_), "1 is not a valid " +
                                                          std::string(BindingTypeIdentity::Of<Loose>().DefaultName()) +
                                                          " enumeration value for 'field'.");
}

TEST_F(Conversions, AFailedStatusStopsEveryConversionAndStillEmptiesContainers) {
    BindingProperty status;
    status.SetError("first");
    std::int32_t number = 1;
    std::string text = "kept";
    std::vector<std::int32_t> numbers = {1};
    std::map<std::string, std::int32_t> counts = {{"old", 1}};
    FromBinding(status, number, ParseJson(R"("2")"), "a", registry_);
    FromBinding(status, text, ParseJson(R"("new")"), "b", registry_);
    FromBinding(status, numbers, ParseJson("[]"), "c", registry_);
    FromBinding(status, counts, ParseJson("{}"), "d", registry_);
    EXPECT_EQ(status.GetError(), "first");
    EXPECT_EQ(number, 1);
    EXPECT_EQ(text, "kept");
    EXPECT_TRUE(numbers.empty());
    EXPECT_TRUE(counts.empty());
}

// A record whose construction throws once it is registered, as a record holding a resource might.
struct Fragile {
    static inline bool broken = false;
    Fragile() {
        if (broken) {
            throw std::runtime_error("no room for a fragile record");
        }
    }
    std::int32_t value = 0;
};

TEST_F(Conversions, AnExceptionInsideAConversionFailsItWithItsText) {
    registry_.Struct<Fragile>("Fragile").Field("value", &Fragile::value);
    Fragile::broken = true;
    EXPECT_EQ(Into<std::vector<Fragile>>(ParseJson(R"([{"value": 1}])"), registry_), "no room for a fragile record");
    Fragile::broken = false;
}

}  // namespace
}  // namespace wex
