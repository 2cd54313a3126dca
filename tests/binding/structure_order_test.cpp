#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "binding/fnv1a.h"
#include "binding/property.h"
#include "binding/tree_builder.h"
#include "tree_views.h"

namespace wex {
namespace {

// Members are kept in unsigned byte order, prefixes first. Names compare by their
// first eight bytes first: ties there, zero bytes that look like padding, and
// bytes above 0x7F must still sort by every byte.
TEST(StructureOrder, NamesAlikeInTheirFirstEightBytesSortByEveryByte) {
    using namespace std::literals;
    // Each name ends at a '|'; the last one is empty.
    const std::string_view list =
        "abcdefgh|abcdefghi|abcdefgg|abcdefgh\x01|abcdefg|abcdefg\0|abcdefg\0\0|abcdefg\x80|a\0|a|\0|\xFF|"
        "\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF|\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\0|abcdefghabcdefgh|abcdefghabcdefgi|"
        "abcdefghabcdefg|abcdefghabcdefg\0|abcdefghabcdefgh\0|abcdefgh\x80|abcdefghabcdefgh\xFF|"
        "abcdefghabcdefghabcdefgh|B|\xC3\xA9||"sv;
    std::vector<std::string> names;
    for (std::size_t start = 0, end; (end = list.find('|', start)) != std::string_view::npos; start = end + 1) {
        names.emplace_back(list.substr(start, end - start));
    }
    std::vector<std::string> sorted = names;
    std::sort(sorted.begin(), sorted.end());
    const std::vector<std::string> reversed(sorted.rbegin(), sorted.rend());
    for (const std::vector<std::string>& order : {names, sorted, reversed}) {
        BindingProperty node;
        for (const std::string& name : order) {
            node.Member(name).SetString(name);
        }
        for (const std::string& name : order) {
            node.Member(name);
        }
        ASSERT_EQ(MemberNames(node), sorted);
        for (const std::string& name : names) {
            SCOPED_TRACE(name);
            EXPECT_EQ(std::as_const(node).Member(name).AsString(), name);
        }
        EXPECT_FALSE(node.HasMember("abcdefg\0\0\0"s));
        EXPECT_FALSE(node.HasMember("abcdefgh\0"s));
        // A seeker finds the same when asked in ascending order, one name twice, among names it must not find.
        std::vector<std::string> asked = sorted;
        asked.insert(asked.end(), {"abcdefgh", "abcdefg\0\0\0"s, "abcdefgh\0"s, "abcdef", "abcdefghabcdefgha",
                                   "abcdefghabcdefghabcdefghi", "C", "\xFF\xFF"});
        std::sort(asked.begin(), asked.end());
        BindingMemberSeeker seeker(node);
        for (const std::string& name : asked) {
            SCOPED_TRACE(name);
            EXPECT_EQ(seeker.Seek(name), node.HasMember(name) ? &std::as_const(node).Member(name) : nullptr);
        }
    }
}

// Member by member, and through the builder, which sorts a structure's members when it closes; both past the
// first chunk of members, found by a seeker, and still writable, as are their copies.
TEST(StructureOrder, TenThousandMembersInAnyInsertionOrderComeOutSortedFindableAndCopied) {
    const std::vector<std::string> sorted = NumberedNames(10000);
    std::vector<std::string> shuffled = sorted;
    std::shuffle(shuffled.begin(), shuffled.end(), std::mt19937(42));
    std::vector<std::string> descending(sorted.rbegin(), sorted.rend());
    // Every other name first, then the ones in between: each lands inside a full chunk.
    std::vector<std::string> interleaved;
    for (std::size_t index = 0; index < sorted.size(); index += 2) {
        interleaved.push_back(sorted[index]);
    }
    for (std::size_t index = 1; index < sorted.size(); index += 2) {
        interleaved.push_back(sorted[index]);
    }
    const std::vector<std::string>* orders[] = {&sorted, &shuffled, &descending, &interleaved};
    for (const std::vector<std::string>* order : orders) {
        BindingProperty added;
        BindingProperty built;
        BindingTreeBuilder builder(built);
        builder.OpenStructure();
        for (const std::string& name : *order) {
            added.Member(name).SetString(name);
            builder.Key(name);
            builder.NextValue().SetString(name);
        }
        builder.Close();
        for (BindingProperty* node : {&added, &built}) {
            ASSERT_EQ(node->Size(), 10000u);
            BindingMemberSeeker seeker(*node);
            for (const std::string& name : sorted) {
                ASSERT_EQ(std::as_const(*node).Member(name).AsString(), name);
                ASSERT_EQ(seeker.Seek(name), &std::as_const(*node).Member(name));
            }
            EXPECT_EQ(seeker.Seek("m99999"), nullptr);
            EXPECT_FALSE(node->HasMember("m10000"));
            EXPECT_FALSE(node->HasMember("m"));
            ASSERT_EQ(MemberNames(*node), sorted);
            BindingProperty copy(*node);
            ASSERT_EQ(MemberNames(copy), sorted);
            for (const std::string& name : sorted) {
                ASSERT_EQ(std::as_const(copy).Member(name).AsString(), name);
            }
            EXPECT_FALSE(copy.HasMember("m10000"));
            copy.Member("m09999x");
            EXPECT_EQ(MemberNames(copy).back(), "m09999x");
            node->Member("m00500x").SetSigned(2);
            EXPECT_TRUE(node->RemoveMember("m01000"));
            EXPECT_EQ(MemberNames(*node)[501], "m00500x");
            // Past a removed last member, a name sorting before it goes last.
            EXPECT_TRUE(node->RemoveMember("m09999"));
            node->Member("m09998x");
            EXPECT_EQ(MemberNames(*node).back(), "m09998x");
        }
    }
}

}  // namespace
}  // namespace wex
