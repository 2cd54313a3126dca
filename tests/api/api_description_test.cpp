#include <gtest/gtest.h>

#include "api/dispatcher.h"
#include "api/native_handler.h"
#include "api/route_table.h"
#include "api_test_module.h"
#include "codec/json_writer.h"
#include "types/api_description.h"
#include "types/registry.h"

namespace wex {
namespace {

struct Standing {
    std::string id;
    std::int32_t points = 0;
};

enum class Queue : std::int32_t { SOLO = 2, FLEX = 1, ALSO_FLEX = 1 };

void RegisterSample(BindingTypeRegistry& registry) {
    registry.Struct<Standing>("Standing", {"league"})
        .Description("-A {standing}")
        .Field("id", &Standing::id, BindingFieldOption::Optional, "Its {id}")
        .Field("points", &Standing::points);
    registry.Enum<Queue>("Queue")
        .Description("Queues")
        .Value("SOLO", Queue::SOLO, "Alone")
        .Value("FLEX", Queue::FLEX)
        .Value("ALSO_FLEX", Queue::ALSO_FLEX);
    registry.AddEvent({"OnStanding", "Leagues", "Fired {now}", TypeIdentifierOf<Standing>(), {"a", "b"}});
    BindingFunctionInfo function;
    function.name = "GetStandings";
    function.nameSpace = "Leagues";
    function.description = "-Lists";
    function.help = "Use {it}";
    function.arguments = {{"ids", "The {ids}", true, TypeIdentifierOf<std::vector<std::uint64_t>>()},
                          {"queue", "", false, TypeIdentifierOf<Queue>()}};
    function.result = TypeIdentifierOf<std::vector<Standing>>();
    function.threadSafe = true;
    function.async = true;
    function.tags = {"Plugins", "x"};
    registry.AddFunction(function);
}

BindingProperty Describe(const BindingTypeRegistry& registry, BindingHelpFormat format) {
    return BuildApiDescription(registry, registry.Functions(), registry.Types(), registry.Events(), format);
}

TEST(ApiDescription, AnEmptyRegistryIsThreeEmptyCollections) {
    const BindingTypeRegistry registry;
    EXPECT_EQ(WriteJson(Describe(registry, BindingHelpFormat::Full)), R"({"events":[],"functions":[],"types":[]})");
    EXPECT_EQ(WriteJson(Describe(registry, BindingHelpFormat::Epytext)), R"({"events":{},"functions":{},"types":{}})");
}

TEST(ApiDescription, DescribesEachRecordInFullSortedByName) {
    BindingTypeRegistry registry;
    RegisterSample(registry);
    RegisterBuiltinTypes(registry);
    BindingFunctionInfo later;
    later.name = "ListStandings";
    registry.AddFunction(later);
    std::vector<const BindingFunctionInfo*> functions = registry.Functions();
    std::reverse(functions.begin(), functions.end());
    std::vector<const BindingTypeInfo*> types = registry.Types();
    std::reverse(types.begin(), types.end());
    const BindingProperty description =
        BuildApiDescription(registry, functions, types, registry.Events(), BindingHelpFormat::Full);
    ASSERT_TRUE(description.IsValid()) << description.GetError();

    ASSERT_EQ(description.Member("functions").Size(), 2u);
    EXPECT_EQ(WriteJson(description.Member("functions").At(0)), tav::test::ExpectedText("GetStandings"));
    EXPECT_EQ(WriteJson(description.Member("events")), tav::test::ExpectedText("events"));
    const BindingProperty& sortedTypes = description.Member("types");
    ASSERT_EQ(sortedTypes.Size(), 17u);
    EXPECT_EQ(sortedTypes.At(0).Member("name").AsString(), "BindingAsyncCancelEvent");
    EXPECT_EQ(WriteJson(sortedTypes.At(15)), tav::test::ExpectedText("Queue"));
    std::string standing = tav::test::ExpectedText("Standing");
    standing.replace(standing.find("$offset"), 7, std::to_string(offsetof(Standing, points)));
    standing.replace(standing.find("$size"), 5, std::to_string(sizeof(Standing)));
    EXPECT_EQ(WriteJson(sortedTypes.At(16)), standing);
}

// The full description converts each record through the builtin types; docstrings need none of them.
TEST(ApiDescription, WritesEpytextDocstringsButNotTheFullDescriptionOfAnUnregisteredType) {
    BindingTypeRegistry registry;
    RegisterSample(registry);
    const BindingProperty full = Describe(registry, BindingHelpFormat::Full);
    EXPECT_FALSE(full.IsValid());
    EXPECT_EQ(full.GetError(), "Couldn't convert native value because it's an unregistered structure.");

    const BindingProperty description = Describe(registry, BindingHelpFormat::Epytext);
    ASSERT_TRUE(description.IsValid());
    const std::pair<const char*, const char*> docstrings[] = {
        {"functions", "GetStandings"}, {"types", "Standing"}, {"types", "Queue"}, {"events", "OnStanding"}};
    for (const auto& [kind, name] : docstrings) {
        SCOPED_TRACE(name);
        EXPECT_EQ(description.Member(kind).Member(name).AsString(),
                  tav::test::ExpectedText(std::string(name) + " docstring", "\r\n"));
    }
}

// "Help" answers the full description or fails with the reason it cannot,
// other builtins fail, and without a registry a builtin runs its handler.
TEST(Builtins, HelpAnswersTheFullDescriptionAndOthersAreUnsupported) {
    BindingTypeRegistry registry;
    RegisterBuiltinTypes(registry);
    RouteTable table;
    BindingFunctionInfo builtin;
    builtin.tags = {"$builtin"};
    builtin.handler = MakeApiHandler([]() -> MaybeType<Failure, std::string> { return std::string("plain"); });
    table.AddRoute(registry, HostMethodAny, "/help", builtin);
    table.AddRoute(registry, HostMethodAny, "/other", builtin);
    const auto serve = [&](const BindingTypeRegistry* with, const char* path, tav::test::TestResponse& response) {
        tav::test::TestRequest request = tav::test::Request(HostMethodGet, path);
        const HostRequest record = request.Record();
        Dispatch(with, response.record, record, table.Routes());
    };
    tav::test::TestResponse help;
    serve(&registry, "/help", help);
    EXPECT_EQ(tav::test::Read(help.record.error), nullptr);
    const BindingProperty answer = HostValueToBinding(help.record.result, "");
    EXPECT_EQ(WriteJson(answer.Member("functions").At(0).Member("name")), R"("Help")");
    EXPECT_EQ(answer.Member("types").Size(), 15u);
    EXPECT_EQ(WriteJson(answer.Member("types").At(0).Member("values")), "[]");

    tav::test::TestResponse other;
    serve(&registry, "/other", other);
    EXPECT_EQ(other.Error(), "Unsupported builtin function");
    EXPECT_EQ(tav::test::Read(other.record.status), 400u);

    // Without the builtin types the description cannot be converted.
    BindingTypeRegistry sample;
    RegisterSample(sample);
    tav::test::TestResponse unconvertible;
    serve(&sample, "/help", unconvertible);
    EXPECT_EQ(unconvertible.Error(), "Couldn't convert native value because it's an unregistered structure.");
    EXPECT_EQ(tav::test::Read(unconvertible.record.status), 400u);

    tav::test::TestResponse withoutRegistry;
    serve(nullptr, "/help", withoutRegistry);
    EXPECT_EQ(withoutRegistry.Json(), R"("plain")");
}

}  // namespace
}  // namespace wex
