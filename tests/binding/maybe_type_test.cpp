#include "binding/maybe_type.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <variant>

#include "binding/failure.h"

namespace wex {
namespace {

MaybeType<Failure, std::string> Lookup(bool found) {
    if (!found) {
        return Failure(404, "Not found");
    }
    return std::string("Ahri");
}

MaybeType<Failure, void> Acknowledge(bool accepted) {
    if (!accepted) {
        return Failure(0, "Refused");
    }
    return {};
}

TEST(MaybeType, HoldsTheValue) {
    MaybeType<Failure, std::string> result = Lookup(true);
    ASSERT_TRUE(result);
    EXPECT_TRUE(result.HasValue());
    EXPECT_FALSE(result.HasFailure());
    EXPECT_EQ(result.Value(), "Ahri");
    result.Value() += "!";
    const std::string taken = std::move(result).Value();
    EXPECT_EQ(taken, "Ahri!");
    EXPECT_THROW(static_cast<void>(Lookup(true).GetFailure()), std::bad_variant_access);
}

TEST(MaybeType, HoldsTheFailure) {
    const MaybeType<Failure, std::string> result = Lookup(false);
    EXPECT_FALSE(result);
    EXPECT_TRUE(result.HasFailure());
    EXPECT_EQ(result.GetFailure().Code(), 404);
    EXPECT_EQ(result.GetFailure().Message(), "Not found");
    EXPECT_THROW(static_cast<void>(result.Value()), std::bad_variant_access);
}

TEST(MaybeType, TakesMoveOnlyValues) {
    MaybeType<Failure, std::unique_ptr<int>> result = std::make_unique<int>(5);
    std::unique_ptr<int> value = std::move(result).Value();
    EXPECT_EQ(*value, 5);
}

TEST(MaybeType, TheVoidFormHoldsSuccessOrAFailure) {
    const MaybeType<Failure, void> success = Acknowledge(true);
    EXPECT_TRUE(success);
    EXPECT_TRUE(success.HasValue());
    EXPECT_THROW(static_cast<void>(success.GetFailure()), std::bad_optional_access);

    MaybeType<Failure, void> refused = Acknowledge(false);
    EXPECT_FALSE(refused);
    EXPECT_TRUE(refused.HasFailure());
    const Failure failure = std::move(refused).GetFailure();
    EXPECT_EQ(failure.ToString(), "Refused");
}

}  // namespace
}  // namespace wex
