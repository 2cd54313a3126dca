#include "plugin/framework_types.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "plugin/app_module.h"
#include "support/hosted_module.h"
#include "types/registry.h"

namespace wex {
namespace {

// Their fields and enumerators are in the reviewed type text of tests/leagues;
// the identities and event payloads are not.
TEST(RegisterFrameworkTypes, RegistersTheSharedRecordsUnderTheirFixedIdentities) {
    BindingTypeRegistry registry;
    RegisterFrameworkTypes(registry);
    const std::pair<std::uint32_t, const char*> types[] = {
        {0xF4E3B901, "PluginManagerState"},
        {0xFA58397C, "PluginManagerResource"},
        {0xDC24D2AD, "PluginResourceEventType"},
        {0xA54F35FD, "PluginResourceEvent"},
        {0x739F2EF4, "PluginLcdsEvent"},
        {0xF4476A4F, "PluginLcdsResponse"},
        {0x2C5E7588, "PluginServiceProxyResponse"},
    };
    EXPECT_EQ(registry.Types().size(), std::size(types));
    for (const auto& [identity, name] : types) {
        SCOPED_TRACE(name);
        const BindingTypeInfo* type = registry.FindType(identity);
        ASSERT_NE(type, nullptr);
        EXPECT_EQ(type->name, name);
        EXPECT_EQ(type->nameSpace, "hclient");
    }
    const std::pair<const char*, std::uint32_t> events[] = {
        {"OnJsonApiEvent", 0xA54F35FD},           {"OnLcdsEvent", 0x739F2EF4},
        {"OnServiceProxyUuidEvent", 0x2C5E7588},  {"OnServiceProxyMethodEvent", 0x2C5E7588},
        {"OnServiceProxyAsyncEvent", 0x2C5E7588},
    };
    EXPECT_EQ(registry.Events().size(), std::size(events));
    for (const auto& [name, payload] : events) {
        SCOPED_TRACE(name);
        const BindingEventInfo* event = registry.FindEvent(name);
        ASSERT_NE(event, nullptr);
        EXPECT_EQ(event->nameSpace, "hclient");
        EXPECT_FALSE(event->description.empty());
        EXPECT_EQ(event->payload.kind, BindingTypeKind::Struct);
        ASSERT_NE(event->payload.type, nullptr);
        EXPECT_EQ(event->payload.type->id, payload);
    }
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
