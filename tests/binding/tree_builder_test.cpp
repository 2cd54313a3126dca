#include "binding/tree_builder.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "codec/json_writer.h"
#include "support/case_table.h"
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
    for (const auto& row : tav::test::ReadCaseTable(__FILE__, "tree_builder_scripts.tsv", 2)) {
        SCOPED_TRACE(row[0]);
        BindingProperty root;
        BindingTreeBuilder builder(root);
        Play(builder, row[0]);
        EXPECT_EQ(builder.Depth(), 0u);
        EXPECT_EQ(WriteJson(root), row[1]);
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
    // A key replaced by the next one before its value is dropped too.
    Play(builder, "k:a { k:inner 'dropped } k:a 'dropped k:spare k:a 'last }");
    root.Member("d").SetString("dropped");
    EXPECT_EQ(EntryOf(root.Member("d"))->references, 1u);
    root.Member("e").SetString("spare");
    EXPECT_EQ(EntryOf(root.Member("e"))->references, 1u);
    EXPECT_EQ(EntryOf(root.Member("a"))->references, 1u);
}

// A built collection holds its elements in its own record until it grows;
// at 100 elements that record is past the pool's largest size class.
TEST(BindingTreeBuilder, ACollectionGrowsPastTheRoomItWasBuiltWith) {
    for (const int count : {2, 100}) {
        SCOPED_TRACE(count);
        std::string script = "[";
        std::string json = "[";
        for (int index = 0; index <= count; ++index) {
            script += index < count ? " " + std::to_string(index) : " ]";
            json += std::to_string(index) + (index < count ? "," : "]");
        }
        BindingProperty root;
        BindingTreeBuilder builder(root);
        Play(builder, script);
        root.At(count).SetSigned(count);
        EXPECT_EQ(WriteJson(root), json);
        const BindingProperty copy(root);
        EXPECT_EQ(WriteJson(copy), json);
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
