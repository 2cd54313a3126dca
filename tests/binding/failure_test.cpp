#include "binding/failure.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "diagnostics/format_message.h"

namespace wex {

namespace {

TEST(Failure, ADefaultFailureHasNoCodeNoMessageAndNoFields) {
    const Failure failure;
    EXPECT_EQ(failure.Code(), 0);
    EXPECT_EQ(failure.Message(), "");
    EXPECT_TRUE(failure.Fields().empty());
    EXPECT_EQ(failure.ToString(), "");
}

TEST(Failure, WithoutCodeOrFieldsItPrintsItsBareMessage) {
    EXPECT_EQ(Failure(0, "Timed out").ToString(), "Timed out");
    EXPECT_EQ(Failure(0, "Timed out", {}).ToString(), "Timed out");
}

TEST(Failure, AConstantMessageWithACodePrintsMessageAndCode) {
    const Failure failure(404, "Not found");
    EXPECT_EQ(failure.Code(), 404);
    EXPECT_TRUE(failure.Fields().empty());
    EXPECT_EQ(failure.ToString(), "Not found (404)");
    EXPECT_EQ(Failure(-1, "Negative").ToString(), "Negative (-1)");
}

TEST(Failure, ACodeWithATemplateAddsErrorCodeIntAndMakesItAJsonObject) {
    const Failure failure(7, "Timed out", {});
    EXPECT_EQ(failure.Code(), 7);
    ASSERT_NE(failure.Fields().Find("errorCode_int"), nullptr);
    EXPECT_EQ(*failure.Fields().Find("errorCode_int"), FieldValue(std::int64_t{7}));
    EXPECT_EQ(failure.ToString(), R"({"message":"Timed out","errorCode_int":7})");
    EXPECT_EQ(Failure(-404, "Gone", {}).ToString(), R"({"message":"Gone","errorCode_int":-404})");
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
    EXPECT_EQ(*failure.Fields().Find("error"), FieldValue(std::string("not found")));
    EXPECT_EQ(failure.ToString(),
              R"({"message":"Error response for GET /tav-summoner/v1/summoners/42: not found","errorCode_int":404,)"
              R"("method":"GET","url":"/tav-summoner/v1/summoners/42","error":"not found"})");
}

TEST(Failure, OnlyErrorFieldsIntKeepsThePlainForm) {
    Failure plain(404, "Not found");
    plain.SetField("errorFields_int", std::int64_t{2});
    EXPECT_EQ(plain.ToString(), "Not found (404)");

    Failure coded(0, "Not found", {});
    coded.SetField("errorFields_int", std::int64_t{1});
    coded.SetField("other", true);
    EXPECT_EQ(coded.ToString(), R"({"message":"Not found","errorFields_int":1,"other":true})");
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

TEST(Failure, AFieldSetAgainKeepsItsPlace) {
    Failure failure(500, "Failed {step}", {"one"});
    failure.SetField("errorCode_int", std::int64_t{501});
    EXPECT_EQ(failure.ToString(), R"({"message":"Failed one","errorCode_int":501,"step":"one"})");
}

TEST(Failure, TheMessageMayHoldZeroBytesAndQuotes) {
    Failure failure(1, "{text}", {std::string("a\0b", 3)});
    EXPECT_EQ(failure.ToString(), std::string(R"({"message":"a\u0000b","errorCode_int":1,"text":"a\u0000b"})"));
}

TEST(Failure, PrintsItsTextFormInFormattedMessages) {
    EXPECT_EQ(FormatMessage("Request failed: %1", {Failure(0, "Timed out")}), "Request failed: Timed out");
    EXPECT_EQ(FormatMessage("%s!", {Failure(3, "No", {})}), R"({"message":"No","errorCode_int":3}!)");
}

TEST(TextFailure, KeepsTheTextAsItIs) {
    const Failure failure = TextFailure(0, "Service {leagues} at 100% {{");
    EXPECT_EQ(failure.Code(), 0);
    EXPECT_EQ(failure.Message(), "Service {leagues} at 100% {{");
    EXPECT_TRUE(failure.Fields().empty());
    EXPECT_EQ(failure.ToString(), "Service {leagues} at 100% {{");
}

TEST(TextFailure, ACodeIsItsOnlyField) {
    EXPECT_EQ(TextFailure(404, "gone").ToString(), R"({"message":"gone","errorCode_int":404})");
}

TEST(ErrorAnswer, IsAStatus500WithTheMessageOrADefault) {
    const Failure named = ErrorAnswer("League service not available.");
    EXPECT_EQ(named.Code(), 500);
    EXPECT_EQ(named.Message(), "League service not available.");
    const Failure unnamed = ErrorAnswer("");
    EXPECT_EQ(unnamed.Code(), 500);
    EXPECT_EQ(unnamed.Message(), "Internal server error");
}

}  // namespace

}  // namespace wex
