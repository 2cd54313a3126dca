#include <gtest/gtest.h>

#include <cstring>
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
    const HostEndpointRecord* Endpoint(const char* functionName) const {
        for (const HostEndpointRecord* record = module_.ApiTable().endpoints; record != nullptr;
             record = record->next) {
            if (std::strcmp(record->functionName, functionName) == 0) {
                return record;
            }
        }
        return nullptr;
    }

    const HostTypeRecord* Type(const char* name) const {
        for (const HostTypeRecord* record = module_.ApiTable().types; record != nullptr; record = record->next) {
            if (std::strcmp(record->name, name) == 0) {
                return record;
            }
        }
        return nullptr;
    }

    // Calls the endpoint's entry as the host does, with the endpoint's context.
    void Call(const HostEndpointRecord& endpoint, TestRequest request, TestResponse& response) {
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

TEST_F(EndpointTableTest, DescribesARouteWithItsFunctionArgumentsAndResult) {
    const HostEndpointRecord* endpoint = Endpoint("GetTavLeaguesV1SummonerLeaguesBySummonerId");
    ASSERT_NE(endpoint, nullptr);
    EXPECT_STREQ(endpoint->pathTemplate, "/tav-leagues/v1/summoner-leagues/{summonerId}");
    EXPECT_EQ(Read(endpoint->method), static_cast<std::uint32_t>(HostMethodGet));
    EXPECT_STREQ(endpoint->methodName, "");
    EXPECT_STREQ(endpoint->nameSpace, "TavApitest");
    ASSERT_EQ(Read(endpoint->tagCount), 2u);
    EXPECT_STREQ(endpoint->tags[0], "Plugins");
    EXPECT_STREQ(endpoint->tags[1], "Plugin tav-apitest");
    EXPECT_EQ(Read(endpoint->resultKind), 15u);
    EXPECT_EQ(Read(endpoint->resultElementKind), 17u);
    EXPECT_STREQ(endpoint->resultTypeName, "TestLeague");
    EXPECT_STREQ(endpoint->asyncResultTypeName, "");
    ASSERT_EQ(Read(endpoint->argumentCount), 1u);
    EXPECT_STREQ(endpoint->arguments->name, "summonerId");
    EXPECT_STREQ(endpoint->arguments->description, "The player");
    EXPECT_EQ(Read(endpoint->arguments->kind), 9u);
    EXPECT_EQ(Read(endpoint->arguments->elementKind), 0u);
    EXPECT_STREQ(endpoint->arguments->typeName, "");
    EXPECT_EQ(Read(endpoint->arguments->optional), 0);
    EXPECT_EQ(Read(endpoint->locations->location), 2u);

    const HostEndpointRecord* tiers = Endpoint("GetTavLeaguesV2Tiers");
    ASSERT_NE(tiers, nullptr);
    EXPECT_STREQ(tiers->pathTemplate, "/tav-leagues/v2/tiers");
    ASSERT_EQ(Read(tiers->argumentCount), 2u);
    EXPECT_EQ(Read(tiers->arguments[0].kind), 15u);
    EXPECT_EQ(Read(tiers->arguments[0].elementKind), 9u);
    EXPECT_EQ(Read(tiers->arguments[1].kind), 1u);
    EXPECT_EQ(Read(tiers->locations[0].location), 1u);
    EXPECT_EQ(Read(tiers->locations[1].location), 1u);

    const HostEndpointRecord* acknowledge = Endpoint("PostTavLeaguesV2NotificationsByIdAcknowledge");
    ASSERT_NE(acknowledge, nullptr);
    EXPECT_EQ(Read(acknowledge->resultKind), 0u);
    EXPECT_STREQ(acknowledge->resultTypeName, "");
}

TEST_F(EndpointTableTest, AFunctionWithoutArgumentsHasNoArgumentOrLocationRecords) {
    const HostEndpointRecord* endpoint = Endpoint("GetTieLiteral");
    ASSERT_NE(endpoint, nullptr);
    EXPECT_EQ(Read(endpoint->argumentCount), 0u);
    EXPECT_EQ(Read(endpoint->arguments), nullptr);
    EXPECT_EQ(Read(endpoint->locations), nullptr);
}

TEST_F(EndpointTableTest, DescribesStructuresByFieldsAndEnumerationsByEnumerators) {
    const HostTypeRecord* league = Type("TestLeague");
    ASSERT_NE(league, nullptr);
    EXPECT_EQ(Read(league->size), sizeof(TestLeague));
    EXPECT_EQ(Read(league->enumerators), nullptr);
    ASSERT_EQ(Read(league->count), 3u);
    EXPECT_STREQ(league->fields[0].name, "queue");
    EXPECT_EQ(Read(league->fields[0].kind), 12u);
    EXPECT_EQ(Read(league->fields[1].offset), offsetof(TestLeague, points));
    EXPECT_STREQ(league->fields[2].typeName, "TestTier");
    EXPECT_EQ(Read(league->fields[2].kind), 16u);

    const HostTypeRecord* tier = Type("TestTier");
    ASSERT_NE(tier, nullptr);
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

TEST_F(EndpointTableTest, TheEntryDispatchesTheEndpointsOwnRoute) {
    const HostEndpointRecord* endpoint = Endpoint("GetTavLeaguesV1TeamsById");
    ASSERT_NE(endpoint, nullptr);
    TestResponse response;
    Call(*endpoint, Request(HostMethodGet, "/tav-leagues/v1/teams/T1"), response);
    EXPECT_EQ(response.Json(), R"("team T1")");

    // Another route's path does not reach that route's handler through this endpoint.
    TestResponse other;
    Call(*endpoint, Request(HostMethodGet, "/test/files/x"), other);
    EXPECT_EQ(other.Error(), "Invalid function");
    EXPECT_EQ(Read(other.record.status), 404u);
}

TEST_F(EndpointTableTest, TheEntryAnswersARequestWithoutContext) {
    TestResponse response;
    const HostRequest request{};
    wex::EndpointEntry(&response.record, &request);
    EXPECT_EQ(response.Error(), "Invalid function");
    EXPECT_EQ(Read(response.record.status), 404u);
    wex::EndpointEntry(nullptr, &request);
}

TEST_F(EndpointTableTest, AWholeResponseCarriesStatusHeadersTextAndStream) {
    const HostEndpointRecord* endpoint = Endpoint("GetTestResponse");
    ASSERT_NE(endpoint, nullptr);
    TestResponse response;
    Call(*endpoint, WithHeaders(Request(HostMethodGet, "/test/response"), {{"probe", "seen"}}), response);
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
