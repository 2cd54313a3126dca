#include "types/registry.h"

#include <gtest/gtest.h>

#include "binding/fnv1a.h"
#include "sample_model.h"

namespace wex {
namespace {

using namespace sample::leagues;

TEST(BindingTypeIdentity, EachNativeTypeHasOneStableIdentityNamedInEightUpperCaseHexDigits) {
    const BindingTypeIdentity& standing = BindingTypeIdentity::Of<Standing>();
    EXPECT_EQ(&standing, &BindingTypeIdentity::Of<Standing>());
    EXPECT_NE(standing.id, BindingTypeIdentity::Of<Division>().id);
    EXPECT_EQ(standing.id, Fnv1a32(StaticType::Name<Standing>()));
    EXPECT_EQ(BindingTypeIdentity::Make(0x397C).DefaultName(), "#0000397C");
    EXPECT_EQ(BindingTypeIdentity::Make(0xFFFFFFFF).DefaultName(), "#FFFFFFFF");
    EXPECT_TRUE(BindingTypeIdentity::Reserved().IsReserved());
    const std::string name = StaticType::Name<Standing>();
    EXPECT_NE(name.find("sample::leagues::Standing"), std::string::npos) << name;
}

using RegistryTest = SampleRegistry;

}  // namespace
}  // namespace wex
