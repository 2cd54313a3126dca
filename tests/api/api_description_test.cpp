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
    std::vector<const BindingTypeInfo*> types = registry.Types();
    std::reverse(types.begin(), types.end());
    const BindingProperty description =
        BuildApiDescription(registry, registry.Functions(), types, registry.Events(), BindingHelpFormat::Full);
    ASSERT_TRUE(description.IsValid()) << description.GetError();

    EXPECT_EQ(
        WriteJson(description.Member("functions")),
        R"([{"arguments":[{"description":"The {ids}","name":"ids","optional":true,)"
        R"("type":{"elementType":"uint64","type":"vector"}},)"
        R"({"description":"","name":"queue","optional":false,"type":{"elementType":"","type":"Queue"}}],)"
        R"("async":"Standing","description":"-Lists","help":"Use {it}","name":"GetStandings","nameSpace":"Leagues",)"
        R"("returns":{"elementType":"Standing","type":"vector"},"tags":["Plugins","x"],"threadSafe":true}])");
    const BindingProperty& sortedTypes = description.Member("types");
    ASSERT_EQ(sortedTypes.Size(), 17u);
    EXPECT_EQ(sortedTypes.At(0).Member("name").AsString(), "BindingAsyncCancelEvent");
    EXPECT_EQ(sortedTypes.At(15).Member("name").AsString(), "Queue");
    EXPECT_EQ(WriteJson(sortedTypes.At(15)),
              R"({"description":"Queues","fields":[],"name":"Queue","nameSpace":"","size":4,"tags":[],)"
              R"("values":[{"description":"","name":"ALSO_FLEX","value":1},{"description":"","name":"FLEX","value":1},)"
              R"({"description":"Alone","name":"SOLO","value":2}]})");
    EXPECT_EQ(WriteJson(sortedTypes.At(16)),
              R"({"description":"-A {standing}","fields":[{"description":"Its {id}","name":"id","offset":0,)"
              R"("optional":true,"type":{"elementType":"","type":"string"}},{"description":"","name":"points",)"
              R"("offset":)" +
                  std::to_string(offsetof(Standing, points)) +
                  R"(,"optional":false,"type":{"elementType":"","type":"int32"}}],"name":"Standing","nameSpace":"",)"
                  R"("size":)" +
                  std::to_string(sizeof(Standing)) + R"(,"tags":["league"],"values":[]})");
    EXPECT_EQ(WriteJson(description.Member("events")),
              R"([{"description":"Fired when a callback is invoked.","name":"OnCallback","nameSpace":"",)"
              R"("tags":["$builtin"],"type":{"elementType":"","type":"BindingCallbackEvent"}},)"
              R"({"description":"Fired {now}","name":"OnStanding","nameSpace":"Leagues","tags":["a","b"],)"
              R"("type":{"elementType":"","type":"Standing"}}])");
}

TEST(ApiDescription, WritesEpytextDocstrings) {
    BindingTypeRegistry registry;
    RegisterSample(registry);
    const BindingProperty description = Describe(registry, BindingHelpFormat::Epytext);
    ASSERT_TRUE(description.IsValid());
    EXPECT_EQ(description.Member("functions").Member("GetStandings").AsString(),
              "E{-}Lists\r\n\r\n"
              "Use E{lb}itE{rb}\r\n\r\n"
              "@param ids: (optional) The E{lb}idsE{rb}\r\n"
              "@type ids: list[uint64]\r\n"
              "@type queue: L{Queue}\r\n"
              "@rtype: list[L{Standing}]\r\n"
              "@tags: Plugins,x\r\n"
              "@threadsafe: true\r\n"
              "@async: list[L{Standing}]\r\n");
    EXPECT_EQ(description.Member("types").Member("Standing").AsString(),
              "E{-}A E{lb}standingE{rb}\r\n\r\n"
              "@ivar id: Its E{lb}idE{rb}\r\n"
              "@type id: string\r\n"
              "@ivar points: \r\n"
              "@type points: int32\r\n"
              "@tags: league\r\n");
    EXPECT_EQ(description.Member("types").Member("Queue").AsString(),
              "Queues\r\n\r\n"
              "@cvar ALSO_FLEX: (1)\r\n"
              "@cvar FLEX: (1)\r\n"
              "@cvar SOLO: (2) Alone\r\n"
              "@size: 4\r\n");
    EXPECT_EQ(description.Member("events").Member("OnStanding").AsString(),
              "Fired E{lb}nowE{rb}\r\n\r\n@tags: a,b\r\n");
}

TEST(ApiDescription, AnUnregisteredRecordTypeFailsTheFullDescription) {
    BindingTypeRegistry registry;
    RegisterSample(registry);
    const BindingProperty description = Describe(registry, BindingHelpFormat::Full);
    EXPECT_FALSE(description.IsValid());
    EXPECT_EQ(description.GetError(), "Couldn't convert native value because it's an unregistered structure.");
}

TEST(BuiltinTypes, RegisteringTwiceKeepsOneCopyOfEach) {
    BindingTypeRegistry registry;
    RegisterBuiltinTypes(registry);
    const BindingTypeInfo* format = registry.FindType("BindingHelpFormat");
    RegisterBuiltinTypes(registry);
    EXPECT_EQ(registry.Types().size(), 15u);
    EXPECT_EQ(registry.Events().size(), 1u);
    ASSERT_EQ(registry.FindType("BindingHelpFormat"), format);
    EXPECT_EQ(format->enumValues.size(), 2u);
    EXPECT_EQ(format->description, "Help format for binding functions and types.");
    EXPECT_EQ(registry.FindType("BindingCallbackEvent")->fields[1].description, "Callback parameters");
}

// "Help" answers the full description, other builtins fail, and without a
// registry a builtin runs its handler.
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

    tav::test::TestResponse withoutRegistry;
    serve(nullptr, "/help", withoutRegistry);
    EXPECT_EQ(withoutRegistry.Json(), R"("plain")");
}

}  // namespace
}  // namespace wex
