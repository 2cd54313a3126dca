#include "types/host_value.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include "sample_model.h"

namespace wex {
namespace {

using namespace sample::leagues;

// A packed field copied out: a reference must never bind to one.
template <class T>
T Read(T value) {
    return value;
}

HostValue Tagged(std::uint32_t tag) {
    HostValue value{};
    value.tag = tag;
    return value;
}

HostValue Reference(std::uint32_t tag, const void* data, std::uint32_t length) {
    HostValue value = Tagged(tag);
    value.payload.ref.data = data;
    value.payload.ref.length = length;
    return value;
}

// A canonical text of a tree, to compare trees in tests.
std::string Describe(const BindingProperty& value) {
    std::string text(BindingPropertyKindName(value.Kind()));
    switch (value.Kind()) {
        case BindingPropertyKind::Collection:
            text += "[";
            for (const BindingProperty& element : value.Elements()) {
                text += Describe(element) + ",";
            }
            return text + "]";
        case BindingPropertyKind::Structure:
            text += "{";
            for (const BindingMember member : value.Members()) {
                text += std::string(member.name) + ":" + Describe(member.value) + ",";
            }
            return text + "}";
        default:
            return text + "(" + value.ToString() + ")";
    }
}

std::string IncompatibleMessage(std::string_view name) {
    return "Couldn't assign value to '" + std::string(name) +
           "' of type object because the input is of an incompatible type ''.";
}

TEST(HostValueToBinding, EachTagGivesItsKind) {
    HostValue boolean = Tagged(HostValueBool);
    boolean.payload.boolean = 1;
    HostValue negative = Tagged(HostValueSigned);
    negative.payload.integer = std::numeric_limits<std::int64_t>::min();
    HostValue natural = Tagged(HostValueUnsigned);
    natural.payload.natural = std::numeric_limits<std::uint64_t>::max();
    HostValue real = Tagged(HostValueDouble);
    real.payload.real = -0.5;
    const std::uint8_t bytes[] = {0, 1, 2};
    const struct {
        HostValue value;
        std::string described;
    } rows[] = {
        {Tagged(HostValueNone), "empty()"},
        {boolean, "bool(true)"},
        {negative, "signed(-9223372036854775808)"},
        {natural, "unsigned(18446744073709551615)"},
        {real, "float(-0.500000)"},
        {Reference(HostValueBorrowedString, "borrowed", 0), "string(borrowed)"},
        {Reference(HostValueOwnedString, "abc\0def", 7), "string(abc)"},
        {Reference(HostValueBorrowedString, nullptr, 0), "string()"},
        {Reference(HostValueBorrowedBytes, bytes, 3), "blob(AAEC)"},
        {Reference(HostValueOwnedBytes, bytes, 1), "blob(AA==)"},
        {Reference(HostValueOwnedBytes, nullptr, 5), "blob()"},
        {Reference(HostValueArray, nullptr, 3), "collection[]"},
        {Reference(HostValueObject, nullptr, 3), "structure{}"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.described);
        const BindingProperty converted = HostValueToBinding(row.value, "value");
        EXPECT_TRUE(converted.IsValid());
        EXPECT_EQ(Describe(converted), row.described);
    }
}

TEST(HostValueToBinding, ArraysAndObjectsNest) {
    HostValue inner[2] = {Tagged(HostValueNone), Reference(HostValueBorrowedString, "x", 0)};
    HostObjectMember members[] = {
        {"b", Reference(HostValueArray, inner, 2), 0},
        {"a", Tagged(HostValueBool), 0},
        {nullptr, Tagged(HostValueNone), 0},
    };
    const BindingProperty converted = HostValueToBinding(Reference(HostValueObject, members, 3), "value");
    EXPECT_EQ(Describe(converted), "structure{:empty(),a:bool(false),b:collection[empty(),string(x),],}");
}

TEST(HostValueToBinding, ARepeatedMemberNameKeepsTheLastValue) {
    HostValue first[] = {Reference(HostValueBorrowedString, "old", 0)};
    HostValue last[] = {Reference(HostValueBorrowedString, "new", 0)};
    HostObjectMember members[] = {
        {"k", Reference(HostValueArray, first, 1), 0},
        {"other", Tagged(HostValueNone), 0},
        {"k", Reference(HostValueArray, last, 1), 0},
    };
    const BindingProperty converted = HostValueToBinding(Reference(HostValueObject, members, 3), "value");
    EXPECT_EQ(Describe(converted), "structure{k:collection[string(new),],other:empty(),}");
}

TEST(HostValueToBinding, AnUnknownTagFailsTheWholeValue) {
    for (std::uint32_t tag : {11u, 0xFFFFFFFFu}) {
        SCOPED_TRACE(tag);
        const BindingProperty top = HostValueToBinding(Tagged(tag), "summonerId");
        EXPECT_FALSE(top.IsValid());
        EXPECT_EQ(top.GetError(), IncompatibleMessage("summonerId"));

        HostValue items[] = {Tagged(HostValueSigned), Tagged(tag)};
        const BindingProperty nested = HostValueToBinding(Reference(HostValueArray, items, 2), "<result>");
        EXPECT_EQ(nested.GetError(), IncompatibleMessage("<result>"));
        EXPECT_EQ(nested.Kind(), BindingPropertyKind::Structure);
        EXPECT_EQ(nested.Size(), 1u);
    }
}

TEST(HostValueToBinding, AValueThatContainsItselfIsRefused) {
    HostValue loop[1] = {};
    loop[0] = Reference(HostValueArray, loop, 1);
    EXPECT_EQ(HostValueToBinding(loop[0], "value").GetError(), IncompatibleMessage("value"));

    HostValue shared[] = {Tagged(HostValueNone)};
    HostValue twice[] = {Reference(HostValueArray, shared, 1), Reference(HostValueArray, shared, 1)};
    EXPECT_EQ(HostValueToBinding(Reference(HostValueArray, twice, 2), "value").GetError(),
              IncompatibleMessage("value"));
}

class BindingToHost : public ::testing::Test {
  protected:
    void SetUp() override { Register(registry_); }
    void TearDown() override { ReleaseHostValue(host_); }

    BindingTypeRegistry registry_;
    HostValue host_{};
};

TEST_F(BindingToHost, ScalarsKeepTheirTags) {
    BindingProperty value;
    const struct {
        void (*set)(BindingProperty&);
        std::uint32_t tag;
    } rows[] = {
        {[](BindingProperty& v) { v.Reset(); }, HostValueNone},
        {[](BindingProperty& v) { v.SetBool(true); }, HostValueBool},
        {[](BindingProperty& v) { v.SetSigned(-2); }, HostValueSigned},
        {[](BindingProperty& v) { v.SetUnsigned(2); }, HostValueUnsigned},
        {[](BindingProperty& v) { v.SetFloat(2.5); }, HostValueDouble},
    };
    for (const auto& row : rows) {
        row.set(value);
        ASSERT_TRUE(BindingToHostValue(value, host_, nullptr));
        EXPECT_EQ(Read(host_.tag), row.tag);
        ReleaseHostValue(host_);
    }
    value.SetSigned(-2);
    ASSERT_TRUE(BindingToHostValue(value, host_, nullptr));
    EXPECT_EQ(Read(host_.payload.integer), -2);
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
    EXPECT_EQ(Read(host_.tag), static_cast<std::uint32_t>(HostValueNone));

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
    const auto* items = static_cast<const HostValue*>(host_.payload.ref.data);
    EXPECT_EQ(Read(items[0].tag), static_cast<std::uint32_t>(HostValueOwnedString));
    EXPECT_STREQ(static_cast<const char*>(items[0].payload.ref.data), "GOLD");
    EXPECT_EQ(Read(items[1].tag), static_cast<std::uint32_t>(HostValueSigned));
    EXPECT_EQ(Read(items[1].payload.integer), 2);
    ReleaseHostValue(host_);

    ASSERT_TRUE(BindingToHostValue(value, host_, nullptr));
    items = static_cast<const HostValue*>(host_.payload.ref.data);
    EXPECT_EQ(Read(items[0].tag), static_cast<std::uint32_t>(HostValueSigned));
    EXPECT_EQ(Read(items[0].payload.integer), 3);
}

TEST_F(BindingToHost, MembersComeInNameOrderWithOwnedNames) {
    BindingProperty value;
    value.Member("b").SetSigned(2);
    value.Member("a").SetSigned(1);
    value.Member("c");
    ASSERT_TRUE(BindingToHostValue(value, host_, nullptr));
    ASSERT_EQ(Read(host_.tag), static_cast<std::uint32_t>(HostValueObject));
    ASSERT_EQ(Read(host_.payload.ref.length), 3u);
    const auto* members = static_cast<const HostObjectMember*>(host_.payload.ref.data);
    EXPECT_STREQ(Read(members[0].name), "a");
    EXPECT_STREQ(Read(members[1].name), "b");
    EXPECT_STREQ(Read(members[2].name), "c");
    for (int index = 0; index < 3; ++index) {
        EXPECT_EQ(Read(members[index].ownsName), 1);
    }
    EXPECT_EQ(Read(members[1].value.payload.integer), 2);
    EXPECT_EQ(Read(members[2].value.tag), static_cast<std::uint32_t>(HostValueNone));
}

TEST_F(BindingToHost, EveryKindRoundTripsThroughTheHostForm) {
    BindingProperty value;
    value.Member("bool").SetBool(false);
    value.Member("signed").SetSigned(-7);
    value.Member("unsigned").SetUnsigned(18446744073709551615u);
    value.Member("float").SetFloat(1e-300);
    value.Member("string").SetString("Zoë");
    value.Member("blob").SetBlob(std::vector<std::uint8_t>{255, 0});
    value.Member("empty");
    value.Member("list").At(2).Member("inner").At(0).SetString("deep");
    value.Member("list").At(0).MakeStructure();
    value.Member("list").At(1).MakeCollection();
    ASSERT_TRUE(BindingToHostValue(value, host_, nullptr));
    const BindingProperty back = HostValueToBinding(host_, "value");
    EXPECT_TRUE(back.IsValid());
    EXPECT_EQ(Describe(back), Describe(value));
}

TEST(HostValueDeepTree, AMillionLevelsConvertBothWaysAndRelease) {
    constexpr int kDepth = 1000000;
    BindingProperty deep;
    BindingProperty* node = &deep;
    for (int level = 0; level < kDepth; ++level) {
        node = &node->At(0);
    }
    node->SetSigned(5);

    HostValue host{};
    ASSERT_TRUE(BindingToHostValue(deep, host, nullptr));
    const BindingProperty back = HostValueToBinding(host, "value");
    ReleaseHostValue(host);
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
