#include "web_pages.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace {

using tav::host::ServePage;

TEST(WebPages, ServesTheEmbeddedPagesAndNoFileOutsideTheExplorersFolder) {
    const std::filesystem::path root = std::filesystem::temp_directory_path() / "tav-web-pages-test";
    std::filesystem::create_directories(root / "dist" / "sub");
    std::ofstream(root / "dist" / "swagger-ui-bundle.js") << "bundle";
    std::ofstream(root / "dist" / "swagger-ui-bundle.js.map") << "{}";
    std::ofstream(root / "dist" / "sub" / "inner.css") << "inner";
    std::ofstream(root / "secret.txt") << "secret";
    const std::string folder = (root / "dist").string();
    const struct {
        const char* path;
        int status;  // 0: not a page
        const char* contentType;
        const char* start;
    } cases[] = {
        {"/", 200, "text/html; charset=utf-8", "<!doctype html>"},
        {"/index.html", 200, "text/html; charset=utf-8", "<!doctype html>"},
        {"/devhost/ui/dashboard.js", 200, "text/javascript; charset=utf-8", "// The league dashboard"},
        {"/devhost/ui/dashboard.css", 200, "text/css; charset=utf-8", ":root {"},
        {"/devhost/explorer", 200, "text/html; charset=utf-8", "<!doctype html>"},
        {"/devhost/explorer/swagger-ui-bundle.js", 200, "text/javascript; charset=utf-8", "bundle"},
        {"/devhost/explorer/swagger-ui-bundle.js.map", 200, "application/json", "{}"},
        {"/devhost/ui/missing.js", 0, "", ""},
        {"/devhost/explorer/../secret.txt", 0, "", ""},
        {"/devhost/explorer/sub/inner.css", 0, "", ""},
        {"/devhost/explorer/missing.js", 0, "", ""},
        {"/devhost/state", 0, "", ""},
        {"/tav-leagues/v2/notifications", 0, "", ""},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.path);
        const auto page = ServePage(row.path, folder);
        ASSERT_EQ(page.has_value(), row.status != 0);
        if (page) {
            EXPECT_EQ(page->status, row.status);
            EXPECT_EQ(page->contentType, row.contentType);
            EXPECT_EQ(page->body.rfind(row.start, 0), 0u) << page->body.substr(0, 80);
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
