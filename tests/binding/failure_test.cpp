#include "binding/failure.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "diagnostics/format_message.h"

namespace wex {

namespace {

// A code adds the field errorCode_int; without fields a failure prints its bare
// message and code, with them a JSON object.
TEST(Failure, PrintsItsMessagePlainOrWithItsFieldsAsJson) {
    Failure coded(0, "Not found", {});
    coded.SetField("errorFields_int", std::int64_t{1});
    coded.SetField("other", true);
    Failure plain(404, "Not found");
    plain.SetField("errorFields_int", std::int64_t{2});
    Failure setAgain(500, "Failed {step}", {"one"});
    setAgain.SetField("errorCode_int", std::int64_t{501});
    const struct {
        Failure failure;
        std::string text;
    } rows[] = {
        {Failure(), ""},
        {Failure(0, "Timed out"), "Timed out"},
        {Failure(0, "Timed out", {}), "Timed out"},
        {Failure(-1, "Negative"), "Negative (-1)"},
        {Failure(-404, "Gone", {}), R"({"message":"Gone","errorCode_int":-404})"},
        {plain, "Not found (404)"},
        {coded, R"({"message":"Not found","errorFields_int":1,"other":true})"},
        {setAgain, R"({"message":"Failed one","errorCode_int":501,"step":"one"})"},
        {Failure(1, "{text}", {std::string("a\0b", 3)}),
         R"({"message":"a\u0000b","errorCode_int":1,"text":"a\u0000b"})"},
        {TextFailure(0, "Service {leagues} at 100% {{"), "Service {leagues} at 100% {{"},
        {TextFailure(404, "gone"), R"({"message":"gone","errorCode_int":404})"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(row.failure.ToString(), row.text);
    }
    EXPECT_EQ(Failure(404, "Not found").Code(), 404);
    EXPECT_TRUE(Failure(404, "Not found").Fields().empty());
    EXPECT_TRUE(TextFailure(0, "{a}").Fields().empty());
}

TEST(Failure, NamedPlaceholdersFillTheMessageAndBecomeFields) {
    const Failure failure(404, "Error response for {method} {url}: {error}",
                          {"GET", "/tav-summoner/v1/summoners/42", "not found"});
    EXPECT_EQ(failure.Message(), "Error response for GET /tav-summoner/v1/summoners/42: not found");
    std::vector<std::string> names;
    for (const auto& [name, value] : failure.Fields()) {
        names.push_back(name);
    }
    EXPECT_EQ(names, (std::vector<std::string>{"errorCode_int", "method", "url", "error"}));
    EXPECT_EQ(*failure.Fields().Find("errorCode_int"), FieldValue(std::int64_t{404}));
    EXPECT_EQ(*failure.Fields().Find("error"), FieldValue(std::string("not found")));
}

TEST(Failure, EachFieldKindIsWrittenAsTheJsonWriterWritesIt) {
    Failure failure(0, "m");
    failure.SetField("flag_bool", false);
    failure.SetField("small_int", std::numeric_limits<std::int64_t>::min());
    failure.SetField("large_int", std::numeric_limits<std::uint64_t>::max());
    failure.SetField("ratio_float", 0.1);
    failure.SetField("whole_float", 2.0);
    failure.SetField("tiny_float", 5e-324);
    failure.SetField("huge_float", 1e300);
    failure.SetField("nan_float", std::nan(""));
    failure.SetField("text_str", std::string("a\"b\\c\n\t\x01/\xC3\xA9"));
    EXPECT_EQ(failure.ToString(),
              R"({"message":"m","flag_bool":false,"small_int":-9223372036854775808,)"
              R"("large_int":18446744073709551615,"ratio_float":0.1,"whole_float":2.0,"tiny_float":5e-324,)"
              R"("huge_float":1e300,"nan_float":null,"text_str":"a\"b\\c\n\t\u0001/)"
              "\xC3\xA9\"}");
}

TEST(Failure, PrintsItsTextFormInFormattedMessages) {
    EXPECT_EQ(FormatMessage("Request failed: %1", {Failure(0, "Timed out")}), "Request failed: Timed out");
    EXPECT_EQ(FormatMessage("%s!", {Failure(3, "No", {})}), R"({"message":"No","errorCode_int":3}!)");
}

TEST(ErrorAnswer, IsAStatus500WithTheMessageOrADefault) {
    EXPECT_EQ(ErrorAnswer("League service not available.").ToString(),
              R"({"message":"League service not available.","errorCode_int":500})");
    EXPECT_EQ(ErrorAnswer("").ToString(), R"({"message":"Internal server error","errorCode_int":500})");
}

}  // namespace

}  // namespace wex
