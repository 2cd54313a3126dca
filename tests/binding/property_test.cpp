#include "binding/property.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <new>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "binding/string_entry.h"
#include "codec/json_reader.h"
#include "support/case_table.h"
#include "tree_views.h"

namespace wex {
namespace {

using Kind = BindingPropertyKind;

// A node of the kind named, from its text: a float, the bytes of a blob, an enumerator, or the JSON of any other
// kind; "-" is the empty text.
BindingProperty NodeOf(const std::string& kind, const std::string& text) {
    const std::string value = text == "-" ? "" : text;
    BindingProperty node;
    if (kind == "float") {
        node.SetFloat(std::stod(value));
    } else if (kind == "blob") {
        node.SetBlob(std::span(reinterpret_cast<const std::uint8_t*>(value.data()), value.size()));
    } else if (kind == "enum") {
        node.SetEnum(std::stoi(value), BindingTypeIdentity::Reserved());
    } else if (kind != "empty") {
        node = ParseJson(value);
    }
    return node;
}

// Kind names show in the failures of scalar conversions and in tree pictures of the other tests.
TEST(BindingProperty, EveryReadOfEachKindAsTheCasesList) {
    for (const auto& row : tav::test::ReadCaseTable(__FILE__, "property_reads.tsv", 11)) {
        SCOPED_TRACE(row[0] + " " + row[1]);
        const BindingProperty node = NodeOf(row[0], row[1]);
        const auto shown = [](std::string_view text) { return text.empty() ? "-" : std::string(text); };
        std::ostringstream reads;
        reads << BindingPropertyKindName(node.Kind()) << ' ' << node.Size() << ' ' << node.ToBool() << ' '
              << shown(node.ToString()) << ' ' << node.AsInt64(7) << ' ' << node.AsUInt64(8) << ' '
              << node.AsUnsigned(9) << ' ' << node.AsDouble(1.5) << ' ' << shown(node.AsString("x")) << ' '
              << node.AsBlob().size();
        std::string expected = row[0];
        for (std::size_t column = 2; column < row.size(); ++column) {
            expected += ' ' + row[column];
        }
        EXPECT_EQ(reads.str(), expected);
    }
    EXPECT_EQ(BindingPropertyKindName(static_cast<Kind>(10)), "");
    const double largest = std::numeric_limits<double>::max();
    EXPECT_EQ(NodeOf("float", std::to_string(largest)).ToString(), std::to_string(largest));
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
    tree.At(4).SetString("GOLD");
    tree.At(4).SetString("SILVER");  // a text set over another lets the old one go
    EXPECT_EQ(entry->references, 1u);
    tree.At(5).At(0).SetString("GOLD");
    tree.At(5).Reset();  // a collection lets its elements' texts go
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
    EXPECT_TRUE(std::ranges::equal(std::as_const(copy).Member("list").At(1).AsBlob(), std::vector<std::uint8_t>{5}));
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

// A root holding a blob or a text has heap parts of its own, which its copy must not share.
TEST(BindingProperty, ACopiedRootHoldsItsOwnBlobAndText) {
    BindingProperty blob;
    blob.SetBlob(std::vector<std::uint8_t>{7, 6});
    const BindingProperty blobCopy(blob);
    EXPECT_NE(blobCopy.AsBlob().data(), blob.AsBlob().data());
    EXPECT_TRUE(std::ranges::equal(blobCopy.AsBlob(), std::vector<std::uint8_t>{7, 6}));
    BindingProperty text;
    text.SetString("Ahri");
    const BindingProperty textCopy(text);
    EXPECT_NE(EntryOf(textCopy), EntryOf(text));
    EXPECT_EQ(textCopy.AsString(), "Ahri");
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

// A root hands its tree over without copying; a node of a tree is copied and reset.
TEST(BindingProperty, MovingHandsARootOverAndCopiesANodeOfATree) {
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
