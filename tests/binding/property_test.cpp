#include "binding/property.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "binding/string_entry.h"
#include "binding/value_text.h"
#include "tree_views.h"

namespace wex {
namespace {

using Kind = BindingPropertyKind;

// The names show in the failures of scalar conversions and in tree pictures of the other tests.
TEST(BindingPropertyKind, NamesEveryKindAndNothingElse) {
    EXPECT_EQ(BindingPropertyKindName(Kind::Structure), "structure");
    EXPECT_EQ(BindingPropertyKindName(static_cast<Kind>(10)), "");
}

TEST(BindingProperty, SizeCountsBytesElementsAndMembersAndOneForAScalar) {
    BindingProperty node;
    EXPECT_TRUE(node.IsEmpty());
    EXPECT_TRUE(node.IsValid());
    EXPECT_EQ(node.Size(), 0u);
    node.SetString("four");
    EXPECT_EQ(node.Size(), 4u);
    node.SetBlob(std::vector<std::uint8_t>(3));
    EXPECT_EQ(node.Size(), 3u);
    node.At(2);
    EXPECT_EQ(node.Size(), 3u);
    node.Member("x");
    EXPECT_EQ(node.Size(), 1u);
    node.SetEnum(0, BindingTypeIdentity::Reserved());
    EXPECT_EQ(node.Size(), 1u);
}

TEST(BindingProperty, WritingAtAnIndexOrAMemberMakesTheContainer) {
    BindingProperty node;
    node.At(5).SetSigned(9);
    ASSERT_EQ(node.Kind(), Kind::Collection);
    ASSERT_EQ(node.Size(), 6u);
    EXPECT_TRUE(node.At(4).IsEmpty());
    EXPECT_EQ(std::as_const(node).At(5).AsInt64(), 9);
    node.At(1).SetString("kept");
    node.At(3);
    node.Reserve(1000);
    EXPECT_EQ(node.Size(), 6u);
    EXPECT_EQ(node.At(1).AsString(), "kept");
    node.MakeCollection();
    EXPECT_EQ(node.Size(), 6u);

    node.SetSigned(12);
    node.Reserve(10);
    EXPECT_EQ(node.Kind(), Kind::Signed);
    EXPECT_TRUE(node.Member("name").IsEmpty());
    EXPECT_EQ(node.Kind(), Kind::Structure);
    EXPECT_EQ(node.Size(), 1u);
    EXPECT_EQ(node.AsInt64(-1), -1);
    node.MakeStructure();
    EXPECT_EQ(node.Size(), 1u);
}

TEST(BindingProperty, ReadsThatMissAnswerTheSharedEmptyNodeAndChangeNothing) {
    BindingProperty structure;
    structure.Member("a").SetSigned(1);
    EXPECT_EQ(&std::as_const(structure).At(0), &BindingProperty::EmptyNode());
    EXPECT_EQ(&std::as_const(structure).Member("b"), &BindingProperty::EmptyNode());
    EXPECT_EQ(structure.Kind(), Kind::Structure);
    BindingProperty collection;
    collection.At(0).SetSigned(1);
    EXPECT_EQ(&std::as_const(collection).Member("a"), &BindingProperty::EmptyNode());
    EXPECT_EQ(&std::as_const(collection).At(1), &BindingProperty::EmptyNode());
    EXPECT_EQ(collection.Size(), 1u);
    EXPECT_FALSE(collection.HasMember("a"));
    EXPECT_FALSE(collection.RemoveMember("a"));
    EXPECT_TRUE(BindingProperty::EmptyNode().IsEmpty());
}

TEST(BindingProperty, AnIndexBeyondAnyMemoryIsRefusedAndTheCollectionStaysUsable) {
    BindingProperty node;
    node.At(0).SetString("kept");
    EXPECT_THROW(node.At(std::numeric_limits<std::size_t>::max() - 1), std::bad_alloc);
    EXPECT_THROW(node.Reserve(std::numeric_limits<std::uint32_t>::max()), std::bad_alloc);
    EXPECT_EQ(node.Size(), 1u);
    EXPECT_EQ(node.At(0).AsString(), "kept");
    node.At(1).SetSigned(2);
    EXPECT_EQ(node.Size(), 2u);
}

TEST(BindingProperty, TypedReadsFollowTheKind) {
    BindingProperty node;
    node.SetUnsigned(std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(node.AsInt64(), -1);
    EXPECT_EQ(node.AsUInt64(), std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(node.AsDouble(1.5), 1.5);
    node.SetSigned(-3);
    EXPECT_EQ(node.AsUnsigned(8), 8u);
    EXPECT_EQ(node.AsUInt64(), static_cast<std::uint64_t>(-3));
    node.SetFloat(-2.9);
    EXPECT_EQ(node.AsInt64(), -2);
    node.SetFloat(0x1p63 + 0x1p62);
    EXPECT_EQ(node.AsUInt64(), 13835058055282163712u);
    node.SetFloat(1e300);
    EXPECT_EQ(node.AsInt64(), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(node.AsUInt64(), std::numeric_limits<std::uint64_t>::max());
    node.SetFloat(-1e300);
    EXPECT_EQ(node.AsInt64(), std::numeric_limits<std::int64_t>::min());
    node.SetString("12");
    EXPECT_EQ(node.AsInt64(7), 7);
    EXPECT_EQ(node.AsString("x"), "12");
    node.SetBool(true);
    EXPECT_EQ(node.AsString("x"), "x");
    EXPECT_TRUE(node.AsBlob().empty());
}

TEST(BindingProperty, ToBoolAndToStringOfEachKind) {
    const auto make = [](auto set) {
        BindingProperty node;
        set(node);
        return node;
    };
    const double largest = std::numeric_limits<double>::max();
    const struct {
        BindingProperty node;
        bool truth;
        std::string text;
    } rows[] = {
        {BindingProperty(), false, ""},
        {make([](BindingProperty& p) { p.SetBool(true); }), true, "true"},
        {make([](BindingProperty& p) { p.SetBool(false); }), false, "false"},
        {make([](BindingProperty& p) { p.SetSigned(std::numeric_limits<std::int64_t>::min()); }), true,
         "-9223372036854775808"},
        {make([](BindingProperty& p) { p.SetUnsigned(std::numeric_limits<std::uint64_t>::max()); }), true,
         "18446744073709551615"},
        {make([](BindingProperty& p) { p.SetUnsigned(0); }), false, "0"},
        {make([](BindingProperty& p) { p.SetFloat(-1234.56789); }), true, "-1234.567890"},
        {make([](BindingProperty& p) { p.SetFloat(1e20); }), true, "100000000000000000000.000000"},
        {make([](BindingProperty& p) { p.SetFloat(-0.0); }), false, "-0.000000"},
        {make([](BindingProperty& p) { p.SetFloat(std::nan("")); }), true, "nan"},
        {make([largest](BindingProperty& p) { p.SetFloat(largest); }), true, std::to_string(largest)},
        {make([](BindingProperty& p) { p.SetString("true"); }), true, "true"},
        {make([](BindingProperty& p) { p.SetString("1"); }), true, "1"},
        {make([](BindingProperty& p) { p.SetString("TRUE"); }), false, "TRUE"},
        {make([](BindingProperty& p) { p.SetString("11"); }), false, "11"},
        {make([](BindingProperty& p) { p.SetBlob(std::vector<std::uint8_t>{}); }), false, ""},
        {make([](BindingProperty& p) { p.SetBlob(std::vector<std::uint8_t>{0}); }), true, "AA=="},
        {make([](BindingProperty& p) {
             p.SetBlob(std::vector<std::uint8_t>{0xFB, 0xEF, 0xBE, 0x3E});
         }),
         true, "++++Pg=="},
        {make([](BindingProperty& p) { p.SetEnum(0, BindingTypeIdentity::Reserved()); }), false, "0"},
        {make([](BindingProperty& p) { p.SetEnum(-7, BindingTypeIdentity::Reserved()); }), true, "-7"},
        {make([](BindingProperty& p) { p.MakeCollection(); }), false, ""},
        {make([](BindingProperty& p) { p.Append(); }), true, ""},
        {make([](BindingProperty& p) { p.MakeStructure(); }), false, ""},
        {make([](BindingProperty& p) { p.Member("a").SetSigned(1); }), true, ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(row.node.ToBool(), row.truth);
        EXPECT_EQ(row.node.ToString(), row.text);
    }
}

TEST(EncodeBase64, ReadsOnlyTheBytesGiven) {
    const std::uint8_t bytes[] = {0xFF, 0xFF, 0xFF};
    EXPECT_EQ(EncodeBase64(std::span(bytes).first(1)), "/w==");
    EXPECT_EQ(EncodeBase64(std::span(bytes).first(2)), "//8=");
}

TEST(BindingProperty, NodesOfOneTreeWithTheSameTextShareOneCountedEntryAndTheEmptyTextNone) {
    BindingProperty tree;
    tree.At(0).SetString("GOLD");
    tree.At(1).SetString("GOLD");
    tree.At(2).Member("GOLD").SetString("GOLD");
    tree.At(2).Member("GOLD");  // found, so its name is not counted again
    const StringEntry* entry = EntryOf(tree.At(0));
    EXPECT_EQ(EntryOf(tree.At(1)), entry);
    EXPECT_EQ(entry->references, 4u);  // the member name counts too
    tree.At(1).Reset();
    EXPECT_EQ(entry->references, 3u);
    tree.At(2).RemoveMember("GOLD");
    EXPECT_EQ(entry->references, 1u);
    BindingProperty other;
    other.SetString("GOLD");
    EXPECT_NE(EntryOf(other), entry);
    other.SetString(static_cast<const char*>(nullptr));
    EXPECT_EQ(other.Kind(), Kind::String);
    EXPECT_EQ(EntryOf(other), StringEntry::Empty());
    tree.At(3).SetString(std::string());
    EXPECT_EQ(EntryOf(tree.At(3)), StringEntry::Empty());
}

// Setters copy what they are given before the old value goes: it may lie in the same tree.
TEST(BindingProperty, SettersTakeTextsAndBytesFromTheirOwnTree) {
    std::vector<std::uint8_t> bytes = {9, 8};
    const std::uint8_t* storage = bytes.data();
    BindingProperty node;
    node.At(0).SetBlob(std::move(bytes));
    EXPECT_EQ(node.At(0).AsBlob().data(), storage);
    node.SetBlob(node.At(0).AsBlob());
    EXPECT_EQ(node.Size(), 2u);
    EXPECT_EQ(node.AsBlob()[1], 8);
    node.Member("text").SetString("kept text");
    node.SetString(node.Member("text").AsString());
    EXPECT_EQ(node.AsString(), "kept text");
    node.Member("child").SetError("inner message");
    node.SetError(node.Member("child").GetError());
    EXPECT_EQ(node.GetError(), "inner message");
}

TEST(BindingProperty, CopyIsDeepAndIndependentAndCarriesTheValidFlag) {
    BindingProperty original;
    original.Member("name").SetString("Ahri");
    original.Member("list").At(1).SetBlob(std::vector<std::uint8_t>{5});
    original.Member("rank").SetEnum(2, BindingTypeIdentity::Make(0xAB));
    BindingProperty copy(original);
    copy.Member("name").SetString("Zed");
    copy.Member("list").At(1).Reset();
    EXPECT_EQ(original.Member("name").AsString(), "Ahri");
    EXPECT_EQ(original.Member("list").At(1).Size(), 1u);
    EXPECT_EQ(copy.Member("rank").EnumValue(), 2);
    EXPECT_EQ(copy.Member("rank").EnumTypeId(), 0xABu);
    EXPECT_EQ(copy.Member("list").Size(), 2u);

    BindingProperty failed;
    failed.SetError("broken");
    copy = failed;
    EXPECT_FALSE(copy.IsValid());
    EXPECT_EQ(copy.GetError(), "broken");
    copy = BindingProperty();
    EXPECT_TRUE(copy.IsValid());
    EXPECT_TRUE(copy.IsEmpty());
}

TEST(BindingProperty, CopiesAndMovesBetweenANodeAndItselfItsDescendantsOrAncestors) {
    BindingProperty root;
    root.Member("inner").Member("leaf").SetString("deep");
    BindingProperty& same = root;
    root = same;
    root = std::move(same);
    root = root.Member("inner");
    EXPECT_EQ(root.Size(), 1u);
    EXPECT_EQ(root.Member("leaf").AsString(), "deep");
    // The right side is read first, so it already has the new, empty member "self".
    root.Member("self") = root;
    const BindingProperty& copy = std::as_const(root).Member("self");
    EXPECT_EQ(copy.Member("leaf").AsString(), "deep");
    EXPECT_EQ(copy.Size(), 2u);
    EXPECT_TRUE(copy.Member("self").IsEmpty());
    root = std::move(root.Member("self"));
    EXPECT_EQ(root.Size(), 2u);
    EXPECT_EQ(root.Member("leaf").AsString(), "deep");
}

TEST(BindingProperty, MovingBetweenRootsHandsTheTreeOverWithoutCopying) {
    BindingProperty source;
    source.Member("name").SetString("moved");
    const char* text = source.Member("name").AsString().data();
    BindingProperty target;
    target.SetSigned(1);
    target = std::move(source);
    EXPECT_EQ(target.Member("name").AsString().data(), text);
    EXPECT_TRUE(source.IsEmpty());
    BindingProperty constructed(std::move(target));
    EXPECT_EQ(constructed.Member("name").AsString().data(), text);
    EXPECT_TRUE(target.IsEmpty());
}

TEST(BindingProperty, MovingANodeOfATreeCopiesItAndResetsIt) {
    BindingProperty tree;
    tree.Member("a").Member("b").SetString("value");
    BindingProperty taken(std::move(tree.Member("a")));
    EXPECT_EQ(taken.Member("b").AsString(), "value");
    EXPECT_TRUE(tree.Member("a").IsEmpty());
    EXPECT_TRUE(tree.HasMember("a"));
    tree.Member("c").SetSigned(3);
    BindingProperty other;
    other.At(0) = std::move(tree.Member("c"));
    EXPECT_EQ(other.At(0).AsInt64(), 3);
    EXPECT_TRUE(tree.Member("c").IsEmpty());
}

TEST(BindingProperty, SetErrorLeavesAFailedStructureWithTheMessageUntilMarkedValid) {
    BindingProperty result;
    result.Member("error").SetString("not an error while valid");
    EXPECT_EQ(result.GetError(), "");
    result.At(3).SetString("content");
    result.SetError("Something failed");
    EXPECT_FALSE(result.IsValid());
    EXPECT_EQ(result.Kind(), Kind::Structure);
    EXPECT_EQ(result.Size(), 1u);
    EXPECT_EQ(result.Member("error").AsString(), "Something failed");
    result.Member("error").SetSigned(5);
    EXPECT_EQ(result.GetError(), "");
    result.Reset();
    EXPECT_TRUE(result.IsEmpty());
    EXPECT_FALSE(result.IsValid());  // a reset keeps the flag
    result.MarkValid();
    EXPECT_TRUE(result.IsValid());
}

TEST(BindingProperty, AppendAndElementsWalkACollection) {
    BindingProperty node;
    node.Append().SetSigned(1);
    node.Append().SetString("two");
    node.Append();
    ASSERT_EQ(node.Elements().size(), 3u);
    EXPECT_EQ(node.Elements()[1].AsString(), "two");
    EXPECT_TRUE(node.Elements()[2].IsEmpty());
    node.SetBool(true);
    EXPECT_TRUE(node.Elements().empty());
    EXPECT_EQ(node.Members().begin(), node.Members().end());
}

// Nodes are released and copied without recursion, however deep the tree.
TEST(BindingProperty, AMillionLevelsAreCopiedAndReleasedWithoutRecursion) {
    constexpr int kDepth = 1000000;
    BindingProperty source;
    BindingProperty* node = &source;
    for (int level = 0; level < kDepth; ++level) {
        node = level % 2 == 0 ? &node->Member("next") : &node->At(0);
    }
    node->SetSigned(1);
    BindingProperty target;
    target.At(2) = source;
    const BindingProperty* walk = &target.At(2);
    for (int level = 0; level < kDepth; ++level) {
        walk = level % 2 == 0 ? &walk->Member("next") : &walk->At(0);
    }
    EXPECT_EQ(walk->AsInt64(), 1);
    target.At(2).Member("next").Reset();
    target.Member("deep") = source;
    target.RemoveMember("deep");
    EXPECT_EQ(target.Size(), 0u);
    source.Reset();
    EXPECT_TRUE(source.IsEmpty());
}

}  // namespace
}  // namespace wex
