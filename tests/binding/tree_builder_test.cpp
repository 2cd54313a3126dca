#include "binding/tree_builder.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "binding/string_entry.h"
#include "codec/json_writer.h"

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

    EXPECT_EQ(WriteJson(root), R"({"flag":true,"list":[-1,null,"third"]})");
}

TEST(BindingTreeBuilder, AValueOutsideAnyContainerIsTheRootAndEmptyContainersCloseEmpty) {
    BindingProperty root;
    BindingTreeBuilder builder(root);
    EXPECT_EQ(&builder.NextValue(), &root);
    builder.NextValue().SetString("alone");
    EXPECT_EQ(root.AsString(), "alone");
    builder.OpenCollection();
    builder.OpenStructure();
    builder.Close();
    builder.OpenCollection();
    builder.Close();
    builder.Close();
    EXPECT_EQ(WriteJson(root), "[{},[]]");
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

// Members in order and out of it, past one chunk; the sorting of names itself
// is checked in structure_order_test.cpp.
TEST(BindingTreeBuilder, ThousandsOfMembersComeOutSortedAndStayWritable) {
    std::vector<std::string> names;
    for (int index = 0; index < 3000; ++index) {
        names.push_back("member" + std::to_string(100000 + index));
    }
    BindingProperty root;
    BindingTreeBuilder builder(root);
    builder.OpenCollection();
    for (const bool reversed : {false, true}) {
        builder.OpenStructure();
        for (std::size_t index = 0; index < names.size(); ++index) {
            builder.Key(names[reversed ? names.size() - 1 - index : index]);
            builder.NextValue().SetSigned(1);
        }
        builder.Close();
    }
    builder.Close();
    for (BindingProperty& structure : {std::ref(root.At(0)), std::ref(root.At(1))}) {
        ASSERT_EQ(MemberNames(structure), names);
        structure.Member("member100500x").SetSigned(2);
        EXPECT_TRUE(structure.RemoveMember("member101000"));
        EXPECT_EQ(structure.Size(), names.size());
        EXPECT_EQ(MemberNames(structure)[501], "member100500x");
    }
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
