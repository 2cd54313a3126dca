#include "binding/maybe_type.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <variant>

#include "binding/failure.h"

namespace wex {
namespace {

TEST(MaybeType, HoldsEitherTheValueOrTheFailure) {
    MaybeType<Failure, std::string> found = std::string("Ahri");
    ASSERT_TRUE(found);
    EXPECT_FALSE(found.HasFailure());
    found.Value() += "!";
    EXPECT_EQ(std::move(found).Value(), "Ahri!");
    EXPECT_THROW(static_cast<void>(found.GetFailure()), std::bad_variant_access);

    const MaybeType<Failure, std::string> missing = Failure(404, "Not found");
    EXPECT_FALSE(missing);
    EXPECT_FALSE(missing.HasValue());
    EXPECT_EQ(missing.GetFailure().ToString(), "Not found (404)");
    EXPECT_THROW(static_cast<void>(missing.Value()), std::bad_variant_access);

    MaybeType<Failure, std::unique_ptr<int>> moveOnly = std::make_unique<int>(5);
    EXPECT_EQ(*std::move(moveOnly).Value(), 5);

    // The void form holds success or a failure.
    const MaybeType<Failure, void> success;
    EXPECT_TRUE(success);
    EXPECT_TRUE(success.HasValue());
    EXPECT_THROW(static_cast<void>(success.GetFailure()), std::bad_optional_access);

    MaybeType<Failure, void> refused = Failure(0, "Refused");
    EXPECT_FALSE(refused);
    EXPECT_TRUE(refused.HasFailure());
    EXPECT_EQ(std::move(refused).GetFailure().ToString(), "Refused");
}

}  // namespace
}  // namespace wex
