#include "web_pages.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "support/case_table.h"

namespace {

using tav::host::ServePage;

TEST(WebPages, ServesTheEmbeddedPagesAndNoFileOutsideTheExplorersFolder) {
    const std::filesystem::path root = std::filesystem::temp_directory_path() / "tav-web-pages-test";
    std::filesystem::create_directories(root / "dist" / "sub");
    std::ofstream(root / "dist" / "swagger-ui-bundle.js") << "bundle";
    std::ofstream(root / "dist" / "swagger-ui-bundle.js.map") << "{}";
    std::ofstream(root / "dist" / "package.json") << "{}";
    std::ofstream(root / "dist" / "LICENSE") << "license";
    std::ofstream(root / "dist" / "sub" / "inner.css") << "inner";
    std::ofstream(root / "secret.txt") << "secret";
    const std::string folder = (root / "dist").string();
    for (const auto& row : tav::test::ReadCaseTable(__FILE__, "web_pages.tsv", 4)) {
        SCOPED_TRACE(row[0]);
        const auto page = ServePage(row[0], folder);
        ASSERT_EQ(page.has_value(), row[1] != "0");
        if (page) {
            EXPECT_EQ(page->status, std::stoi(row[1]));
            EXPECT_EQ(page->contentType, row[2]);
            EXPECT_EQ(page->body.rfind(row[3], 0), 0u) << page->body.substr(0, 80);
        }
    }
    // Without the explorer's library, the explorer tells how to install it.
    const auto missing = ServePage("/devhost/explorer", (root / "none").string());
    ASSERT_TRUE(missing);
    EXPECT_EQ(missing->status, 503);
    EXPECT_NE(missing->body.find("<code>" + (root / "none").string() + "</code>, and they are not there"),
              std::string::npos);
    std::filesystem::remove_all(root);
}

}  // namespace
