#include <gtest/gtest.h>

#include "binding/property.h"

namespace wex {
namespace {

constexpr int kDepth = 1000000;

// A collection nested kDepth levels deep, with a string at the bottom.
void BuildDeepCollection(BindingProperty& root) {
    BindingProperty* node = &root;
    for (int level = 0; level < kDepth; ++level) {
        node = &node->At(0);
    }
    node->SetString("bottom");
}

void BuildDeepStructure(BindingProperty& root) {
    BindingProperty* node = &root;
    for (int level = 0; level < kDepth; ++level) {
        node = &node->Member("next");
    }
    node->SetSigned(1);
}

int Depth(const BindingProperty& root) {
    int depth = 0;
    for (const BindingProperty* node = &root; node->Size() == 1 && !node->Elements().empty(); node = &node->At(0)) {
        ++depth;
    }
    return depth;
}

TEST(DeepTree, AMillionLevelsAreBuiltCopiedResetAndDestroyed) {
    BindingProperty root;
    BuildDeepCollection(root);
    BindingProperty copy(root);
    EXPECT_EQ(Depth(copy), kDepth);
    root.Reset();
    EXPECT_TRUE(root.IsEmpty());
    copy.At(0).Reset();  // a node inside the tree releases everything below it by walking
    EXPECT_EQ(copy.Size(), 1u);
    EXPECT_TRUE(copy.At(0).IsEmpty());
}

TEST(DeepTree, ADeepSubtreeIsReleasedWhenItsParentIsOverwritten) {
    BindingProperty root;
    BuildDeepStructure(root.Member("deep"));
    root.Member("deep").SetBool(true);
    EXPECT_TRUE(root.Member("deep").ToBool());
    BuildDeepStructure(root.Member("again"));
    root.RemoveMember("again");
    EXPECT_EQ(root.Size(), 1u);
}

TEST(DeepTree, ADeepStructureIsCopiedIntoAnotherTree) {
    BindingProperty source;
    BuildDeepStructure(source);
    BindingProperty target;
    target.At(2) = source;
    const BindingProperty* node = &target.At(2);
    int depth = 0;
    while (node->HasMember("next")) {
        node = &node->Member("next");
        ++depth;
    }
    EXPECT_EQ(depth, kDepth);
    EXPECT_EQ(node->AsInt64(), 1);
}

}  // namespace
}  // namespace wex
