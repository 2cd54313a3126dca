#include "binding/property.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "binding/string_entry.h"

namespace wex {
namespace {

using Kind = BindingPropertyKind;

const StringEntry* EntryOf(const BindingProperty& node) {
    return reinterpret_cast<const StringEntry*>(node.AsString().data()) - 1;
}

TEST(BindingPropertyKind, NamesEveryKindAndNothingElse) {
    const std::vector<std::string_view> names = {"empty",  "bool", "signed", "unsigned",   "float",
                                                 "string", "blob", "enum",   "collection", "structure"};
    for (std::size_t value = 0; value < names.size(); ++value) {
        EXPECT_EQ(BindingPropertyKindName(static_cast<Kind>(value)), names[value]);
    }
    EXPECT_EQ(BindingPropertyKindName(static_cast<Kind>(10)), "");
    EXPECT_EQ(BindingPropertyKindName(static_cast<Kind>(255)), "");
}

TEST(BindingProperty, ANewNodeIsEmptyAndValid) {
    BindingProperty node;
    EXPECT_EQ(node.Kind(), Kind::Empty);
    EXPECT_TRUE(node.IsEmpty());
    EXPECT_TRUE(node.IsValid());
    EXPECT_EQ(node.Size(), 0u);
    EXPECT_EQ(node.ToString(), "");
    EXPECT_FALSE(node.ToBool());
}

TEST(BindingProperty, SizeCountsBytesElementsAndMembers) {
    BindingProperty node;
    node.SetString("four");
    EXPECT_EQ(node.Size(), 4u);
    node.SetBlob(std::vector<std::uint8_t>(3));
    EXPECT_EQ(node.Size(), 3u);
    node.At(2);
    EXPECT_EQ(node.Size(), 3u);
    node.Member("x");
    EXPECT_EQ(node.Size(), 1u);
    for (auto set : {+[](BindingProperty& p) { p.SetBool(false); }, +[](BindingProperty& p) { p.SetSigned(0); },
                     +[](BindingProperty& p) { p.SetFloat(0); },
                     +[](BindingProperty& p) { p.SetEnum(0, BindingTypeIdentity::Reserved()); }}) {
        set(node);
        EXPECT_EQ(node.Size(), 1u);
    }
}

TEST(BindingProperty, WritingAtIndexFiveOfAnEmptyNodeMakesSixEmptyElements) {
    BindingProperty node;
    node.At(5).SetSigned(9);
    ASSERT_EQ(node.Kind(), Kind::Collection);
    ASSERT_EQ(node.Size(), 6u);
    for (std::size_t index = 0; index < 5; ++index) {
        EXPECT_TRUE(node.At(index).IsEmpty());
    }
    EXPECT_EQ(std::as_const(node).At(5).AsInt64(), 9);
    node.At(1).SetString("kept");
    node.At(3);
    EXPECT_EQ(node.Size(), 6u);
    EXPECT_EQ(node.At(1).AsString(), "kept");
}

TEST(BindingProperty, WritingAMemberOfANumberMakesAStructureWithThatMemberAlone) {
    BindingProperty node;
    node.SetSigned(12);
    BindingProperty& member = node.Member("name");
    EXPECT_TRUE(member.IsEmpty());
    EXPECT_EQ(node.Kind(), Kind::Structure);
    EXPECT_EQ(node.Size(), 1u);
    EXPECT_TRUE(node.HasMember("name"));
    EXPECT_EQ(node.AsInt64(-1), -1);
}

TEST(BindingProperty, ReadsThatMissAnswerTheSharedEmptyNodeAndChangeNothing) {
    BindingProperty structure;
    structure.Member("a").SetSigned(1);
    const BindingProperty& readStructure = structure;
    EXPECT_EQ(&readStructure.At(0), &BindingProperty::EmptyNode());
    EXPECT_EQ(&readStructure.Member("b"), &BindingProperty::EmptyNode());
    EXPECT_EQ(structure.Kind(), Kind::Structure);
    EXPECT_EQ(structure.Size(), 1u);

    BindingProperty collection;
    collection.At(0).SetSigned(1);
    const BindingProperty& readCollection = collection;
    EXPECT_EQ(&readCollection.Member("a"), &BindingProperty::EmptyNode());
    EXPECT_EQ(&readCollection.At(1), &BindingProperty::EmptyNode());
    EXPECT_EQ(collection.Kind(), Kind::Collection);
    EXPECT_EQ(collection.Size(), 1u);
    EXPECT_FALSE(collection.HasMember("a"));
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

TEST(BindingProperty, MakeCollectionAndMakeStructureKeepWhatIsAlreadyThere) {
    BindingProperty node;
    node.At(0).SetSigned(1);
    node.MakeCollection();
    EXPECT_EQ(node.Size(), 1u);
    node.MakeStructure();
    EXPECT_EQ(node.Kind(), Kind::Structure);
    EXPECT_EQ(node.Size(), 0u);
    node.Member("a");
    node.MakeStructure();
    EXPECT_EQ(node.Size(), 1u);
}

TEST(BindingProperty, ReserveKeepsTheElementsAndIgnoresOtherKinds) {
    BindingProperty node;
    node.At(1).SetString("b");
    node.Reserve(1000);
    EXPECT_EQ(node.Size(), 2u);
    EXPECT_EQ(node.At(1).AsString(), "b");
    BindingProperty number;
    number.SetSigned(4);
    number.Reserve(10);
    EXPECT_EQ(number.Kind(), Kind::Signed);
}

TEST(BindingProperty, TypedReadsFollowTheKind) {
    BindingProperty node;
    node.SetUnsigned(std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(node.AsInt64(), -1);
    EXPECT_EQ(node.AsUInt64(), std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(node.AsUnsigned(), std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(node.AsDouble(1.5), 1.5);

    node.SetSigned(-3);
    EXPECT_EQ(node.AsUnsigned(8), 8u);
    EXPECT_EQ(node.AsUInt64(), static_cast<std::uint64_t>(-3));

    node.SetFloat(-2.9);
    EXPECT_EQ(node.AsInt64(), -2);
    EXPECT_EQ(node.AsDouble(), -2.9);
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
    EXPECT_EQ(node.AsInt64(7), 7);
    EXPECT_TRUE(node.AsBlob().empty());
}

TEST(BindingProperty, ToBoolOfStringsIsTrueOnlyForTrueAndOne) {
    const struct {
        const char* text;
        bool expected;
    } rows[] = {{"true", true}, {"1", true}, {"TRUE", false},  {"yes", false},
                {"0", false},   {"", false}, {"true ", false}, {"11", false}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        BindingProperty node;
        node.SetString(row.text);
        EXPECT_EQ(node.ToBool(), row.expected);
    }
}

TEST(BindingProperty, ToBoolOfOtherKinds) {
    BindingProperty node;
    node.SetBool(false);
    EXPECT_FALSE(node.ToBool());
    node.SetSigned(-1);
    EXPECT_TRUE(node.ToBool());
    node.SetUnsigned(0);
    EXPECT_FALSE(node.ToBool());
    node.SetFloat(std::nan(""));
    EXPECT_TRUE(node.ToBool());
    node.SetFloat(-0.0);
    EXPECT_FALSE(node.ToBool());
    node.SetBlob(std::vector<std::uint8_t>{});
    EXPECT_FALSE(node.ToBool());
    node.SetBlob(std::vector<std::uint8_t>{0});
    EXPECT_TRUE(node.ToBool());
    node.SetEnum(0, BindingTypeIdentity::Reserved());
    EXPECT_FALSE(node.ToBool());
    node.MakeCollection();
    EXPECT_FALSE(node.ToBool());
    node.Append();
    EXPECT_TRUE(node.ToBool());
    node.MakeStructure();
    EXPECT_FALSE(node.ToBool());
    node.Member("m");
    EXPECT_TRUE(node.ToBool());
}

TEST(BindingProperty, ToStringWritesEachKind) {
    BindingProperty node;
    const auto text = [&node](auto set) {
        set(node);
        return node.ToString();
    };
    EXPECT_EQ(text([](BindingProperty& p) { p.SetBool(true); }), "true");
    EXPECT_EQ(text([](BindingProperty& p) { p.SetBool(false); }), "false");
    EXPECT_EQ(text([](BindingProperty& p) { p.SetSigned(std::numeric_limits<std::int64_t>::min()); }),
              "-9223372036854775808");
    EXPECT_EQ(text([](BindingProperty& p) { p.SetUnsigned(std::numeric_limits<std::uint64_t>::max()); }),
              "18446744073709551615");
    EXPECT_EQ(text([](BindingProperty& p) { p.SetFloat(0.5); }), "0.500000");
    EXPECT_EQ(text([](BindingProperty& p) { p.SetFloat(-1234.56789); }), "-1234.567890");
    EXPECT_EQ(text([](BindingProperty& p) { p.SetFloat(1e20); }), "100000000000000000000.000000");
    EXPECT_EQ(text([](BindingProperty& p) { p.SetString("as is"); }), "as is");
    EXPECT_EQ(text([](BindingProperty& p) { p.SetBlob(std::vector<std::uint8_t>{0x00, 0x01}); }), "AAE=");
    EXPECT_EQ(text([](BindingProperty& p) { p.SetBlob(std::vector<std::uint8_t>{0xFF}); }), "/w==");
    EXPECT_EQ(text([](BindingProperty& p) { p.SetBlob(std::vector<std::uint8_t>{'a', 'b', 'c'}); }), "YWJj");
    EXPECT_EQ(text([](BindingProperty& p) {
                  p.SetBlob(std::vector<std::uint8_t>{0xFB, 0xEF, 0xBE, 0x3E});
              }),
              "++++Pg==");
    EXPECT_EQ(text([](BindingProperty& p) { p.SetEnum(-7, BindingTypeIdentity::Reserved()); }), "-7");
    EXPECT_EQ(text([](BindingProperty& p) { p.At(0).SetSigned(1); }), "");
    EXPECT_EQ(text([](BindingProperty& p) { p.Member("a").SetSigned(1); }), "");
    const double largest = std::numeric_limits<double>::max();
    EXPECT_EQ(text([largest](BindingProperty& p) { p.SetFloat(largest); }).size(), 316u);
}

TEST(BindingProperty, SettingTheEmptyTextUsesTheSharedEntry) {
    BindingProperty node;
    node.SetString("");
    EXPECT_EQ(node.Kind(), Kind::String);
    EXPECT_EQ(EntryOf(node), StringEntry::Empty());
    node.SetString(static_cast<const char*>(nullptr));
    EXPECT_EQ(EntryOf(node), StringEntry::Empty());
    node.At(3).SetString(std::string());
    EXPECT_EQ(EntryOf(node.At(3)), StringEntry::Empty());
}

TEST(BindingProperty, NodesOfOneTreeWithTheSameTextShareOneCountedEntry) {
    BindingProperty tree;
    tree.At(0).SetString("GOLD");
    tree.At(1).SetString("GOLD");
    tree.At(2).Member("GOLD").SetString("GOLD");
    const StringEntry* entry = EntryOf(tree.At(0));
    EXPECT_EQ(EntryOf(tree.At(1)), entry);
    EXPECT_EQ(entry->references, 4u);  // the member name counts too
    tree.At(1).Reset();
    EXPECT_EQ(entry->references, 3u);
    tree.At(2).Reset();
    EXPECT_EQ(entry->references, 1u);

    BindingProperty other;
    other.SetString("GOLD");
    EXPECT_NE(EntryOf(other), entry);
}

TEST(BindingProperty, SetBlobCopiesOrTakesTheBytes) {
    std::vector<std::uint8_t> bytes = {1, 2, 3};
    BindingProperty node;
    node.SetBlob(std::span<const std::uint8_t>(bytes));
    EXPECT_EQ(bytes.size(), 3u);
    const std::uint8_t* storage = bytes.data();
    node.SetBlob(std::move(bytes));
    EXPECT_TRUE(bytes.empty());
    EXPECT_EQ(node.AsBlob().data(), storage);
    EXPECT_EQ(std::vector<std::uint8_t>(node.AsBlob().begin(), node.AsBlob().end()),
              (std::vector<std::uint8_t>{1, 2, 3}));
}

TEST(BindingProperty, SettersAcceptTextsAndBytesFromTheirOwnTree) {
    BindingProperty node;
    node.Member("text").SetString("kept text");
    node.SetString(node.Member("text").AsString());
    EXPECT_EQ(node.AsString(), "kept text");

    node.At(0).SetBlob(std::vector<std::uint8_t>{9, 8});
    node.SetBlob(node.At(0).AsBlob());
    EXPECT_EQ(node.Size(), 2u);
    EXPECT_EQ(node.AsBlob()[1], 8);
}

TEST(BindingProperty, CopyIsDeepAndIndependent) {
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
}

TEST(BindingProperty, CopyAssignmentCarriesTheValidFlag) {
    BindingProperty failed;
    failed.SetError("broken");
    BindingProperty target;
    target.SetSigned(1);
    target = failed;
    EXPECT_FALSE(target.IsValid());
    EXPECT_EQ(target.GetError(), "broken");
    BindingProperty good;
    target = good;
    EXPECT_TRUE(target.IsValid());
    EXPECT_TRUE(target.IsEmpty());
}

TEST(BindingProperty, AssigningANodeToItselfChangesNothing) {
    BindingProperty node;
    node.Member("a").SetString("x");
    BindingProperty& same = node;
    node = same;
    EXPECT_EQ(node.Member("a").AsString(), "x");
    node = std::move(same);
    EXPECT_EQ(node.Member("a").AsString(), "x");
}

TEST(BindingProperty, CopiesBetweenANodeAndItsOwnDescendantsOrAncestors) {
    BindingProperty root;
    root.Member("inner").Member("leaf").SetString("deep");
    root = root.Member("inner");
    EXPECT_EQ(root.Size(), 1u);
    EXPECT_EQ(root.Member("leaf").AsString(), "deep");

    // The right side is read first, so it already has the new, empty member "self".
    root.Member("self") = root;
    const BindingProperty& copy = std::as_const(root).Member("self");
    EXPECT_EQ(copy.Member("leaf").AsString(), "deep");
    EXPECT_EQ(copy.Size(), 2u);
    EXPECT_TRUE(copy.Member("self").IsEmpty());
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

    tree = std::move(tree.Member("a"));
    EXPECT_TRUE(tree.IsEmpty());  // "a" had been emptied by the first move
}

TEST(BindingProperty, SetErrorLeavesAFailedStructureWithTheMessage) {
    BindingProperty result;
    result.At(3).SetString("content");
    result.SetError("Something failed");
    EXPECT_FALSE(result.IsValid());
    EXPECT_EQ(result.Kind(), Kind::Structure);
    EXPECT_EQ(result.Size(), 1u);
    EXPECT_EQ(result.GetError(), "Something failed");
    EXPECT_EQ(result.Member("error").AsString(), "Something failed");
}

TEST(BindingProperty, SetErrorTakesAMessageFromItsOwnTree) {
    BindingProperty result;
    result.Member("child").SetError("inner message");
    result.SetError(result.Member("child").GetError());
    EXPECT_EQ(result.GetError(), "inner message");
}

TEST(BindingProperty, GetErrorIsEmptyWhenValidOrWhenTheErrorIsNotAString) {
    BindingProperty result;
    result.Member("error").SetString("not an error while valid");
    EXPECT_EQ(result.GetError(), "");
    result.SetError("x");
    result.Member("error").SetSigned(5);
    EXPECT_FALSE(result.IsValid());
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
    EXPECT_EQ(node.Elements()[0].AsInt64(), 1);
    EXPECT_EQ(node.Elements()[1].AsString(), "two");
    EXPECT_TRUE(node.Elements()[2].IsEmpty());
    BindingProperty scalar;
    scalar.SetBool(true);
    EXPECT_TRUE(scalar.Elements().empty());
    EXPECT_EQ(scalar.Members().begin(), scalar.Members().end());
}

}  // namespace
}  // namespace wex
