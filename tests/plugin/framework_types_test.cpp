#include "plugin/framework_types.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "plugin/app_module.h"
#include "support/hosted_module.h"
#include "types/registry.h"

namespace wex {
namespace {

// "name: kind type" per field, or "name = value" per enumerator in name order.
std::vector<std::string> Members(const BindingTypeInfo& type) {
    std::vector<std::string> members;
    for (const BindingFieldInfo& field : type.fields) {
        members.push_back(field.name + ": " + std::string(BindingTypeKindName(field.type.kind)));
    }
    for (const auto& [name, value] : type.enumValues) {
        members.push_back(name + " = " + std::to_string(value.value));
    }
    return members;
}

TEST(RegisterFrameworkTypes, RegistersTheSharedRecordsUnderTheirFixedIdentities) {
    BindingTypeRegistry registry;
    RegisterFrameworkTypes(registry);
    const struct {
        std::uint32_t identity;
        const char* name;
        std::vector<std::string> members;
    } rows[] = {
        {0xF4E3B901, "PluginManagerState", {"NotReady = 0", "PluginsInitialized = 1"}},
        {0xFA58397C, "PluginManagerResource", {"state: enum"}},
        {0xDC24D2AD, "PluginResourceEventType", {"Create = 0", "Delete = 2", "Update = 1"}},
        {0xA54F35FD, "PluginResourceEvent", {"uri: string", "eventType: enum", "data: object"}},
        {0x739F2EF4, "PluginLcdsEvent", {"clientId: string", "subtopic: string", "typeName: string", "body: object"}},
        {0xF4476A4F, "PluginLcdsResponse", {"typeName: string", "body: object"}},
        {0x2C5E7588,
         "PluginServiceProxyResponse",
         {"uuid: string", "serviceName: string", "methodName: string", "payload: string", "status: string",
          "error: string"}},
    };
    EXPECT_EQ(registry.Types().size(), std::size(rows));
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const BindingTypeInfo* type = registry.FindType(row.identity);
        ASSERT_NE(type, nullptr);
        EXPECT_EQ(type->name, row.name);
        EXPECT_EQ(type->nameSpace, "hclient");
        EXPECT_EQ(Members(*type), row.members);
        EXPECT_EQ(type->identity->DefaultName(), BindingTypeIdentity::Make(row.identity).DefaultName());
    }
    EXPECT_EQ(BindingTypeIdentity::Of<PluginManagerResource>().DefaultName(), "#FA58397C");
}

TEST(RegisterFrameworkTypes, RegistersTheFiveEventsWithTheirPayloads) {
    BindingTypeRegistry registry;
    RegisterFrameworkTypes(registry);
    const struct {
        const char* name;
        std::uint32_t payload;
        const char* description;
    } rows[] = {
        {"OnJsonApiEvent", 0xA54F35FD, "Fired when a resource is changed."},
        {"OnLcdsEvent", 0x739F2EF4, "Fired when a message is received over the LCDS connection."},
        {"OnServiceProxyUuidEvent", 0x2C5E7588, "Fired when a uuid-based service proxy message is received."},
        {"OnServiceProxyMethodEvent", 0x2C5E7588, "Fired when a method-based service proxy message is received."},
        {"OnServiceProxyAsyncEvent", 0x2C5E7588, "Fired when an async service proxy message is received."},
    };
    EXPECT_EQ(registry.Events().size(), std::size(rows));
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const BindingEventInfo* event = registry.FindEvent(row.name);
        ASSERT_NE(event, nullptr);
        EXPECT_EQ(event->nameSpace, "hclient");
        EXPECT_EQ(event->description, row.description);
        EXPECT_EQ(event->payload.kind, BindingTypeKind::Struct);
        ASSERT_NE(event->payload.type, nullptr);
        EXPECT_EQ(event->payload.type->id, row.payload);
    }
}

TEST(RegisterFrameworkTypes, RegisteringAgainChangesNothing) {
    BindingTypeRegistry registry;
    registry.Struct<PluginLcdsResponse>("PluginLcdsResponse").Field("body", &PluginLcdsResponse::body);
    RegisterFrameworkTypes(registry);
    RegisterFrameworkTypes(registry);
    EXPECT_EQ(registry.Types().size(), 7u);
    EXPECT_EQ(registry.Events().size(), 5u);
    EXPECT_EQ(Members(*registry.FindType("PluginLcdsResponse")), std::vector<std::string>{"body: object"});
}

// A module whose own registration reuses a framework name: the framework's,
// registered first, stands.
class LateModule : public AppModule {
  public:
    LateModule() : AppModule("tav-late") {}
    void RegisterRoutesAndTypes() override {
        TypeRegistry()
            ->Struct<PluginManagerResource>("PluginResourceEvent")
            .Field("other", &PluginManagerResource::state);
    }
};

TEST(RegisterFrameworkTypes, LoadingRegistersThemBeforeTheModulesOwnTypes) {
    tav::test::HostedModule<LateModule> hosted;
    const BindingTypeInfo* event = hosted.module().TypeRegistry()->FindType("PluginResourceEvent");
    ASSERT_NE(event, nullptr);
    EXPECT_EQ(event->fields.size(), 3u);
    std::vector<std::string> events;
    const HostApiTable& table = *hosted.loadInfo().apiTable;
    for (const HostEventRecord* record = table.events; record != nullptr; record = record->next) {
        events.push_back(record->name);
    }
    EXPECT_EQ(events,
              (std::vector<std::string>{"OnCallback", "OnJsonApiEvent", "OnLcdsEvent", "OnServiceProxyAsyncEvent",
                                        "OnServiceProxyMethodEvent", "OnServiceProxyUuidEvent"}));
}

}  // namespace
}  // namespace wex
