#include "types/host_value.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <string>

#include "binding_values.h"
#include "codec/json_reader.h"
#include "sample_model.h"

namespace wex {
namespace {

using namespace sample::leagues;
using wex::test::Describe;

// A packed field copied out: a reference must never bind to one.
template <class T>
T Read(T value) {
    return value;
}

HostValue Tagged(std::uint32_t tag, const void* data = nullptr, std::uint32_t length = 0) {
    HostValue value{};
    value.tag = tag;
    value.payload.ref.data = data;
    value.payload.ref.length = length;
    return value;
}

TEST(HostValueToBinding, EachTagGivesItsKindContainersNestAndAnythingElseFailsTheWholeValue) {
    const std::string failed =
        "Couldn't assign value to 'summonerId' of type object because the input is of an "
        "incompatible type ''.";
    const std::uint8_t bytes[] = {0, 1, 2};
    HostValue inner[2] = {Tagged(HostValueNone), Tagged(HostValueBorrowedString, "x")};
    HostValue first[] = {Tagged(HostValueBorrowedString, "old"), Tagged(HostValueBorrowedString, "older")};
    HostValue last[] = {Tagged(HostValueBorrowedString, "new")};
    HostObjectMember members[] = {{"b", Tagged(HostValueArray, inner, 2), 0},
                                  {"k", Tagged(HostValueArray, first, 2), 0},
                                  {"a", Tagged(HostValueBool), 0},
                                  {nullptr, Tagged(HostValueNone), 0},
                                  {"k", Tagged(HostValueArray, last, 1), 0}};
    HostValue unknownInside[] = {Tagged(HostValueSigned), Tagged(11)};
    HostValue loop[1] = {};
    loop[0] = Tagged(HostValueArray, loop, 1);
    HostValue shared[] = {Tagged(HostValueNone)};
    HostValue twice[] = {Tagged(HostValueArray, shared, 1), Tagged(HostValueArray, shared, 1)};
    const struct {
        HostValue value;
        std::string described;
    } rows[] = {
        {Tagged(HostValueNone), "empty()"},
        {{HostValueBool, {.boolean = 1}}, "bool(true)"},
        {{HostValueSigned, {.integer = std::numeric_limits<std::int64_t>::min()}}, "signed(-9223372036854775808)"},
        {{HostValueUnsigned, {.natural = std::numeric_limits<std::uint64_t>::max()}}, "unsigned(18446744073709551615)"},
        {{HostValueDouble, {.real = -0.5}}, "float(-0.500000)"},
        {Tagged(HostValueBorrowedString, "borrowed"), "string(borrowed)"},
        {Tagged(HostValueOwnedString, "abc\0def", 7), "string(abc)"},
        {Tagged(HostValueBorrowedString), "string()"},
        {Tagged(HostValueBorrowedBytes, bytes, 3), "blob(AAEC)"},
        {Tagged(HostValueOwnedBytes, bytes, 1), "blob(AA==)"},
        {Tagged(HostValueOwnedBytes, nullptr, 5), "blob()"},
        {Tagged(HostValueArray, nullptr, 3), "collection[]"},
        {Tagged(HostValueObject, nullptr, 3), "structure{}"},
        {Tagged(HostValueObject, members, 5),
         "structure{:empty(),a:bool(false),b:collection[empty(),string(x),],k:collection[string(new),],}"},
        {Tagged(11), failed},
        {Tagged(0xFFFFFFFF), failed},
        {Tagged(HostValueArray, unknownInside, 2), failed},
        {loop[0], failed},
        {Tagged(HostValueArray, twice, 2), failed},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.described);
        const BindingProperty converted = HostValueToBinding(row.value, "summonerId");
        EXPECT_EQ(converted.IsValid() ? Describe(converted) : std::string(converted.GetError()), row.described);
    }
}

class BindingToHost : public ::testing::Test {
  protected:
    void SetUp() override { Register(registry_); }
    void TearDown() override { ReleaseHostValue(host_); }

    BindingTypeRegistry registry_;
    HostValue host_{};
};

TEST_F(BindingToHost, EveryKindRoundTripsThroughTheHostForm) {
    BindingProperty value = ParseJson(R"({"bool": true, "signed": -7, "unsigned": 18446744073709551615, "float": -2.5,
        "string": "Zoë", "empty": null, "list": [{}, [], {"inner": ["deep"]}]})");
    value.Member("blob").SetBlob(std::vector<std::uint8_t>{255, 0});
    ASSERT_TRUE(BindingToHostValue(value, host_, nullptr));
    const BindingProperty back = HostValueToBinding(host_, "value");
    EXPECT_TRUE(back.IsValid());
    EXPECT_EQ(Describe(back), Describe(value));
    ReleaseHostValue(host_);
    EXPECT_EQ(Read(host_.tag), static_cast<std::uint32_t>(HostValueNone));
}

TEST_F(BindingToHost, TextsAndBytesAreOwnedZeroTerminatedCopies) {
    BindingProperty text;
    text.SetString(std::string_view("a\0b", 3));
    ASSERT_TRUE(BindingToHostValue(text, host_, nullptr));
    EXPECT_EQ(Read(host_.tag), static_cast<std::uint32_t>(HostValueOwnedString));
    EXPECT_EQ(Read(host_.payload.ref.length), 3u);
    EXPECT_NE(Read(host_.payload.ref.data), text.AsString().data());
    EXPECT_EQ(std::memcmp(host_.payload.ref.data, "a\0b\0", 4), 0);
    ReleaseHostValue(host_);

    BindingProperty blob;
    blob.SetBlob(std::vector<std::uint8_t>{});
    ASSERT_TRUE(BindingToHostValue(blob, host_, nullptr));
    EXPECT_EQ(Read(host_.tag), static_cast<std::uint32_t>(HostValueOwnedBytes));
    EXPECT_EQ(Read(host_.payload.ref.length), 0u);
    EXPECT_NE(Read(host_.payload.ref.data), nullptr);
}

TEST_F(BindingToHost, EnumeratorsGoByNameWhenTheRegistryKnowsThem) {
    BindingProperty value;
    value.At(0).SetEnum(3, BindingTypeIdentity::Of<Tier>());
    value.At(1).SetEnum(2, BindingTypeIdentity::Of<Tier>());
    ASSERT_TRUE(BindingToHostValue(value, host_, &registry_));
    EXPECT_EQ(Describe(HostValueToBinding(host_, "value")), "collection[string(GOLD),signed(2),]");
    ReleaseHostValue(host_);
    ASSERT_TRUE(BindingToHostValue(value, host_, nullptr));
    EXPECT_EQ(Describe(HostValueToBinding(host_, "value")), "collection[signed(3),signed(2),]");
}

TEST_F(BindingToHost, MembersComeInNameOrderWithOwnedNames) {
    BindingProperty value;
    value.Member("b").SetSigned(2);
    value.Member("a").SetSigned(1);
    value.Member("c");
    ASSERT_TRUE(BindingToHostValue(value, host_, nullptr));
    ASSERT_EQ(Read(host_.payload.ref.length), 3u);
    const auto* members = static_cast<const HostObjectMember*>(host_.payload.ref.data);
    const char* const names[] = {"a", "b", "c"};
    for (int index = 0; index < 3; ++index) {
        EXPECT_STREQ(Read(members[index].name), names[index]);
        EXPECT_EQ(Read(members[index].ownsName), 1);
    }
}

TEST_F(BindingToHost, AMillionLevelsConvertBothWaysAndRelease) {
    constexpr int kDepth = 1000000;
    BindingProperty deep;
    BindingProperty* node = &deep;
    for (int level = 0; level < kDepth; ++level) {
        node = &node->At(0);
    }
    node->SetSigned(5);

    ASSERT_TRUE(BindingToHostValue(deep, host_, nullptr));
    const BindingProperty back = HostValueToBinding(host_, "value");
    ASSERT_TRUE(back.IsValid());
    const BindingProperty* walk = &back;
    int depth = 0;
    while (walk->Kind() == BindingPropertyKind::Collection) {
        walk = &walk->At(0);
        ++depth;
    }
    EXPECT_EQ(depth, kDepth);
    EXPECT_EQ(walk->AsInt64(), 5);
}

}  // namespace
}  // namespace wex
