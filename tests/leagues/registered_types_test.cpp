#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

#include "codec/json_reader.h"
#include "leagues/server_dtos.h"
#include "support/loaded_module.h"
#include "types/native_conversion.h"
#include "types/registry.h"

namespace Orvel::Client::Leagues {
namespace {

// Every type the module registers, as front ends and the server see them,
// is held against one reviewed text. After a deliberate change, run the test
// with TAV_UPDATE_GOLDEN=1 and review the difference of the text file.
const char* const kGoldenPath = TAV_LEAGUES_TEST_DIR "/registered_types.txt";

std::string KindOf(const wex::BindingTypeIdentifier& type, const wex::BindingTypeRegistry& registry) {
    std::string text(wex::BindingTypeKindName(type.kind));
    if (type.elementKind != wex::BindingTypeKind::None) {
        text += " of " + std::string(wex::BindingTypeKindName(type.elementKind));
    }
    if (type.type != nullptr) {
        const wex::BindingTypeInfo* named = registry.FindType(type.type->id);
        text += " " + (named != nullptr ? named->name : std::string("<unregistered>"));
    }
    return text;
}

// One line per type (name, server class, tags), then one per field (name,
// kind, flags, optional marker) or per enumerator.
std::string DescribeRegistry(const LeaguesModule& module, const wex::BindingTypeRegistry& registry) {
    std::ostringstream out;
    for (const wex::BindingTypeInfo* type : registry.Types()) {
        out << (type->isEnum ? "enum " : "struct ") << type->name;
        if (const std::string_view name = module.FindLcdsClassName(type->name); !name.empty()) {
            out << " <" << name << ">";
        }
        if (module.FindLcdsClassName(*type->identity) != module.FindLcdsClassName(type->name)) {
            out << " <the class name tables disagree>";
        }
        for (const std::string& tag : type->tags) {
            out << " [" << tag << "]";
        }
        out << "\n";
        for (const wex::BindingFieldInfo& field : type->fields) {
            out << "  " << field.name << ": " << KindOf(field.type, registry);
            if (field.flags != 0) {
                out << " flags " << field.flags;
            }
            out << (field.optional ? " optional" : "") << "\n";
        }
        for (const auto& [name, value] : type->enumValues) {
            out << "  " << name << " = " << value.value << "\n";
        }
    }
    return out.str();
}

TEST(RegisteredTypes, MatchTheReviewedTextAndTheClassNameTablesKnowNoOtherType) {
    test::LoadedModule loaded;
    const std::string actual = DescribeRegistry(loaded.Module(), loaded.Registry());
    if (std::getenv("TAV_UPDATE_GOLDEN") != nullptr) {
        std::ofstream(kGoldenPath, std::ios::binary) << actual;
    }
    std::ifstream golden(kGoldenPath, std::ios::binary);
    ASSERT_TRUE(golden.good()) << "cannot read " << kGoldenPath;
    const std::string expected{std::istreambuf_iterator<char>(golden), {}};
    EXPECT_EQ(actual, expected) << "if the change is meant, rerun with TAV_UPDATE_GOLDEN=1 and review " << kGoldenPath;
    EXPECT_EQ(loaded.Module().FindLcdsClassName("TavLeaguesLeague"), "");
    EXPECT_EQ(loaded.Module().FindLcdsClassName("LeaguesLcds"), "");
    EXPECT_EQ(loaded.Module().FindLcdsClassName(wex::BindingTypeIdentity::Of<Api::League>()), "");
}

// Server answers read through the module's registry; what the reviewed type
// text cannot show: a null member and the failure of an unknown enumerator.
TEST(DtoFromJson, ANullSeriesLeavesTheRecordEmptyAndAnUnknownQueueNamesTheServerEnumeration) {
    test::LoadedModule loaded;
    wex::BindingProperty status;
    LCDS::LeagueItemDTO item;
    wex::FromBinding(status, item, wex::ParseJson(R"({"playerOrTeamId": "7", "miniSeries": null, "wins": 3})"),
                     "<value>", loaded.Registry());
    EXPECT_EQ(status.GetError(), "");
    const LCDS::MiniSeriesDTO& series = item.miniSeries;
    EXPECT_EQ(item.playerOrTeamId + " " + std::to_string(item.wins) + " [" + series.progress + "] " +
                  std::to_string(series.wins + series.losses + series.target + series.timeLeftToPlayMillis),
              "7 3 [] 0");
    LCDS::LeagueListDTO list;
    wex::FromBinding(status, list, wex::ParseJson(R"({"queue": "RANKED_TEAM_3x3"})"), "<value>", loaded.Registry());
    EXPECT_EQ(status.GetError(), "RANKED_TEAM_3x3 is not a valid LeaguesLcdsQueueType enumeration value for 'queue'.");
}

}  // namespace
}  // namespace Orvel::Client::Leagues
