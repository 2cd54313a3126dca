#include <gtest/gtest.h>

#include <cstring>
#include <sstream>
#include <string>
#include <vector>

#include "api/dispatcher.h"
#include "api_test_module.h"

namespace tav::test {
namespace {

class EndpointTableTest : public ::testing::Test {
  protected:
    void SetUp() override { module_.LoadForTest(); }

    // The endpoint record of a function, found by walking the chain as a C host does.
    const HostEndpointRecord& Endpoint(const char* functionName) const {
        const HostEndpointRecord* record = module_.ApiTable().endpoints;
        while (record != nullptr && std::strcmp(record->functionName, functionName) != 0) {
            record = record->next;
        }
        EXPECT_NE(record, nullptr) << functionName;
        return record != nullptr ? *record : *module_.ApiTable().endpoints;
    }

    // Calls the endpoint's entry as the host does, with the endpoint's context.
    void Call(const char* functionName, TestRequest request, TestResponse& response) {
        const HostEndpointRecord& endpoint = Endpoint(functionName);
        request.endpointContext = endpoint.context;
        const HostRequest record = request.Record();
        endpoint.entry(&response.record, &record);
    }

    ApiTestModule module_;
};

template <class Record>
void ExpectChained(const Record* first, std::uint32_t count) {
    for (std::uint32_t index = 0; index < count; ++index) {
        SCOPED_TRACE(index);
        EXPECT_EQ(Read(first[index].next), index + 1 < count ? &first[index + 1] : nullptr);
    }
    if (count == 0) {
        EXPECT_EQ(first, nullptr);
    }
}

// Method, template and function; the result's kinds and type; each argument's
// kinds, type, optional mark and location.
std::string Describe(const HostEndpointRecord& endpoint) {
    std::ostringstream out;
    out << endpoint.method << ' ' << endpoint.pathTemplate << ' ' << endpoint.functionName << " -> "
        << endpoint.resultKind << '/' << endpoint.resultElementKind << ' ' << endpoint.resultTypeName;
    const HostLocationRecord* location = endpoint.locations;
    for (const HostArgumentRecord* argument = endpoint.arguments; argument != nullptr; argument = argument->next) {
        out << ", " << argument->name << ' ' << argument->kind << '/' << argument->elementKind << ' '
            << argument->typeName << (argument->optional != 0 ? "?" : "") << '@' << location->location;
        location = location->next;
    }
    return out.str();
}

TEST_F(EndpointTableTest, EveryArrayIsContiguousAndChained) {
    const HostApiTable& table = module_.ApiTable();
    EXPECT_EQ(Read(table.endpointCount), module_.Routes().size());
    EXPECT_EQ(Read(table.typeCount), module_.TypeRegistry()->Types().size());
    EXPECT_EQ(Read(table.eventCount), module_.TypeRegistry()->Events().size());
    ExpectChained(table.endpoints, table.endpointCount);
    ExpectChained(table.types, table.typeCount);
    ExpectChained(table.events, table.eventCount);
    for (const HostEndpointRecord* endpoint = table.endpoints; endpoint != nullptr; endpoint = endpoint->next) {
        SCOPED_TRACE(endpoint->functionName);
        ExpectChained(endpoint->arguments, endpoint->argumentCount);
        ExpectChained(endpoint->locations, endpoint->argumentCount);
        EXPECT_EQ(Read(endpoint->entry), &wex::EndpointEntry);
        EXPECT_EQ(Read(endpoint->context->module), &module_);
        EXPECT_EQ(Read(endpoint->zero), 0u);
        EXPECT_EQ(Read(endpoint->flag), 0);
        EXPECT_EQ(Read(endpoint->textLists), nullptr);
        EXPECT_EQ(Read(endpoint->textListCount), 0u);
        EXPECT_STREQ(endpoint->methodName, "");
        EXPECT_STREQ(endpoint->asyncResultTypeName, "");
        EXPECT_STREQ(endpoint->nameSpace, "TavApitest");
        ASSERT_EQ(Read(endpoint->tagCount), 2u);
        EXPECT_STREQ(endpoint->tags[0], "Plugins");
        EXPECT_STREQ(endpoint->tags[1], "Plugin tav-apitest");
    }
    for (const HostTypeRecord* type = table.types; type != nullptr; type = type->next) {
        SCOPED_TRACE(type->name);
        if (type->fields != nullptr) {
            ExpectChained(type->fields, type->count);
        } else {
            ExpectChained(type->enumerators, type->count);
        }
    }
}

TEST_F(EndpointTableTest, DescribesEachRouteInOrder) {
    std::vector<std::string> endpoints;
    for (const HostEndpointRecord* endpoint = module_.ApiTable().endpoints; endpoint != nullptr;
         endpoint = endpoint->next) {
        endpoints.push_back(Describe(*endpoint));
    }
    EXPECT_EQ(endpoints, (std::vector<std::string>{
                             "2 /tav-leagues/v1/summoner-leagues/{summonerId} "
                             "GetTavLeaguesV1SummonerLeaguesBySummonerId -> 15/17 TestLeague, summonerId 9/0 @2",
                             "2 /tav-leagues/v1/teams/{id} GetTavLeaguesV1TeamsById -> 13/0 , id 12/0 @2",
                             "6 /tav-leagues/v2/notifications/{id}/acknowledge "
                             "PostTavLeaguesV2NotificationsByIdAcknowledge -> 0/0 , id 6/0 @2",
                             "2 /test/name GetTestName -> 12/0 ",
                             "2 /tav-leagues/v2/tiers GetTavLeaguesV2Tiers -> 13/0 , ids 15/9 @1, verbose 1/0 @1",
                             "2 /test/files/{+path} GetTestFilesByPath -> 13/0 , path 12/0 @2",
                             "2 /test/page{#section} GetTestPageBy#section -> 13/0 , section 12/0 @2",
                             "2 /test/{x}/a.b GetTestByXAB -> 13/0 , x 12/0 @2",
                             "2 /test/zeros/{count} GetTestZerosByCount -> 15/6 , count 7/0 @2",
                             "2 /test/number GetTestNumber -> 6/0 , number 6/0 @1",
                             "2 /test/orphan/{nothing} GetTestOrphanByNothing -> 13/0 ",
                             "6 /test/echo/{name} PostTestEchoByName -> 13/0 , name 12/0 @2, options 13/0 @0, "
                             "summonerId 13/0 @4, payload 13/0 @5, flag 1/0 @1",
                             "2 /test/league GetTestLeague -> 17/0 TestLeague, league 17/0 TestLeague@1",
                             "2 /test/response GetTestResponse -> 17/0 ",
                         }));
    EXPECT_STREQ(Endpoint("GetTavLeaguesV1SummonerLeaguesBySummonerId").arguments->description, "The player");
}

TEST_F(EndpointTableTest, DescribesStructuresByFieldsAndEnumerationsByEnumerators) {
    const HostTypeRecord* league = module_.ApiTable().types;
    while (league != nullptr && std::strcmp(league->name, "TestLeague") != 0) {
        league = league->next;
    }
    ASSERT_NE(league, nullptr);
    EXPECT_EQ(Read(league->size), sizeof(TestLeague));
    EXPECT_EQ(Read(league->enumerators), nullptr);
    ASSERT_EQ(Read(league->count), 3u);
    EXPECT_STREQ(league->fields[0].name, "queue");
    EXPECT_EQ(Read(league->fields[0].kind), 12u);
    EXPECT_EQ(Read(league->fields[1].offset), offsetof(TestLeague, points));
    EXPECT_STREQ(league->fields[2].typeName, "TestTier");
    EXPECT_EQ(Read(league->fields[2].kind), 16u);

    const HostTypeRecord* tier = league->next;
    ASSERT_NE(tier, nullptr);
    EXPECT_STREQ(tier->name, "TestTier");
    EXPECT_EQ(Read(tier->fields), nullptr);
    ASSERT_EQ(Read(tier->count), 2u);
    EXPECT_STREQ(tier->enumerators[0].name, "GOLD");
    EXPECT_EQ(Read(tier->enumerators[0].value), 3);
    EXPECT_STREQ(tier->enumerators[1].name, "NONE");

    const HostEventRecord& event = *module_.ApiTable().events;
    EXPECT_STREQ(event.name, "OnCallback");
    EXPECT_STREQ(event.payloadTypeName, "BindingCallbackEvent");
    EXPECT_STREQ(event.description, "Fired when a callback is invoked.");
    ASSERT_EQ(Read(event.tagCount), 1u);
    EXPECT_STREQ(event.tags[0], "$builtin");
}

TEST_F(EndpointTableTest, TheEntryDispatchesOnlyTheEndpointsOwnRoute) {
    TestResponse response;
    Call("GetTavLeaguesV1TeamsById", Request(HostMethodGet, "/tav-leagues/v1/teams/T1"), response);
    EXPECT_EQ(response.Json(), R"("team T1")");

    TestResponse other;
    Call("GetTavLeaguesV1TeamsById", Request(HostMethodGet, "/test/files/x"), other);
    EXPECT_EQ(other.Error(), "Invalid function");
    EXPECT_EQ(Read(other.record.status), 404u);

    TestResponse withoutContext;
    const HostRequest request{};
    wex::EndpointEntry(&withoutContext.record, &request);
    EXPECT_EQ(withoutContext.Error(), "Invalid function");
    EXPECT_EQ(Read(withoutContext.record.status), 404u);
    wex::EndpointEntry(nullptr, &request);
}

TEST_F(EndpointTableTest, AWholeResponseCarriesStatusHeadersTextAndStream) {
    TestRequest request = Request(HostMethodGet, "/test/response");
    request.headers = {{"probe", "seen"}};
    TestResponse response;
    Call("GetTestResponse", request, response);
    const HostResponse& record = response.record;
    EXPECT_EQ(Read(record.error), nullptr);
    EXPECT_EQ(Read(record.status), 201u);
    EXPECT_STREQ(record.text, "created");
    ASSERT_EQ(Read(record.headerCount), 2u);
    EXPECT_STREQ(record.headers[0].name, "X-Header");
    EXPECT_STREQ(record.headers[0].value, "seen");
    EXPECT_STREQ(record.headers[1].name, "X-Path");
    EXPECT_STREQ(record.headers[1].value, "/test/response");
    EXPECT_EQ(Read(record.expectedStreamLength), 10u);
    ASSERT_NE(Read(record.streamRead), nullptr);

    std::string body;
    bool more = true;
    while (more) {
        char buffer[16];
        std::uint32_t size = sizeof buffer;
        ASSERT_TRUE(record.streamRead(record.streamProducer, buffer, &size, &more));
        body.append(buffer, size);
    }
    EXPECT_EQ(body, "0123456789");
    record.streamClose(record.streamProducer);

    record.release(&response.record);
    const HostResponse cleared{};
    EXPECT_EQ(std::memcmp(&response.record, &cleared, sizeof cleared), 0);
}

}  // namespace
}  // namespace tav::test
