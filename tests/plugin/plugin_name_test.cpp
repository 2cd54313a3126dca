#include "plugin/plugin_identity.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "plugin/app_module.h"
#include "support/hosted_module.h"

namespace wex {
namespace {

class NamedModule : public AppModule {
  public:
    NamedModule() : AppModule("tav-leagues") {}
};

// Started, so that log lines reach the simulated host.
class PluginNameTest : public ::testing::Test {
  protected:
    void SetUp() override { ASSERT_TRUE(hosted.Start()); }

    tav::test::HostedModule<NamedModule> hosted;
};

TEST_F(PluginNameTest, TheTypeGivesThePrefix) {
    const struct {
        PluginType type;
        const char* fullName;
        std::size_t errorLines;
    } rows[] = {
        {kBackendPluginType, "wex-be-tav-leagues", 0},
        {kFrontendPluginType, "wex-fe-tav-leagues", 0},
        {{"backend", "any variant"}, "wex-be-tav-leagues", 0},
        {{"service", ""}, "wex-xx-tav-leagues", 1},
        {{"Backend", ""}, "wex-xx-tav-leagues", 1},
        {{"backend ", ""}, "wex-xx-tav-leagues", 1},
        {{"", ""}, "wex-xx-tav-leagues", 1},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.type.name);
        hosted.host().ClearRecords();
        EXPECT_EQ(GetFullNameFromShortNameAndType("tav-leagues", row.type), row.fullName);
        EXPECT_EQ(hosted.records().logLines.size(), row.errorLines);
    }
}

TEST_F(PluginNameTest, AnUnknownTypeIsLoggedAsAnError) {
    hosted.host().ClearRecords();
    EXPECT_EQ(GetFullNameFromShortNameAndType("tav-leagues", {"service", ""}), "wex-xx-tav-leagues");
    ASSERT_EQ(hosted.records().logLines.size(), 1u);
    EXPECT_EQ(hosted.records().logLines[0].level, 2);
    EXPECT_THAT(hosted.records().logLines[0].text,
                ::testing::EndsWith("|  ERROR| DBG|             Plugin Manager| GetFullNameFromShortNameAndType("
                                    "\"tav-leagues\", \"service\") called with an unknown type\n"));
}

TEST_F(PluginNameTest, MakePluginNameKeepsTheTypeAndItsVariant) {
    const PluginName name = MakePluginName("tav-leagues", {"frontend", "beta"});
    EXPECT_EQ(name.fullName, "wex-fe-tav-leagues");
    EXPECT_EQ(name.shortName, "tav-leagues");
    EXPECT_EQ(name.typeName, "frontend");
    EXPECT_EQ(name.typeVariant, "beta");
}

}  // namespace
}  // namespace wex
