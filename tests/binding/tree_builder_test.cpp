#include "binding/tree_builder.h"

#include <gtest/gtest.h>

#include <functional>
#include <sstream>
#include <string>
#include <vector>

#include "codec/json_writer.h"
#include "tree_views.h"

namespace wex {
namespace {

// Plays a script on a builder: "{" and "[" open, "}" and "]" close, "." closes all, "k:NAME" is a key, "_" an
// empty value, "'TEXT" a string, "true" a boolean and anything else a signed number.
void Play(BindingTreeBuilder& builder, const std::string& script) {
    std::istringstream words(script);
    for (std::string word; words >> word;) {
        if (word == "{") {
            builder.OpenStructure();
        } else if (word == "[") {
            builder.OpenCollection();
        } else if (word == "}" || word == "]") {
            builder.Close();
        } else if (word == ".") {
            builder.CloseAll();
        } else if (word.starts_with("k:")) {
            builder.Key(word.substr(2));
        } else if (word == "_") {
            builder.NextValue();
        } else if (word[0] == '\'') {
            builder.NextValue().SetString(word.substr(1));
        } else if (word == "true") {
            builder.NextValue().SetBool(true);
        } else {
            builder.NextValue().SetSigned(std::stoll(word));
        }
    }
}

TEST(BindingTreeBuilder, BuildsTheTreeOfEachScript) {
    const struct {
        const char* script;
        const char* json;
    } rows[] = {
        {"{ k:list [ -1 _ 'third ] k:flag true }", R"({"flag":true,"list":[-1,null,"third"]})"},
        {"'alone [ { } [ ] ]", "[{},[]]"},
        // Of equal names the last value stays, whatever it is: a scalar, nothing, or a container that replaces one.
        {"{ k:b 1 k:a { k:inner 'dropped } k:c 'kept k:b 3 k:a 'dropped k:c _ k:a 'last }",
         R"({"a":"last","b":3,"c":null})"},
        {"[ 1 { k:x 2 k:unfilled .", R"([1,{"x":2}])"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.script);
        BindingProperty root;
        BindingTreeBuilder builder(root);
        Play(builder, row.script);
        EXPECT_EQ(builder.Depth(), 0u);
        EXPECT_EQ(WriteJson(root), row.json);
    }
}

TEST(BindingTreeBuilder, ReportsItsStateBetweenStepsAndGivesBackTheStringsOfDroppedValues) {
    BindingProperty root;
    BindingTreeBuilder builder(root);
    EXPECT_EQ(&builder.NextValue(), &root);
    builder.OpenStructure();
    EXPECT_TRUE(builder.ExpectsKey());
    builder.Key("list");
    EXPECT_FALSE(builder.ExpectsKey());
    builder.OpenCollection();
    EXPECT_EQ(builder.Depth(), 2u);
    EXPECT_FALSE(builder.ExpectsKey());
    Play(builder, "1 _ 3");
    EXPECT_EQ(builder.Close().Size(), 3u);
    Play(builder, "k:a { k:inner 'dropped } k:a 'dropped k:a 'last }");
    root.Member("d").SetString("dropped");
    EXPECT_EQ(EntryOf(root.Member("d"))->references, 1u);
    EXPECT_EQ(EntryOf(root.Member("a"))->references, 1u);
}

// Members in order and out of it, past one chunk; the sorting of names itself
// is checked in structure_order_test.cpp.
TEST(BindingTreeBuilder, ThousandsOfMembersComeOutSortedAndStayWritable) {
    const std::vector<std::string> names = NumberedNames(3000);
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
        structure.Member("m00500x").SetSigned(2);
        EXPECT_TRUE(structure.RemoveMember("m01000"));
        EXPECT_EQ(structure.Size(), names.size());
        EXPECT_EQ(MemberNames(structure)[501], "m00500x");
    }
}

TEST(BindingTreeBuilder, AFailedRootDropsThePartsBuiltSoFar) {
    BindingProperty root;
    {
        BindingTreeBuilder builder(root);
        Play(builder, "{ k:a [ 'partial");
        root.SetError("stopped");
    }
    EXPECT_FALSE(root.IsValid());
    EXPECT_EQ(root.GetError(), "stopped");
    EXPECT_EQ(MemberNames(root), std::vector<std::string>{"error"});
}

}  // namespace
}  // namespace wex
