#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "binding_values.h"
#include "sample_model.h"

namespace wex {

namespace {

using namespace wex::test;

class ScalarConversion : public ::testing::Test {
  public:
    template <class T>
    std::string Convert(T& out, const BindingProperty& input) {
        return ConvertInto(out, input, registry_);
    }

  protected:
    BindingTypeRegistry registry_;
};

std::string Invalid(std::string_view type, std::string_view kind) {
    return "Couldn't assign value to 'field' of type " + std::string(type) +
           " because the input is of an invalid type " + std::string(kind) + ".";
}
std::string OutOfRange(std::string_view value, std::string_view type) {
    return "Value " + std::string(value) + " for 'field' of type " + std::string(type) + " is out of range";
}
std::string BadFormat(std::string_view value, std::string_view type) {
    return "Value " + std::string(value) + " for 'field' of type " + std::string(type) + " is in an incorrect format";
}
const std::string kRequired = "A value for 'field' is required.";

TEST_F(ScalarConversion, Bool) {
    const struct {
        BindingProperty input;
        bool expected;
        std::string message;
    } rows[] = {
        {Bool(true), true, ""},
        {Bool(false), false, ""},
        {Text("1"), true, ""},
        {Text("true"), true, ""},
        {Text("0"), false, ""},
        {Text("false"), false, ""},
        {Text("TRUE"), true,
         "Value TRUE for 'field' of type bool is in an incorrect format. Options are \"true\", \"false\", \"1\", "
         "\"0\"."},
        {Text(""), true,
         "Value  for 'field' of type bool is in an incorrect format. Options are \"true\", \"false\", \"1\", \"0\"."},
        {Signed(1), true, Invalid("bool", "signed")},
        {Unsigned(0), true, Invalid("bool", "unsigned")},
        {Float(1), true, Invalid("bool", "float")},
        {Enum(1), true, Invalid("bool", "enum")},
        {Blob({1}), true, Invalid("bool", "blob")},
        {Collection(), true, Invalid("bool", "collection")},
        {Structure(), true, Invalid("bool", "structure")},
        {BindingProperty(), true, kRequired},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.input.ToString() + " " + std::string(BindingPropertyKindName(row.input.Kind())));
        bool out = !row.expected;
        const bool before = out;
        EXPECT_EQ(Convert(out, row.input), row.message);
        EXPECT_EQ(out, row.message.empty() ? row.expected : before);
    }
}

TEST_F(ScalarConversion, Int32FromText) {
    const struct {
        const char* text;
        std::int32_t expected;
        std::string message;
    } rows[] = {
        {"0x10", 16, ""},
        {"0X1f", 31, ""},
        {"010", 8, ""},
        {"42", 42, ""},
        {"+7", 7, ""},
        {" \t-12", -12, ""},
        {"", 0, ""},
        {"2147483647", 2147483647, ""},
        {"-2147483648", -2147483647 - 1, ""},
        {"2147483648", 0, OutOfRange("2147483648", "int32")},
        {"-2147483649", 0, OutOfRange("-2147483649", "int32")},
        {"3000000000", 0, OutOfRange("3000000000", "int32")},
        {"99999999999999999999", 0, OutOfRange("99999999999999999999", "int32")},
        {"12abc", 0, BadFormat("12abc", "int32")},
        {"08", 0, BadFormat("08", "int32")},
        {"0x", 0, BadFormat("0x", "int32")},
        {"-", 0, BadFormat("-", "int32")},
        {"   ", 0, BadFormat("   ", "int32")},
        {"5 ", 0, BadFormat("5 ", "int32")},
        {"1.5", 0, BadFormat("1.5", "int32")},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        std::int32_t out = -99;
        EXPECT_EQ(Convert(out, Text(row.text)), row.message);
        EXPECT_EQ(out, row.message.empty() ? row.expected : -99);
    }
}

TEST_F(ScalarConversion, TextWithAZeroByteHasCharactersLeftOver) {
    std::int64_t out = 0;
    BindingProperty input;
    input.SetString(std::string_view("12\0", 3));
    EXPECT_EQ(Convert(out, input), BadFormat(std::string_view("12\0", 3), "int64"));
}

TEST_F(ScalarConversion, Int32FromOtherKinds) {
    const struct {
        BindingProperty input;
        std::int32_t expected;
        std::string message;
    } rows[] = {
        {Signed(-2147483648LL), -2147483647 - 1, ""},
        {Signed(2147483647), 2147483647, ""},
        {Signed(-2147483649LL), 0, OutOfRange("-2147483649", "int32")},
        {Signed(2147483648LL), 0, OutOfRange("2147483648", "int32")},
        {Unsigned(2147483647), 2147483647, ""},
        {Unsigned(2147483648u), 0, OutOfRange("2147483648", "int32")},
        {Unsigned(std::numeric_limits<std::uint64_t>::max()), 0, OutOfRange("18446744073709551615", "int32")},
        {Enum(-4), -4, ""},
        {Float(5.9), 5, ""},
        {Float(-5.9), -5, ""},
        {Float(2147483647.0), 2147483647, ""},
        {Float(2147483647.5), 0, OutOfRange("2.14748e+09", "int32")},
        {Float(-2147483649.0), 0, OutOfRange("-2.14748e+09", "int32")},
        {Float(std::nan("")), 0, OutOfRange("nan", "int32")},
        {Float(INFINITY), 0, OutOfRange("inf", "int32")},
        {Bool(true), 0, Invalid("int32", "bool")},
        {Blob({}), 0, Invalid("int32", "blob")},
        {Collection(), 0, Invalid("int32", "collection")},
        {Structure(), 0, Invalid("int32", "structure")},
        {BindingProperty(), 0, kRequired},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.input.ToString() + " " + std::string(BindingPropertyKindName(row.input.Kind())));
        std::int32_t out = 77;
        EXPECT_EQ(Convert(out, row.input), row.message);
        EXPECT_EQ(out, row.message.empty() ? row.expected : 77);
    }
}

// The bounds of each width are accepted and the values one beyond them refused.
template <class T>
void CheckSignedBounds(ScalarConversion& test, std::string_view typeName,
                       std::string (ScalarConversion::*convert)(T&, const BindingProperty&)) {
    SCOPED_TRACE(std::string(typeName));
    const std::int64_t min = std::numeric_limits<T>::min();
    const std::int64_t max = std::numeric_limits<T>::max();
    T out{};
    EXPECT_EQ((test.*convert)(out, Signed(min)), "");
    EXPECT_EQ(out, min);
    EXPECT_EQ((test.*convert)(out, Text(std::to_string(max))), "");
    EXPECT_EQ(out, max);
    if (min > std::numeric_limits<std::int64_t>::min()) {
        EXPECT_EQ((test.*convert)(out, Signed(min - 1)), OutOfRange(std::to_string(min - 1), typeName));
        EXPECT_EQ((test.*convert)(out, Text(std::to_string(min - 1))), OutOfRange(std::to_string(min - 1), typeName));
    }
    const std::uint64_t aboveMax = static_cast<std::uint64_t>(max) + 1;
    EXPECT_EQ((test.*convert)(out, Unsigned(aboveMax)), OutOfRange(std::to_string(aboveMax), typeName));
    EXPECT_EQ((test.*convert)(out, Text(std::to_string(aboveMax))), OutOfRange(std::to_string(aboveMax), typeName));
    EXPECT_EQ(out, max);
}

template <class T>
void CheckUnsignedBounds(ScalarConversion& test, std::string_view typeName,
                         std::string (ScalarConversion::*convert)(T&, const BindingProperty&)) {
    SCOPED_TRACE(std::string(typeName));
    const std::uint64_t max = std::numeric_limits<T>::max();
    T out{};
    EXPECT_EQ((test.*convert)(out, Signed(0)), "");
    EXPECT_EQ(out, 0u);
    EXPECT_EQ((test.*convert)(out, Unsigned(max)), "");
    EXPECT_EQ(out, max);
    EXPECT_EQ((test.*convert)(out, Text(std::to_string(max))), "");
    EXPECT_EQ((test.*convert)(out, Signed(-1)), OutOfRange("-1", typeName));
    EXPECT_EQ((test.*convert)(out, Text("-1")), OutOfRange("-1", typeName));
    if (max < std::numeric_limits<std::uint64_t>::max()) {
        EXPECT_EQ((test.*convert)(out, Unsigned(max + 1)), OutOfRange(std::to_string(max + 1), typeName));
        EXPECT_EQ((test.*convert)(out, Text(std::to_string(max + 1))), OutOfRange(std::to_string(max + 1), typeName));
    } else {
        EXPECT_EQ((test.*convert)(out, Text("18446744073709551616")), OutOfRange("18446744073709551616", typeName));
    }
    EXPECT_EQ(out, max);
}

TEST_F(ScalarConversion, EverySignedWidthAtBothBounds) {
    CheckSignedBounds<std::int8_t>(*this, "int8", &ScalarConversion::Convert<std::int8_t>);
    CheckSignedBounds<std::int16_t>(*this, "int16", &ScalarConversion::Convert<std::int16_t>);
    CheckSignedBounds<std::int32_t>(*this, "int32", &ScalarConversion::Convert<std::int32_t>);
    CheckSignedBounds<std::int64_t>(*this, "int64", &ScalarConversion::Convert<std::int64_t>);
}

TEST_F(ScalarConversion, EveryUnsignedWidthAtBothBounds) {
    CheckUnsignedBounds<std::uint8_t>(*this, "uint8", &ScalarConversion::Convert<std::uint8_t>);
    CheckUnsignedBounds<std::uint16_t>(*this, "uint16", &ScalarConversion::Convert<std::uint16_t>);
    CheckUnsignedBounds<std::uint32_t>(*this, "uint32", &ScalarConversion::Convert<std::uint32_t>);
    CheckUnsignedBounds<std::uint64_t>(*this, "uint64", &ScalarConversion::Convert<std::uint64_t>);
}

TEST_F(ScalarConversion, Int64AtTheEdgesOfFloatsAndTexts) {
    std::int64_t out = 0;
    EXPECT_EQ(Convert(out, Text("-9223372036854775808")), "");
    EXPECT_EQ(out, std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(Convert(out, Text("0x7fffffffffffffff")), "");
    EXPECT_EQ(out, std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(Convert(out, Text("-9223372036854775809")), OutOfRange("-9223372036854775809", "int64"));
    EXPECT_EQ(Convert(out, Float(-0x1p63)), "");
    EXPECT_EQ(out, std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(Convert(out, Float(0x1p63)), OutOfRange("9.22337e+18", "int64"));
    EXPECT_EQ(Convert(out, Unsigned(0x8000000000000000u)), OutOfRange("9223372036854775808", "int64"));
}

TEST_F(ScalarConversion, UnsignedFromOtherKinds) {
    const struct {
        BindingProperty input;
        std::uint32_t expected;
        std::string message;
    } rows[] = {
        {Float(5.9), 5, ""},
        {Float(-0.0), 0, ""},
        {Float(4294967295.0), 4294967295u, ""},
        {Float(-0.5), 0, OutOfRange("-0.5", "uint32")},
        {Float(4294967295.5), 0, OutOfRange("4.29497e+09", "uint32")},
        {Float(std::nan("")), 0, OutOfRange("nan", "uint32")},
        {Enum(7), 7, ""},
        {Enum(-1), 0, OutOfRange("-1", "uint32")},
        {Text("0x10"), 16, ""},
        {Text(" +5"), 5, ""},
        {Text("-0"), 0, OutOfRange("-0", "uint32")},
        {Text(" -1"), 0, OutOfRange(" -1", "uint32")},
        {Text("-"), 0, BadFormat("-", "uint32")},
        {Text("-1x"), 0, BadFormat("-1x", "uint32")},
        {Text("7 "), 0, BadFormat("7 ", "uint32")},
        {Bool(false), 0, Invalid("uint32", "bool")},
        {Blob({}), 0, Invalid("uint32", "blob")},
        {Collection(), 0, Invalid("uint32", "collection")},
        {Structure(), 0, Invalid("uint32", "structure")},
        {BindingProperty(), 0, kRequired},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.input.ToString() + " " + std::string(BindingPropertyKindName(row.input.Kind())));
        std::uint32_t out = 77;
        EXPECT_EQ(Convert(out, row.input), row.message);
        EXPECT_EQ(out, row.message.empty() ? row.expected : 77u);
    }
}

TEST_F(ScalarConversion, FloatAndDouble) {
    const struct {
        BindingProperty input;
        double expected;
        std::string floatMessage;
        std::string doubleMessage;
    } rows[] = {
        {Text("1.5"), 1.5, "", ""},
        {Text(""), 0.0, "", ""},
        {Text(" -2.5e3"), -2500.0, "", ""},
        {Text("0x1p-2"), 0.25, "", ""},
        {Text("1e39"), 1e39, OutOfRange("1e39", "float"), ""},
        {Text("1e309"), 0, OutOfRange("1e309", "float"), OutOfRange("1e309", "double")},
        {Text("-Infinity"), 0, OutOfRange("-Infinity", "float"), OutOfRange("-Infinity", "double")},
        {Text("1e-400"), 0.0, "", ""},
        {Text("1.5x"), 0, BadFormat("1.5x", "float"), BadFormat("1.5x", "double")},
        {Text("abc"), 0, BadFormat("abc", "float"), BadFormat("abc", "double")},
        {Float(1e39), 1e39, OutOfRange("1e+39", "float"), ""},
        {Float(-3.4028234663852886e38), -3.4028234663852886e38, "", ""},
        {Float(3.4028235677973366e38), 3.4028235677973366e38, OutOfRange("3.40282e+38", "float"), ""},
        {Float(-INFINITY), 0, OutOfRange("-inf", "float"), OutOfRange("-inf", "double")},
        {Signed(-3), -3.0, "", ""},
        {Unsigned(18446744073709551615u), 18446744073709551615.0, "", ""},
        {Enum(2), 2.0, "", ""},
        {Bool(true), 0, Invalid("float", "bool"), Invalid("double", "bool")},
        {Blob({}), 0, Invalid("float", "blob"), Invalid("double", "blob")},
        {Collection(), 0, Invalid("float", "collection"), Invalid("double", "collection")},
        {Structure(), 0, Invalid("float", "structure"), Invalid("double", "structure")},
        {BindingProperty(), 0, kRequired, kRequired},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.input.ToString() + " " + std::string(BindingPropertyKindName(row.input.Kind())));
        float single = 9.0f;
        EXPECT_EQ(Convert(single, row.input), row.floatMessage);
        EXPECT_EQ(single, row.floatMessage.empty() ? static_cast<float>(row.expected) : 9.0f);
        double wide = 9.0;
        EXPECT_EQ(Convert(wide, row.input), row.doubleMessage);
        EXPECT_EQ(wide, row.doubleMessage.empty() ? row.expected : 9.0);
    }
}

TEST_F(ScalarConversion, NaNPassesTheBoundsOfFloats) {
    for (const BindingProperty& input : {Float(std::nan("")), Text("nan"), Text("NAN(123)")}) {
        double out = 0;
        EXPECT_EQ(Convert(out, input), "");
        EXPECT_TRUE(std::isnan(out));
    }
}

TEST_F(ScalarConversion, String) {
    std::string out = "before";
    EXPECT_EQ(Convert(out, Text("after")), "");
    EXPECT_EQ(out, "after");
    const std::string notAString = "Couldn't assign value to 'field' because the input is not a string.";
    for (const BindingProperty& input :
         {Signed(5), Unsigned(5), Float(5), Bool(true), Blob({5}), Collection(), Structure()}) {
        SCOPED_TRACE(BindingPropertyKindName(input.Kind()));
        EXPECT_EQ(Convert(out, input), notAString);
        EXPECT_EQ(out, "after");
    }
    EXPECT_EQ(Convert(out, BindingProperty()), kRequired);
    EXPECT_EQ(Convert(out, Enum(3)), "3 is not a valid enumeration value for 'field'.");
}

TEST_F(ScalarConversion, Blob) {
    std::vector<std::uint8_t> out = {9};
    EXPECT_EQ(Convert(out, Blob({1, 2})), "");
    EXPECT_EQ(out, (std::vector<std::uint8_t>{1, 2}));
    EXPECT_EQ(Convert(out, Text("AQI=")), Invalid("blob", "string"));
    EXPECT_EQ(Convert(out, Collection()), Invalid("blob", "collection"));
    EXPECT_EQ(Convert(out, BindingProperty()), kRequired);
    EXPECT_EQ(out, (std::vector<std::uint8_t>{1, 2}));
}

TEST_F(ScalarConversion, ObjectCopiesAnyInputEmptyIncluded) {
    BindingProperty out;
    out.SetSigned(1);
    BindingProperty input;
    input.Member("a").At(1).SetString("x");
    EXPECT_EQ(Convert(out, input), "");
    EXPECT_EQ(out.Member("a").At(1).AsString(), "x");
    EXPECT_EQ(Convert(out, BindingProperty()), "");
    EXPECT_TRUE(out.IsEmpty());
}

TEST_F(ScalarConversion, AFailedStatusStopsEveryConversion) {
    BindingProperty status;
    status.SetError("first");
    std::int32_t number = 1;
    std::string text = "kept";
    BindingProperty object;
    object.SetBool(true);
    FromBinding(status, number, Text("x"), "a", registry_);
    FromBinding(status, text, Signed(1), "b", registry_);
    FromBinding(status, object, Text("new"), "c", registry_);
    EXPECT_EQ(status.GetError(), "first");
    EXPECT_EQ(number, 1);
    EXPECT_EQ(text, "kept");
    EXPECT_TRUE(object.ToBool());
}

TEST_F(ScalarConversion, ToBindingSetsTheKindOfEachScalar) {
    const struct {
        BindingProperty value;
        BindingPropertyKind kind;
        std::string text;
    } rows[] = {
        {ToBinding(true, registry_), BindingPropertyKind::Bool, "true"},
        {ToBinding(std::int8_t{-8}, registry_), BindingPropertyKind::Signed, "-8"},
        {ToBinding(std::int64_t{-9}, registry_), BindingPropertyKind::Signed, "-9"},
        {ToBinding(std::uint16_t{65535}, registry_), BindingPropertyKind::Unsigned, "65535"},
        {ToBinding(std::uint64_t{10}, registry_), BindingPropertyKind::Unsigned, "10"},
        {ToBinding(0.5f, registry_), BindingPropertyKind::Float, "0.500000"},
        {ToBinding(2.25, registry_), BindingPropertyKind::Float, "2.250000"},
        {ToBinding(std::string("text"), registry_), BindingPropertyKind::String, "text"},
        {ToBinding(std::vector<std::uint8_t>{0, 1}, registry_), BindingPropertyKind::Blob, "AAE="},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_TRUE(row.value.IsValid());
        EXPECT_EQ(row.value.Kind(), row.kind);
        EXPECT_EQ(row.value.ToString(), row.text);
    }
}

TEST_F(ScalarConversion, ToBindingMarksAFailedResultValid) {
    BindingProperty result;
    result.SetError("old");
    ToBinding(result, std::int32_t{3}, registry_);
    EXPECT_TRUE(result.IsValid());
    EXPECT_EQ(result.AsInt64(), 3);

    BindingProperty failedObject;
    failedObject.SetError("inner");
    ToBinding(result, failedObject, registry_);
    EXPECT_TRUE(result.IsValid());
    EXPECT_EQ(result.Member("error").AsString(), "inner");
}

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
