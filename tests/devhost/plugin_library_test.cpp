#include "plugin_library.h"

#include <gtest/gtest.h>

namespace tav::host {
namespace {

// The error names the file and gives the system's own reason, or the missing entry.
TEST(PluginLibrary, SaysWhyALibraryCannotBeUsed) {
    PluginLibrary missing;
    EXPECT_FALSE(missing.Open("/nonexistent/libtav.so"));
    EXPECT_EQ(missing.error(), "cannot load /nonexistent/libtav.so: /nonexistent/libtav.so: cannot open shared "
                               "object file: No such file or directory");
    PluginLibrary other;
    EXPECT_FALSE(other.Open("libm.so.6"));
    EXPECT_EQ(other.error(), "libm.so.6 does not export load_tav_leagues");
}

}  // namespace
}  // namespace tav::host
