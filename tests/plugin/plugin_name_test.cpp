#include "plugin/plugin_identity.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "plugin/app_module.h"
#include "support/case_table.h"
#include "support/hosted_module.h"

namespace wex {
namespace {

class NamedModule : public AppModule {
  public:
    NamedModule() : AppModule("tav-leagues") {}
};

// Started, so that log lines reach the simulated host.
TEST(PluginName, TheTypeGivesThePrefixAndAnUnknownTypeIsLoggedAsAnError) {
    tav::test::HostedModule<NamedModule> hosted;
    ASSERT_TRUE(hosted.Start());
    for (const std::vector<std::string>& row : tav::test::ReadCaseTable(__FILE__, "plugin_names.tsv", 3)) {
        SCOPED_TRACE(row[0]);
        hosted.host().ClearRecords();
        EXPECT_EQ(GetFullNameFromShortNameAndType("tav-leagues", {row[0], row[1]}), row[2]);
        const auto& lines = hosted.records().logLines;
        if (row[2] != "wex-xx-tav-leagues") {
            EXPECT_TRUE(lines.empty());
            continue;
        }
        ASSERT_EQ(lines.size(), 1u);
        EXPECT_EQ(lines[0].level, 2);
        EXPECT_THAT(lines[0].text, ::testing::EndsWith("|  ERROR| DBG|             Plugin Manager| "
                                                       "GetFullNameFromShortNameAndType(\"tav-leagues\", \"" +
                                                       row[0] + "\") called with an unknown type\n"));
    }
    const PluginName name = MakePluginName("tav-leagues", {"frontend", "beta"});
    EXPECT_EQ(name.fullName, "wex-fe-tav-leagues");
    EXPECT_EQ(name.shortName, "tav-leagues");
    EXPECT_EQ(name.typeName, "frontend");
    EXPECT_EQ(name.typeVariant, "beta");
}

}  // namespace
}  // namespace wex
