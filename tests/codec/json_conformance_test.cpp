#include <gtest/gtest.h>
#include "binding/rapidjson.h"

#include <fstream>
#include <map>
#include <sstream>
#include <string>

#include "codec/json_reader.h"
#include "support/testdata.h"
#include "testdata_file.h"

namespace wex {
namespace {

const std::map<std::string, rapidjson::ParseErrorCode>& CodesByName() {
    static const std::map<std::string, rapidjson::ParseErrorCode> codes = {
        {"DocumentRootNotSingular", rapidjson::kParseErrorDocumentRootNotSingular},
        {"ValueInvalid", rapidjson::kParseErrorValueInvalid},
        {"ObjectMissName", rapidjson::kParseErrorObjectMissName},
        {"ObjectMissColon", rapidjson::kParseErrorObjectMissColon},
        {"ObjectMissCommaOrCurlyBracket", rapidjson::kParseErrorObjectMissCommaOrCurlyBracket},
        {"ArrayMissCommaOrSquareBracket", rapidjson::kParseErrorArrayMissCommaOrSquareBracket},
        {"StringUnicodeEscapeInvalidHex", rapidjson::kParseErrorStringUnicodeEscapeInvalidHex},
        {"StringUnicodeSurrogateInvalid", rapidjson::kParseErrorStringUnicodeSurrogateInvalid},
        {"StringEscapeInvalid", rapidjson::kParseErrorStringEscapeInvalid},
        {"StringMissQuotationMark", rapidjson::kParseErrorStringMissQuotationMark},
        {"NumberTooBig", rapidjson::kParseErrorNumberTooBig},
        {"NumberMissFraction", rapidjson::kParseErrorNumberMissFraction},
        {"NumberMissExponent", rapidjson::kParseErrorNumberMissExponent},
    };
    return codes;
}

// Where the first container past the nesting limit opens in the two inputs
// that overflow the stack of the plain reader.
const std::map<std::string, std::string>& CrashRowMessages() {
    static const std::map<std::string, std::string> messages = {
        {"n_structure_100000_opening_arrays.json", "Error: Terminate parsing due to Handler error. at offset 1001."},
        {"n_structure_open_array_object.json", "Error: Terminate parsing due to Handler error. at offset 2501."},
    };
    return messages;
}

std::string ExpectedError(const std::string& code, const std::string& offset) {
    return std::string("Error: ") + rapidjson::GetParseError_En(CodesByName().at(code)) + " at offset " + offset + ".";
}

// Each file gives the verdict of the reader with default options, its error
// code and offset; the files are read as bytes up to the first NUL.
TEST(JsonConformance, EveryFileGetsTheReadersVerdictCodeAndOffset) {
    if (!tav::test::HasTestData("JSONTestSuite")) {
        GTEST_SKIP() << "JSONTestSuite not found in " << tav::test::TestDataDir();
    }
    const auto suite = tav::test::TestDataDir() / "JSONTestSuite";
    std::ifstream verdicts(suite / "rapidjson-default-verdicts.tsv");
    std::string line;
    std::getline(verdicts, line);  // the column names
    int accepted = 0;
    int rejected = 0;
    while (std::getline(verdicts, line)) {
        std::istringstream columns(line);
        std::string file, verdict, code, offset;
        std::getline(columns, file, '\t');
        std::getline(columns, verdict, '\t');
        std::getline(columns, code, '\t');
        std::getline(columns, offset, '\t');
        SCOPED_TRACE(file);
        const std::string bytes = tav::test::ReadFileBytes(suite / "test_parsing" / file);
        const BindingProperty value = ParseJson(bytes.c_str());
        if (verdict == "accept") {
            EXPECT_TRUE(value.IsValid()) << value.GetError();
            ++accepted;
        } else if (verdict == "crash") {
            EXPECT_EQ(value.GetError(), CrashRowMessages().at(file));
            ++rejected;
        } else {
            EXPECT_EQ(value.GetError(), ExpectedError(code, offset));
            ++rejected;
        }
    }
    EXPECT_EQ(accepted, 118);
    EXPECT_EQ(rejected, 200);
}

}  // namespace
}  // namespace wex
