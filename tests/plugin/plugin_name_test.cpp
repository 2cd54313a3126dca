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
TEST(PluginName, TheTypeGivesThePrefixAndAnUnknownTypeIsLoggedAsAnError) {
    tav::test::HostedModule<NamedModule> hosted;
    ASSERT_TRUE(hosted.Start());
    const std::pair<PluginType, const char*> rows[] = {
        {kBackendPluginType, "wex-be-tav-leagues"},
        {kFrontendPluginType, "wex-fe-tav-leagues"},
        {{"backend", "any variant"}, "wex-be-tav-leagues"},
        {{"service", ""}, "wex-xx-tav-leagues"},
        {{"Backend", ""}, "wex-xx-tav-leagues"},
        {{"backend ", ""}, "wex-xx-tav-leagues"},
        {{"", ""}, "wex-xx-tav-leagues"},
    };
    for (const auto& [type, fullName] : rows) {
        SCOPED_TRACE(type.name);
        hosted.host().ClearRecords();
        EXPECT_EQ(GetFullNameFromShortNameAndType("tav-leagues", type), fullName);
        const auto& lines = hosted.records().logLines;
        if (std::string(fullName) != "wex-xx-tav-leagues") {
            EXPECT_TRUE(lines.empty());
            continue;
        }
        ASSERT_EQ(lines.size(), 1u);
        EXPECT_EQ(lines[0].level, 2);
        EXPECT_THAT(lines[0].text, ::testing::EndsWith("|  ERROR| DBG|             Plugin Manager| "
                                                       "GetFullNameFromShortNameAndType(\"tav-leagues\", \"" +
                                                       std::string(type.name) + "\") called with an unknown type\n"));
    }
    const PluginName name = MakePluginName("tav-leagues", {"frontend", "beta"});
    EXPECT_EQ(name.fullName, "wex-fe-tav-leagues");
    EXPECT_EQ(name.shortName, "tav-leagues");
    EXPECT_EQ(name.typeName, "frontend");
    EXPECT_EQ(name.typeVariant, "beta");
}

}  // namespace
}  // namespace wex
