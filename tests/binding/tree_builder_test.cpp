#include "binding/tree_builder.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "binding/string_entry.h"

namespace wex {
namespace {

const StringEntry* EntryOf(const BindingProperty& node) {
    return reinterpret_cast<const StringEntry*>(node.AsString().data()) - 1;
}

std::vector<std::string> MemberNames(const BindingProperty& node) {
    std::vector<std::string> names;
    for (const BindingMember member : node.Members()) {
        names.emplace_back(member.name);
    }
    return names;
}

TEST(BindingTreeBuilder, AValueOutsideAnyContainerIsTheRoot) {
    BindingProperty root;
    BindingTreeBuilder builder(root);
    EXPECT_EQ(&builder.NextValue(), &root);
    builder.NextValue().SetString("alone");
    EXPECT_EQ(root.AsString(), "alone");
    EXPECT_EQ(builder.Depth(), 0u);
}

TEST(BindingTreeBuilder, ContainersTakeTheirValuesWhenTheyClose) {
    BindingProperty root;
    BindingTreeBuilder builder(root);
    builder.OpenStructure();
    EXPECT_TRUE(builder.ExpectsKey());
    builder.Key("list");
    EXPECT_FALSE(builder.ExpectsKey());
    builder.OpenCollection();
    EXPECT_EQ(builder.Depth(), 2u);
    EXPECT_FALSE(builder.ExpectsKey());
    builder.NextValue().SetSigned(-1);
    builder.NextValue();
    builder.NextValue().SetString("third");
    const BindingProperty& list = builder.Close();
    EXPECT_EQ(list.Size(), 3u);
    builder.Key("flag");
    builder.NextValue().SetBool(true);
    builder.Close();
    EXPECT_EQ(builder.Depth(), 0u);

    ASSERT_EQ(root.Kind(), BindingPropertyKind::Structure);
    EXPECT_EQ(MemberNames(root), (std::vector<std::string>{"flag", "list"}));
    EXPECT_TRUE(root.Member("flag").ToBool());
    const BindingProperty& elements = root.Member("list");
    ASSERT_EQ(elements.Size(), 3u);
    EXPECT_EQ(elements.At(0).AsInt64(), -1);
    EXPECT_TRUE(elements.At(1).IsEmpty());
    EXPECT_EQ(elements.At(2).AsString(), "third");
}

TEST(BindingTreeBuilder, EmptyContainersCloseEmpty) {
    BindingProperty root;
    BindingTreeBuilder builder(root);
    builder.OpenCollection();
    builder.OpenStructure();
    builder.Close();
    builder.OpenCollection();
    builder.Close();
    builder.Close();
    ASSERT_EQ(root.Size(), 2u);
    EXPECT_EQ(root.At(0).Kind(), BindingPropertyKind::Structure);
    EXPECT_EQ(root.At(0).Size(), 0u);
    EXPECT_EQ(root.At(1).Kind(), BindingPropertyKind::Collection);
    EXPECT_EQ(root.At(1).Size(), 0u);
}

// Of equal names the last value stays, whatever it is: a scalar, nothing, or
// a container that replaces one.
TEST(BindingTreeBuilder, MembersAreSortedAndTheLastOfEqualNamesStays) {
    BindingProperty root;
    BindingTreeBuilder builder(root);
    builder.OpenStructure();
    builder.Key("b");
    builder.NextValue().SetSigned(1);
    builder.Key("a");
    builder.OpenStructure();
    builder.Key("inner");
    builder.NextValue().SetString("dropped");
    builder.Close();
    builder.Key("c");
    builder.NextValue().SetString("kept");
    builder.Key("b");
    builder.NextValue().SetSigned(3);
    builder.Key("a");
    builder.NextValue().SetString("dropped");
    builder.Key("c");
    builder.NextValue();
    builder.Key("a");
    builder.NextValue().SetString("last");
    builder.Close();

    EXPECT_EQ(MemberNames(root), (std::vector<std::string>{"a", "b", "c"}));
    EXPECT_EQ(root.Member("a").AsString(), "last");
    EXPECT_EQ(root.Member("b").AsInt64(), 3);
    EXPECT_TRUE(root.Member("c").IsEmpty());
    // The dropped values gave their strings back, so "dropped" is interned anew.
    root.Member("d").SetString("dropped");
    EXPECT_EQ(EntryOf(root.Member("d"))->references, 1u);
    EXPECT_EQ(EntryOf(root.Member("a"))->references, 1u);
}

TEST(BindingTreeBuilder, ThousandsOfMembersInReverseOrderComeOutSortedAndStayWritable) {
    std::vector<std::string> names;
    for (int index = 0; index < 3000; ++index) {
        names.push_back("member" + std::to_string(100000 + index));
    }
    BindingProperty root;
    BindingTreeBuilder builder(root);
    builder.OpenStructure();
    for (auto name = names.rbegin(); name != names.rend(); ++name) {
        builder.Key(*name);
        builder.NextValue().SetString(*name);
    }
    builder.Close();
    ASSERT_EQ(MemberNames(root), names);
    for (const std::string& name : names) {
        ASSERT_EQ(std::as_const(root).Member(name).AsString(), name);
    }
    root.Member("member0").SetSigned(0);
    root.Member("member100500x").SetSigned(1);
    root.Member("member9").SetSigned(9);
    EXPECT_EQ(root.Size(), names.size() + 3);
    EXPECT_EQ(MemberNames(root).front(), "member0");
    EXPECT_EQ(MemberNames(root).back(), "member9");
    EXPECT_EQ(std::as_const(root).Member("member100500x").AsInt64(), 1);
    EXPECT_TRUE(root.RemoveMember("member101000"));
    EXPECT_FALSE(root.HasMember("member101000"));
}

TEST(BindingTreeBuilder, ThousandsOfMembersInOrderAndAManyElementCollection) {
    BindingProperty root;
    BindingTreeBuilder builder(root);
    builder.OpenCollection();
    builder.OpenStructure();
    for (int index = 0; index < 2000; ++index) {
        builder.Key("m" + std::to_string(10000 + index));
        builder.NextValue().SetSigned(index);
    }
    builder.Close();
    for (int index = 0; index < 5000; ++index) {
        builder.NextValue().SetSigned(index);
    }
    builder.Close();
    ASSERT_EQ(root.Size(), 5001u);
    EXPECT_EQ(root.At(0).Size(), 2000u);
    EXPECT_EQ(root.At(0).Member("m11999").AsInt64(), 1999);
    EXPECT_EQ(root.At(5000).AsInt64(), 4999);
}

TEST(BindingTreeBuilder, CloseAllKeepsWhatTheOpenContainersHold) {
    BindingProperty root;
    BindingTreeBuilder builder(root);
    builder.OpenCollection();
    builder.NextValue().SetSigned(1);
    builder.OpenStructure();
    builder.Key("x");
    builder.NextValue().SetSigned(2);
    builder.Key("unfilled");
    builder.CloseAll();
    EXPECT_EQ(builder.Depth(), 0u);
    ASSERT_EQ(root.Size(), 2u);
    EXPECT_EQ(root.At(0).AsInt64(), 1);
    EXPECT_EQ(MemberNames(root.At(1)), std::vector<std::string>{"x"});
}

TEST(BindingTreeBuilder, AFailedRootDropsThePartsBuiltSoFar) {
    BindingProperty root;
    {
        BindingTreeBuilder builder(root);
        builder.OpenStructure();
        builder.Key("a");
        builder.OpenCollection();
        builder.NextValue().SetString("partial");
        root.SetError("stopped");
    }
    EXPECT_FALSE(root.IsValid());
    EXPECT_EQ(root.GetError(), "stopped");
    EXPECT_EQ(MemberNames(root), std::vector<std::string>{"error"});
}

}  // namespace
}  // namespace wex
