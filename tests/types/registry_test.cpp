#include "types/registry.h"

#include <gtest/gtest.h>

#include "binding/fnv1a.h"
#include "sample_model.h"

namespace wex {
namespace {

using namespace sample::leagues;

TEST(BindingTypeIdentity, EachNativeTypeHasOneStableIdentityNamedInEightUpperCaseHexDigits) {
    const BindingTypeIdentity& standing = BindingTypeIdentity::Of<Standing>();
    EXPECT_EQ(&standing, &BindingTypeIdentity::Of<Standing>());
    EXPECT_NE(standing.id, BindingTypeIdentity::Of<Division>().id);
    EXPECT_EQ(standing.id, Fnv1a32(StaticType::Name<Standing>()));
    EXPECT_EQ(BindingTypeIdentity::Make(0x397C).DefaultName(), "#0000397C");
    EXPECT_EQ(BindingTypeIdentity::Make(0xFFFFFFFF).DefaultName(), "#FFFFFFFF");
    EXPECT_TRUE(BindingTypeIdentity::Reserved().IsReserved());
    const std::string name = StaticType::Name<Standing>();
    EXPECT_NE(name.find("sample::leagues::Standing"), std::string::npos) << name;
}

using RegistryTest = SampleRegistry;

TEST_F(RegistryTest, TypesAreFoundByNameAndByIdentityAndTheFirstRegistrationOfANameWins) {
    const BindingTypeInfo* byName = registry_.FindType("SampleStanding");
    ASSERT_NE(byName, nullptr);
    EXPECT_EQ(registry_.FindType(BindingTypeIdentity::Of<Standing>().id), byName);
    EXPECT_EQ(byName->registry, &registry_);
    EXPECT_EQ(registry_.FindType("sampleStanding"), nullptr);
    EXPECT_EQ(registry_.FindType(BindingTypeIdentity::Of<Unregistered>().id), nullptr);

    // The first registration of a name wins.
    BindingStructBuilder<Key> again = registry_.Struct<Key>("SampleStanding", {"other"});
    again.Field("region", &Key::region).Description("changed");
    EXPECT_FALSE(again.Builder().IsNew());
    EXPECT_EQ(byName->fields.size(), 6u);
    EXPECT_EQ(byName->tags, std::vector<std::string>{"sample"});
    EXPECT_EQ(byName->description, "");
    EXPECT_EQ(byName->size, sizeof(Standing));
    EXPECT_EQ(registry_.FindType(BindingTypeIdentity::Of<Key>().id), registry_.FindType("SampleKey"));
    registry_.Enum<Tier>("SampleTier").Value("SILVER", Tier{2});
    EXPECT_EQ(registry_.FindType("SampleTier")->enumValues.size(), 3u);

    // A type without a native one is found by its name only.
    BindingTypeBuilder builder = registry_.BeginType(0, "Described", BindingTypeIdentity::Reserved(), false);
    EXPECT_TRUE(builder.IsNew());
    builder.SetNameSpace("hclient").SetDescription("A description without a native type.");
    EXPECT_EQ(registry_.FindType(BindingTypeIdentity::kReservedId), nullptr);
    const BindingTypeInfo* described = registry_.FindType("Described");
    ASSERT_NE(described, nullptr);
    EXPECT_EQ(described->nameSpace, "hclient");
    EXPECT_EQ(described->description, "A description without a native type.");
}

TEST_F(RegistryTest, EnumeratorsByNameAndByValue) {
    const BindingTypeInfo& tier = *registry_.FindType("SampleTier");
    EXPECT_EQ(tier.enumValues.at("GOLD").owner, &tier);

    // Two names of one value answer the first in byte order; a name added again takes the new value.
    registry_.BeginType(4, "Shared", BindingTypeIdentity::Make(0x5EED), true)
        .AddEnumValue("b", 1)
        .AddEnumValue("B", 1)
        .AddEnumValue("X", 2, "first")
        .AddEnumValue("X", 3, "second");
    EXPECT_EQ(registry_.EnumValueName(0x5EED, 1), "B");
    const BindingTypeInfo& shared = *registry_.FindType("Shared");
    ASSERT_EQ(shared.enumValues.size(), 3u);
    EXPECT_EQ(shared.enumValues.at("X").value, 3);
    EXPECT_EQ(shared.enumValues.at("X").description, "second");
}

TEST_F(RegistryTest, FunctionsAndEventsKeepTheirFirstRecord) {
    BindingFunctionInfo function;
    function.name = "GetSample";
    function.description = "first";
    EXPECT_TRUE(registry_.AddFunction(function).second);
    function.description = "second";
    const auto [kept, isNew] = registry_.AddFunction(function);
    EXPECT_FALSE(isNew);
    EXPECT_EQ(kept->description, "first");
    EXPECT_EQ(registry_.FindFunction("GetSample"), kept);
    EXPECT_EQ(registry_.FindFunction("Other"), nullptr);
    BindingEventInfo event;
    event.name = "OnSample";
    EXPECT_TRUE(registry_.AddEvent(event).second);
    EXPECT_FALSE(registry_.AddEvent(event).second);
    EXPECT_EQ(registry_.FindEvent("OnSample"), registry_.Events()[0]);
}

}  // namespace
}  // namespace wex
