#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <string_view>

#include "binding/property.h"

namespace wex {
namespace {

using namespace std::string_literals;

// Names that tie on their first eight bytes, on all sixteen, or only on a
// zero byte after the text, next to ones that are found.
TEST(MemberSeeker, FindsNamesAskedForInAscendingOrder) {
    BindingProperty node;
    for (const std::string& name : {""s, "a"s, "a\0"s, "playerOrTeamId"s, "playerOrTeamName"s, "wins"s,
                                    "zzzzzzzzzzzzzzzzzzzz"s}) {
        node.Member(name).SetString(name);
    }
    const struct {
        std::string name;
        bool found;
    } asked[] = {{""s, true},
                 {"a"s, true},
                 {"a\0"s, true},
                 {"a\0\0"s, false},
                 {"aa"s, false},
                 {"playerOrTeam"s, false},
                 {"playerOrTeamId"s, true},
                 {"playerOrTeamId"s, true},  // a name asked for twice
                 {"playerOrTeamName"s, true},
                 {"playerOrTeamNames"s, false},
                 {"w"s, false},
                 {"wins"s, true},
                 {"zzzzzzzzzzzzzzzzzzz"s, false},
                 {"zzzzzzzzzzzzzzzzzzzz"s, true},
                 {"zzzzzzzzzzzzzzzzzzzzz"s, false}};
    BindingMemberSeeker seeker(node);
    for (const auto& [name, found] : asked) {
        SCOPED_TRACE("name \"" + name + "\" of " + std::to_string(name.size()) + " bytes");
        const BindingProperty* member = seeker.Seek(name);
        if (found) {
            ASSERT_EQ(member, &node.Member(std::string_view(name)));
            EXPECT_EQ(member->AsString(), name);
        } else {
            EXPECT_EQ(member, nullptr);
        }
    }
}

// Past the first chunk of members, and past every member.
TEST(MemberSeeker, WalksAcrossChunksToTheEnd) {
    BindingProperty node;
    char name[16];
    for (int index = 0; index < 3000; ++index) {
        std::snprintf(name, sizeof name, "m%05d", index);
        node.Member(name).SetSigned(index);
    }
    BindingMemberSeeker seeker(node);
    for (int index = 0; index < 3000; index += 7) {
        std::snprintf(name, sizeof name, "m%05d", index);
        const BindingProperty* member = seeker.Seek(name);
        ASSERT_NE(member, nullptr) << name;
        EXPECT_EQ(member->AsInt64(), index);
    }
    EXPECT_EQ(seeker.Seek("m99999"), nullptr);
    EXPECT_EQ(seeker.Seek("n"), nullptr);
}

TEST(MemberSeeker, FindsNothingInAnythingButAStructure) {
    BindingProperty collection;
    collection.Append().SetString("a");
    BindingMemberSeeker inCollection(collection);
    EXPECT_EQ(inCollection.Seek("a"), nullptr);
    const BindingProperty empty;
    BindingMemberSeeker inEmpty(empty);
    EXPECT_EQ(inEmpty.Seek(""), nullptr);
}

}  // namespace
}  // namespace wex
