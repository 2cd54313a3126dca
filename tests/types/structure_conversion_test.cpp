#include <gtest/gtest.h>

#include <cmath>
#include <stdexcept>

#include "binding_values.h"
#include "sample_model.h"

namespace wex {
namespace {

using namespace sample::leagues;
using namespace wex::test;

class StructureConversion : public ::testing::Test {
  protected:
    void SetUp() override { Register(registry_); }

    template <class T>
    std::string Convert(T& out, const BindingProperty& input) {
        return ConvertInto(out, input, registry_);
    }

    static BindingProperty StandingInput() {
        BindingProperty input;
        input.Member("id").SetString("42");
        input.Member("position").SetUnsigned(3);
        input.Member("points").SetString("-0x10");
        input.Member("inactive").SetString("true");
        input.Member("emblems").At(0).SetString("HOTSTREAK");
        input.Member("emblems").At(1).SetSigned(2);
        input.Member("tier").SetString("GOLD");
        input.Member("unknown").SetString("ignored");
        return input;
    }

    BindingTypeRegistry registry_;
};

TEST_F(StructureConversion, AStructureConvertsFieldByFieldAndIgnoresUnknownMembers) {
    Standing standing;
    standing.seriesWins = 9;
    EXPECT_EQ(Convert(standing, StandingInput()), "");
    EXPECT_EQ(standing.id, "42");
    EXPECT_EQ(standing.position, 3u);
    EXPECT_EQ(standing.points, -16);
    EXPECT_TRUE(standing.inactive);
    EXPECT_EQ(standing.emblems, (std::vector<Emblem>{Emblem::HOTSTREAK, Emblem::FRESHBLOOD}));
    EXPECT_EQ(standing.tier, Tier::GOLD);
    EXPECT_EQ(standing.seriesWins, 9u);
}

TEST_F(StructureConversion, MissingOrEmptyMembersKeepTheirDefaults) {
    BindingProperty input;
    input.Member("id");
    input.Member("points").SetSigned(5);
    Standing standing;
    standing.id = "default";
    standing.emblems = {Emblem::VETERAN};
    EXPECT_EQ(Convert(standing, input), "");
    EXPECT_EQ(standing.id, "default");
    EXPECT_EQ(standing.points, 5);
    EXPECT_EQ(standing.emblems, std::vector<Emblem>{Emblem::VETERAN});
}

TEST_F(StructureConversion, TheMessagesOfStructures) {
    Standing standing;
    EXPECT_EQ(Convert(standing, Collection()),
              "Couldn't assign value to 'field' of type SampleStanding because the input not a structure.");
    EXPECT_EQ(Convert(standing, BindingProperty()),
              "Couldn't assign value to 'field' of type SampleStanding because the input not a structure.");
    Unregistered unregistered;
    EXPECT_EQ(Convert(unregistered, Structure()),
              "Couldn't assign value to 'field' because the input is an unregistered structure or not a structure at "
              "all.");
}

TEST_F(StructureConversion, ARequiredFieldMustBePresentAndNotEmpty) {
    Key key;
    BindingProperty input;
    input.Member("region").SetString("EUW");
    EXPECT_EQ(Convert(key, input),
              "Couldn't assign value to 'field' of type SampleKey because the input structure doesn't have required "
              "field 'number'.");
    EXPECT_EQ(key.region, "EUW");
    input.Member("number");
    EXPECT_EQ(Convert(key, input),
              "Couldn't assign value to 'field' of type SampleKey because the input structure doesn't have required "
              "field 'number'.");
    input.Member("number").SetSigned(7);
    EXPECT_EQ(Convert(key, input), "");
    EXPECT_EQ(key.number, 7);
}

TEST_F(StructureConversion, TheFirstErrorInFieldOrderDepthFirstIsTheOneReported) {
    BindingProperty input;
    input.Member("name").SetString("I");
    input.Member("standings").At(0).Member("points").SetString("many");
    input.Member("standings").At(1).Member("id").SetSigned(1);
    input.Member("counts").Member("a").SetString("x");
    input.Member("ratio").SetString("bad");
    Division division;
    EXPECT_EQ(Convert(division, input), "Value many for 'points' of type int64 is in an incorrect format");
    EXPECT_EQ(division.name, "I");
    ASSERT_EQ(division.standings.size(), 2u);
    EXPECT_EQ(division.standings[1].id, "");
    EXPECT_TRUE(division.counts.empty());
    EXPECT_EQ(division.ratio, 0.0f);
}

TEST_F(StructureConversion, VectorElementsUseTheVectorsName) {
    std::vector<std::int32_t> numbers = {1, 2, 3};
    BindingProperty input;
    input.At(0).SetSigned(4);
    input.At(2).SetString("x");
    EXPECT_EQ(Convert(numbers, input), "Value x for 'field' of type int32 is in an incorrect format");
    input.At(2).SetSigned(6);
    EXPECT_EQ(Convert(numbers, input), "");
    EXPECT_EQ(numbers, (std::vector<std::int32_t>{4, 0, 6}));
}

TEST_F(StructureConversion, AVectorIsEmptiedEvenWhenNothingElseHappens) {
    std::vector<std::int32_t> numbers = {1};
    EXPECT_EQ(Convert(numbers, Structure()),
              "Couldn't assign value to 'field' of type vector because the input not a collection.");
    EXPECT_TRUE(numbers.empty());
    numbers = {1};
    BindingProperty status;
    status.SetError("earlier");
    FromBinding(status, numbers, Collection(), "field", registry_);
    EXPECT_TRUE(numbers.empty());
    EXPECT_EQ(status.GetError(), "earlier");
}

TEST_F(StructureConversion, VectorsOfBoolsAndOfVectors) {
    std::vector<bool> flags;
    BindingProperty input;
    input.At(0).SetBool(true);
    input.At(1).SetString("0");
    input.At(2).SetString("1");
    EXPECT_EQ(Convert(flags, input), "");
    EXPECT_EQ(flags, (std::vector<bool>{true, false, true}));
    EXPECT_EQ(ToBinding(flags, registry_).At(2).Kind(), BindingPropertyKind::Bool);

    std::vector<std::vector<std::string>> nested;
    BindingProperty rows;
    rows.At(1).At(1).SetString("b");
    EXPECT_EQ(Convert(nested, rows), "");
    EXPECT_EQ(nested, (std::vector<std::vector<std::string>>{{}, {"", "b"}}));
    EXPECT_EQ(TypeIdentifierOf<decltype(nested)>().elementKind, BindingTypeKind::Vector);
}

TEST_F(StructureConversion, MapsConvertMemberByMember) {
    std::map<std::string, std::int32_t> counts = {{"old", 1}};
    BindingProperty input;
    input.Member("b").SetSigned(2);
    input.Member("a").SetString("0x1");
    input.Member("c");
    EXPECT_EQ(Convert(counts, input), "");
    EXPECT_EQ(counts, (std::map<std::string, std::int32_t>{{"a", 1}, {"b", 2}, {"c", 0}}));
    EXPECT_EQ(Convert(counts, Collection()),
              "Couldn't assign value to 'field' of type map because the input not a structure.");
    EXPECT_TRUE(counts.empty());

    const BindingProperty output = ToBinding(std::map<std::string, std::int32_t>{{"z", 1}, {"y", 2}}, registry_);
    EXPECT_EQ(output.Kind(), BindingPropertyKind::Structure);
    EXPECT_EQ((*output.Members().begin()).name, "y");
}

TEST_F(StructureConversion, ToBindingWritesEveryRegisteredField) {
    Standing standing;
    standing.id = "7";
    standing.points = -3;
    standing.emblems = {Emblem::VETERAN, Emblem::HOTSTREAK};
    standing.tier = Tier::PLATINUM;
    standing.seriesWins = 4;
    const BindingProperty output = ToBinding(standing, registry_);
    ASSERT_TRUE(output.IsValid());
    std::vector<std::string> names;
    for (const BindingMember member : output.Members()) {
        names.emplace_back(member.name);
    }
    EXPECT_EQ(names, (std::vector<std::string>{"emblems", "id", "inactive", "points", "position", "tier"}));
    EXPECT_EQ(output.Member("id").AsString(), "7");
    EXPECT_EQ(output.Member("points").Kind(), BindingPropertyKind::Signed);
    EXPECT_EQ(output.Member("position").Kind(), BindingPropertyKind::Unsigned);
    EXPECT_EQ(output.Member("inactive").Kind(), BindingPropertyKind::Bool);
    EXPECT_EQ(output.Member("tier").EnumValue(), 4);
    EXPECT_EQ(output.Member("tier").EnumTypeId(), BindingTypeIdentity::Of<Tier>().id);
    EXPECT_EQ(output.Member("emblems").At(1).EnumValue(), 1);
}

TEST_F(StructureConversion, AStructureRoundTrips) {
    Division division;
    division.name = "Ahri's Zealots";
    division.standings.resize(2);
    division.standings[0].id = "1";
    division.standings[0].emblems = {Emblem::FRESHBLOOD};
    division.standings[1].points = 100;
    division.standings[1].tier = Tier::GOLD;
    division.counts = {{"wins", 3}, {"losses", -1}};
    division.extra.Member("free").At(0).SetFloat(1.5);
    division.badge = {0, 255};
    division.ratio = 0.25f;
    const BindingProperty value = ToBinding(division, registry_);
    Division back;
    EXPECT_EQ(Convert(back, value), "");
    EXPECT_EQ(back.name, division.name);
    ASSERT_EQ(back.standings.size(), 2u);
    EXPECT_EQ(back.standings[0].emblems, division.standings[0].emblems);
    EXPECT_EQ(back.standings[1].points, 100);
    EXPECT_EQ(back.standings[1].tier, Tier::GOLD);
    EXPECT_EQ(back.counts, division.counts);
    EXPECT_EQ(back.extra.Member("free").At(0).AsDouble(), 1.5);
    EXPECT_EQ(back.badge, division.badge);
    EXPECT_EQ(back.ratio, 0.25f);
}

TEST_F(StructureConversion, OmitWhenDefaultLeavesOutFieldsThatHoldNothing) {
    Sparse sparse;
    BindingProperty output = ToBinding(sparse, registry_);
    EXPECT_TRUE(output.IsValid());
    EXPECT_EQ(output.Kind(), BindingPropertyKind::Structure);
    EXPECT_EQ(output.Size(), 1u);  // the key: a structure with its two members
    EXPECT_TRUE(output.HasMember("key"));

    sparse.count = -1;
    sparse.label = "x";
    sparse.list = {0};
    sparse.tier = Tier::GOLD;
    sparse.ratio = std::nan("");
    sparse.flag = true;
    output = ToBinding(sparse, registry_);
    EXPECT_EQ(output.Size(), 7u);
}

TEST_F(StructureConversion, ToBindingOfAnUnregisteredStructureFails) {
    const BindingProperty output = ToBinding(Unregistered{}, registry_);
    EXPECT_FALSE(output.IsValid());
    EXPECT_EQ(output.GetError(), "Couldn't convert native value because it's an unregistered structure.");

    std::vector<Unregistered> many(3);
    const BindingProperty list = ToBinding(many, registry_);
    EXPECT_EQ(list.GetError(), "Couldn't convert native value because it's an unregistered structure.");
    EXPECT_EQ(list.Kind(), BindingPropertyKind::Structure);
}

TEST_F(StructureConversion, TheRequiredWrapperRefusesAnEmptyInputOfAnyType) {
    Standing standing;
    BindingProperty status;
    FromBindingRequired(status, standing, BindingProperty(), "body", registry_);
    EXPECT_EQ(status.GetError(), "A value for 'body' is required.");
    BindingProperty good;
    FromBindingRequired(good, standing, StandingInput(), "body", registry_);
    EXPECT_TRUE(good.IsValid());
    EXPECT_EQ(standing.id, "42");
}

TEST_F(StructureConversion, ConvertersWorkThroughTheirInterface) {
    const BindingConverter& converter = ConverterOf<std::vector<Emblem>>();
    EXPECT_EQ(&converter, &ConverterOf<std::vector<Emblem>>());
    std::vector<Emblem> emblems;
    BindingProperty input;
    input.At(0).SetString("VETERAN");
    BindingProperty status;
    converter.FromBinding(status, &emblems, input, "emblems", registry_);
    EXPECT_EQ(emblems, std::vector<Emblem>{Emblem::VETERAN});
    BindingProperty output;
    converter.ToBinding(output, &emblems, registry_);
    EXPECT_EQ(output.At(0).Kind(), BindingPropertyKind::Enum);
}

// A record whose construction throws once it is registered, as a record
// holding a resource might.
struct Fragile {
    static inline bool broken = false;
    Fragile() {
        if (broken) {
            throw std::runtime_error("no room for a fragile record");
        }
    }
    std::int32_t value = 0;
};

TEST_F(StructureConversion, AnExceptionInsideAConversionFailsItWithItsText) {
    registry_.Struct<Fragile>("Fragile").Field("value", &Fragile::value);
    Fragile::broken = true;
    std::vector<Fragile> out;
    BindingProperty input;
    input.At(0).Member("value").SetSigned(1);
    EXPECT_EQ(Convert(out, input), "no room for a fragile record");
    Fragile::broken = false;
}

}  // namespace
}  // namespace wex
