#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "api/dispatcher.h"
#include "api_test_module.h"

namespace tav::test {
namespace {

class EndpointTableTest : public ApiModuleTest {
  protected:
    // Finds the function's endpoint by walking the chain as a C host does, and calls its entry with its context.
    void Call(const char* functionName, TestRequest request, TestResponse& response) {
        const HostEndpointRecord* endpoint = module_.ApiTable().endpoints;
        while (endpoint != nullptr && std::strcmp(endpoint->functionName, functionName) != 0) {
            endpoint = endpoint->next;
        }
        ASSERT_NE(endpoint, nullptr) << functionName;
        request.endpointContext = endpoint->context;
        const HostRequest record = request.Record();
        endpoint->entry(&response.record, &record);
    }
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
