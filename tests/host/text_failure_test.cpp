#include "host/text_failure.h"

#include <gtest/gtest.h>

namespace wex {
namespace {

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
