#include <gtest/gtest.h>

#include "binding_values.h"
#include "sample_model.h"

namespace wex {
namespace {

using namespace sample::leagues;
using namespace wex::test;

class EnumConversion : public ::testing::Test {
  protected:
    void SetUp() override { Register(registry_); }
    BindingTypeRegistry registry_;
};

std::string NotValid(std::string_view value) {
    return std::string(value) + " is not a valid SampleTier enumeration value for 'field'.";
}

TEST_F(EnumConversion, ByExactNameOrByNumber) {
    const struct {
        BindingProperty input;
        Tier expected;
        std::string message;
    } rows[] = {
        {Text("GOLD"), Tier::GOLD, ""},
        {Text("gold"), Tier::NONE, NotValid("gold")},
        {Text("Gold "), Tier::NONE, NotValid("Gold ")},
        {Text("4"), Tier::PLATINUM, ""},
        {Text("0x3"), Tier::GOLD, ""},
        {Text(" 0"), Tier::NONE, ""},
        {Text("1"), Tier::NONE, NotValid("1")},
        {Text("4294967299"), Tier::NONE, NotValid("4294967299")},
        {Text("99999999999999999999"), Tier::NONE, NotValid("99999999999999999999")},
        {Text("3x"), Tier::NONE, NotValid("3x")},
        {Text(""), Tier::NONE, ""},
        {Signed(3), Tier::GOLD, ""},
        {Signed(-1), Tier::NONE, NotValid("-1")},
        {Signed(4294967299LL), Tier::NONE, NotValid("4294967299")},
        {Unsigned(4), Tier::PLATINUM, ""},
        {Unsigned(18446744073709551615u), Tier::NONE, NotValid("18446744073709551615")},
        {Enum(4), Tier::PLATINUM, ""},
        {Enum(2), Tier::NONE, NotValid("2")},
        {Float(3), Tier::NONE,
         "Couldn't assign value to 'field' of enum type because the input is of an invalid type float."},
        {Bool(true), Tier::NONE,
         "Couldn't assign value to 'field' of enum type because the input is of an invalid type bool."},
        {Collection(), Tier::NONE,
         "Couldn't assign value to 'field' of enum type because the input is of an invalid type collection."},
        {BindingProperty(), Tier::NONE, "A value for 'field' is required."},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.input.ToString() + " " + std::string(BindingPropertyKindName(row.input.Kind())));
        Tier out = Tier::NONE;
        EXPECT_EQ(ConvertInto(out, row.input, registry_), row.message);
        EXPECT_EQ(out, row.expected);
    }
}

TEST_F(EnumConversion, AFailureLeavesTheValueAsItWas) {
    Tier out = Tier::PLATINUM;
    EXPECT_EQ(ConvertInto(out, Text("SILVER"), registry_), NotValid("SILVER"));
    EXPECT_EQ(out, Tier::PLATINUM);
}

TEST_F(EnumConversion, AnUnregisteredEnumerationIsNamedByItsIdentity) {
    enum class Loose { A = 1 };
    Loose out = Loose::A;
    const std::string name(BindingTypeIdentity::Of<Loose>().DefaultName());
    EXPECT_EQ(ConvertInto(out, Signed(1), registry_), "1 is not a valid " + name + " enumeration value for 'field'.");
    EXPECT_EQ(ToBinding(out, registry_).EnumValue(), 1);
}

TEST_F(EnumConversion, AStringFieldTakesTheEnumeratorsName) {
    std::string out;
    EXPECT_EQ(ConvertInto(out, Enum(3, BindingTypeIdentity::Of<Tier>()), registry_), "");
    EXPECT_EQ(out, "GOLD");
    EXPECT_EQ(ConvertInto(out, Enum(5, BindingTypeIdentity::Of<Tier>()), registry_),
              "5 is not a valid enumeration value for 'field'.");
    EXPECT_EQ(out, "GOLD");
}

TEST_F(EnumConversion, ToBindingKeepsTheNumberAndTheType) {
    const BindingProperty value = ToBinding(Tier::GOLD, registry_);
    EXPECT_EQ(value.Kind(), BindingPropertyKind::Enum);
    EXPECT_EQ(value.EnumValue(), 3);
    EXPECT_EQ(value.EnumTypeId(), BindingTypeIdentity::Of<Tier>().id);
    EXPECT_EQ(value.ToString(), "3");
}

}  // namespace
}  // namespace wex
