#include "types/host_value.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <string>

#include "codec/json_writer.h"
#include "sample_model.h"
#include "support/nested_text.h"

namespace wex {
namespace {

using wex::test::Outcome;

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
    HostObjectMember ascending[] = {{"a", Tagged(HostValueBorrowedString, "x"), 0}, {"b", Tagged(HostValueBool), 0}};
    HostObjectMember repeated[] = {{"a", Tagged(HostValueNone), 0}, {"a", Tagged(HostValueBorrowedString, "x"), 0}};
    HostValue unknownInside[] = {Tagged(HostValueSigned), Tagged(11)};
    HostValue loop[1] = {};
    loop[0] = Tagged(HostValueArray, loop, 1);
    HostValue shared[] = {Tagged(HostValueNone)};
    HostValue twice[] = {Tagged(HostValueArray, shared, 1), Tagged(HostValueArray, shared, 1)};
    HostObjectMember sharedMembers[] = {{"a", Tagged(HostValueNone), 0}};
    HostValue twiceMembers[] = {Tagged(HostValueObject, sharedMembers, 1), Tagged(HostValueObject, sharedMembers, 1)};
    const struct {
        HostValue value;
        std::string described;
    } rows[] = {
        {Tagged(HostValueNone), "empty"},
        {{HostValueBool, {.boolean = 1}}, "bool:true"},
        {{HostValueSigned, {.integer = std::numeric_limits<std::int64_t>::min()}}, "signed:-9223372036854775808"},
        {{HostValueUnsigned, {.natural = std::numeric_limits<std::uint64_t>::max()}}, "unsigned:18446744073709551615"},
        {{HostValueDouble, {.real = -0.5}}, "float:-0.5"},
        {Tagged(HostValueBorrowedString, "borrowed"), R"(string:"borrowed")"},
        {Tagged(HostValueOwnedString, "abc\0def", 7), R"(string:"abc")"},
        {Tagged(HostValueBorrowedString), R"(string:"")"},
        {Tagged(HostValueBorrowedBytes, bytes, 3), "blob:AAEC"},
        {Tagged(HostValueOwnedBytes, bytes, 1), "blob:AA=="},
        {Tagged(HostValueOwnedBytes, nullptr, 5), "blob:"},
        {Tagged(HostValueArray, nullptr, 3), "[]"},
        {Tagged(HostValueObject, nullptr, 3), "{}"},
        {Tagged(HostValueObject, members, 5), R"({: empty, a: bool:false, b: [empty, string:"x"], k: [string:"new"]})"},
        {Tagged(HostValueObject, ascending, 2), R"({a: string:"x", b: bool:false})"},
        {Tagged(HostValueObject, repeated, 2), R"({a: string:"x"})"},
        {Tagged(11), failed},
        {Tagged(0xFFFFFFFF), failed},
        {Tagged(HostValueArray, unknownInside, 2), failed},
        {loop[0], failed},
        {Tagged(HostValueArray, twice, 2), failed},
        {Tagged(HostValueArray, twiceMembers, 2), failed},
        // More elements than a collection can hold: refused before any is read.
        {Tagged(HostValueArray, inner, 0xFFFFFFFF), "Out of memory"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.described);
        EXPECT_EQ(Outcome(HostValueToBinding(row.value, "summonerId")), row.described);
    }
}

class BindingToHost : public ::testing::Test {
  protected:
    void TearDown() override { ReleaseHostValue(host_); }
    HostValue host_{};
};

TEST_F(BindingToHost, MembersComeInNameOrderWithOwnedNamesAndTextsAndBytesAreOwnedZeroTerminatedCopies) {
    BindingProperty value;
    value.Member("c").SetBlob(std::vector<std::uint8_t>{});
    value.Member("b").SetString(std::string_view("a\0b", 3));
    value.Member("a");
    ASSERT_TRUE(BindingToHostValue(value, host_, nullptr));
    ASSERT_EQ(Read(host_.payload.ref.length), 3u);
    const auto* members = static_cast<const HostObjectMember*>(host_.payload.ref.data);
    const char* const names[] = {"a", "b", "c"};
    for (int index = 0; index < 3; ++index) {
        EXPECT_STREQ(Read(members[index].name), names[index]);
        EXPECT_EQ(Read(members[index].ownsName), 1);
    }
    const HostValue text = members[1].value;
    EXPECT_EQ(Read(text.tag), static_cast<std::uint32_t>(HostValueOwnedString));
    EXPECT_EQ(Read(text.payload.ref.length), 3u);
    EXPECT_NE(Read(text.payload.ref.data), value.Member("b").AsString().data());
    EXPECT_EQ(std::memcmp(text.payload.ref.data, "a\0b\0", 4), 0);
    const HostValue blob = members[2].value;
    EXPECT_EQ(Read(blob.tag), static_cast<std::uint32_t>(HostValueOwnedBytes));
    EXPECT_EQ(Read(blob.payload.ref.length), 0u);
    EXPECT_NE(Read(blob.payload.ref.data), nullptr);
    ReleaseHostValue(host_);
    EXPECT_EQ(Read(host_.tag), static_cast<std::uint32_t>(HostValueNone));
}

TEST_F(BindingToHost, AMillionLevelsConvertBothWaysAndRelease) {
    ASSERT_TRUE(BindingToHostValue(tav::test::NestedCollections(1000000, 5), host_, nullptr));
    EXPECT_EQ(WriteJson(HostValueToBinding(host_, "value")), tav::test::NestedText(1000000, "5"));
}

}  // namespace
}  // namespace wex
