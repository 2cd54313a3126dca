#include "types/registry.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "binding/fnv1a.h"
#include "sample_model.h"

namespace sample::leagues {
struct FixedIdentity {
    int value = 0;
};
}  // namespace sample::leagues

template <>
struct wex::NativeTypeId<sample::leagues::FixedIdentity> : std::integral_constant<std::uint32_t, 0xFA58397C> {};

namespace wex {
namespace {

using namespace sample::leagues;

TEST(BindingTypeKind, NamesEveryKindAndNothingElse) {
    const std::vector<std::string_view> names = {"",       "bool",   "int8",   "uint8",  "int16",    "uint16", "int32",
                                                 "uint32", "int64",  "uint64", "float",  "double",   "string", "object",
                                                 "blob",   "vector", "enum",   "struct", "callback", "map"};
    for (std::size_t value = 0; value < names.size(); ++value) {
        EXPECT_EQ(BindingTypeKindName(static_cast<BindingTypeKind>(value)), names[value]);
    }
    EXPECT_EQ(BindingTypeKindName(static_cast<BindingTypeKind>(20)), "");
    EXPECT_EQ(BindingTypeKindName(static_cast<BindingTypeKind>(-1)), "");
}

TEST(BindingTypeIdentity, DefaultNameIsTheIdentifierInEightUpperCaseHexDigits) {
    EXPECT_EQ(BindingTypeIdentity::Make(0xFA58397C).DefaultName(), "#FA58397C");
    EXPECT_EQ(BindingTypeIdentity::Make(0x1).DefaultName(), "#00000001");
    EXPECT_EQ(BindingTypeIdentity::Make(0).DefaultName(), "#00000000");
    EXPECT_EQ(BindingTypeIdentity::Make(0xFFFFFFFF).DefaultName(), "#FFFFFFFF");
    EXPECT_EQ(BindingTypeIdentity::Reserved().id, 0x1BE7EF8Eu);
    EXPECT_TRUE(BindingTypeIdentity::Reserved().IsReserved());
}

TEST(BindingTypeIdentity, EachNativeTypeHasOneStableIdentity) {
    const BindingTypeIdentity& standing = BindingTypeIdentity::Of<Standing>();
    EXPECT_EQ(&standing, &BindingTypeIdentity::Of<Standing>());
    EXPECT_NE(standing.id, BindingTypeIdentity::Of<Division>().id);
    EXPECT_EQ(standing.id, Fnv1a32(StaticType::Name<Standing>()));
    EXPECT_EQ(BindingTypeIdentity::Of<FixedIdentity>().id, 0xFA58397Cu);
    EXPECT_EQ(BindingTypeIdentity::Of<FixedIdentity>().DefaultName(), "#FA58397C");
}

TEST(StaticType, NameSpellsTheTypeWithItsNameSpace) {
    const std::string name = StaticType::Name<Standing>();
    EXPECT_NE(name.find("sample::leagues::Standing"), std::string::npos) << name;
    EXPECT_EQ(name.find("sample::leagues::Division"), std::string::npos) << name;
}

class RegistryTest : public ::testing::Test {
  protected:
    void SetUp() override { Register(registry_); }
    BindingTypeRegistry registry_;
};

TEST_F(RegistryTest, TypesAreFoundByNameAndByIdentifier) {
    const BindingTypeInfo* byName = registry_.FindType("SampleStanding");
    ASSERT_NE(byName, nullptr);
    EXPECT_EQ(registry_.FindType(BindingTypeIdentity::Of<Standing>().id), byName);
    EXPECT_EQ(byName->size, sizeof(Standing));
    EXPECT_FALSE(byName->isEnum);
    EXPECT_EQ(byName->identity, &BindingTypeIdentity::Of<Standing>());
    EXPECT_EQ(byName->registry, &registry_);
    EXPECT_EQ(byName->tags, std::vector<std::string>{"sample"});
    EXPECT_EQ(registry_.FindType("sampleStanding"), nullptr);
    EXPECT_EQ(registry_.FindType(BindingTypeIdentity::Of<Unregistered>().id), nullptr);
    EXPECT_TRUE(registry_.FindType("SampleTier")->isEnum);
}

TEST_F(RegistryTest, FieldsAreDescribedFromTheirMemberPointers) {
    const BindingTypeInfo& standing = *registry_.FindType("SampleStanding");
    ASSERT_EQ(standing.fields.size(), 6u);
    const BindingFieldInfo& emblems = standing.fields[4];
    EXPECT_EQ(emblems.name, "emblems");
    EXPECT_EQ(emblems.nameHash, Fnv1a32("emblems"));
    EXPECT_EQ(emblems.offset, offsetof(Standing, emblems));
    EXPECT_EQ(emblems.type.kind, BindingTypeKind::Vector);
    EXPECT_EQ(emblems.type.elementKind, BindingTypeKind::Enum);
    EXPECT_EQ(emblems.type.type, &BindingTypeIdentity::Of<Emblem>());
    EXPECT_EQ(emblems.flags, 0u);
    EXPECT_FALSE(emblems.optional);

    const BindingFieldInfo& position = standing.fields[1];
    EXPECT_EQ(position.type.kind, BindingTypeKind::UInt64);
    EXPECT_EQ(position.type.elementKind, BindingTypeKind::None);
    EXPECT_EQ(position.type.type, nullptr);
    EXPECT_EQ(position.offset, offsetof(Standing, position));

    const BindingTypeInfo& division = *registry_.FindType("SampleDivision");
    EXPECT_EQ(division.fields[1].type.kind, BindingTypeKind::Vector);
    EXPECT_EQ(division.fields[1].type.elementKind, BindingTypeKind::Struct);
    EXPECT_EQ(division.fields[2].type.kind, BindingTypeKind::Map);
    EXPECT_EQ(division.fields[2].type.elementKind, BindingTypeKind::Int32);
    EXPECT_EQ(division.fields[3].type.kind, BindingTypeKind::Object);
    EXPECT_EQ(division.fields[4].type.kind, BindingTypeKind::Blob);
    EXPECT_EQ(division.fields[5].type.kind, BindingTypeKind::Float);

    const BindingTypeInfo& key = *registry_.FindType("SampleKey");
    EXPECT_EQ(key.fields[0].flags, BindingFieldFlags::Required);
    const BindingTypeInfo& sparse = *registry_.FindType("SampleSparse");
    EXPECT_EQ(sparse.fields[0].flags, BindingFieldFlags::OmitWhenDefault);
    EXPECT_EQ(sparse.fields[6].type.kind, BindingTypeKind::Struct);
    EXPECT_EQ(sparse.fields[6].type.type, &BindingTypeIdentity::Of<Key>());
}

TEST_F(RegistryTest, TheFirstRegistrationOfANameWins) {
    BindingStructBuilder<Key> again = registry_.Struct<Key>("SampleStanding", {"other"});
    again.Field("region", &Key::region).Description("changed");
    EXPECT_FALSE(again.Builder().IsNew());
    const BindingTypeInfo& standing = *registry_.FindType("SampleStanding");
    EXPECT_EQ(standing.fields.size(), 6u);
    EXPECT_EQ(standing.tags, std::vector<std::string>{"sample"});
    EXPECT_EQ(standing.description, "");
    EXPECT_EQ(standing.size, sizeof(Standing));
    EXPECT_EQ(registry_.FindType(BindingTypeIdentity::Of<Key>().id), registry_.FindType("SampleKey"));

    registry_.Enum<Tier>("SampleTier").Value("SILVER", Tier{2});
    EXPECT_EQ(registry_.FindType("SampleTier")->enumValues.size(), 3u);
}

TEST_F(RegistryTest, TheReservedIdentityIsNotIndexed) {
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
    EXPECT_TRUE(BindingTypeRegistry::IsValidEnumValue(tier, 3));
    EXPECT_TRUE(BindingTypeRegistry::IsValidEnumValue(tier, 0));
    EXPECT_FALSE(BindingTypeRegistry::IsValidEnumValue(tier, 1));
    EXPECT_EQ(registry_.EnumValueName(BindingTypeIdentity::Of<Tier>().id, 4), "PLATINUM");
    EXPECT_EQ(registry_.EnumValueName(BindingTypeIdentity::Of<Tier>().id, 1), std::nullopt);
    EXPECT_EQ(registry_.EnumValueName(BindingTypeIdentity::Of<Unregistered>().id, 0), std::nullopt);
    EXPECT_EQ(tier.enumValues.at("GOLD").owner, &tier);
}

TEST_F(RegistryTest, TwoNamesOfOneValueAnswerTheFirstInByteOrder) {
    registry_.BeginType(4, "Shared", BindingTypeIdentity::Make(0x5EED), true)
        .AddEnumValue("b", 1)
        .AddEnumValue("a", 1)
        .AddEnumValue("B", 1, "upper case sorts first");
    EXPECT_EQ(registry_.EnumValueName(0x5EED, 1), "B");
}

TEST_F(RegistryTest, AnEnumeratorAddedAgainTakesTheNewValue) {
    registry_.BeginType(4, "Changing", BindingTypeIdentity::Make(0xC0DE), true)
        .AddEnumValue("X", 1, "first")
        .AddEnumValue("X", 2, "second");
    const BindingTypeInfo& changing = *registry_.FindType("Changing");
    ASSERT_EQ(changing.enumValues.size(), 1u);
    EXPECT_EQ(changing.enumValues.at("X").value, 2);
    EXPECT_EQ(changing.enumValues.at("X").description, "second");
}

TEST_F(RegistryTest, SnapshotsAreInByteOrderOfTheNames) {
    std::vector<std::string> names;
    for (const BindingTypeInfo* type : registry_.Types()) {
        names.push_back(type->name);
    }
    EXPECT_EQ(names, (std::vector<std::string>{"SampleDivision", "SampleEmblem", "SampleKey", "SampleSparse",
                                               "SampleStanding", "SampleTier"}));
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
    event.payload = TypeIdentifierOf<Standing>();
    registry_.AddEvent(event);
    event.name = "OnEarlier";
    registry_.AddEvent(event);
    ASSERT_EQ(registry_.Events().size(), 2u);
    EXPECT_EQ(registry_.Events()[0]->name, "OnEarlier");
    EXPECT_EQ(registry_.FindEvent("OnSample")->payload.type, &BindingTypeIdentity::Of<Standing>());
    EXPECT_EQ(registry_.Functions().size(), 1u);
}

}  // namespace
}  // namespace wex
