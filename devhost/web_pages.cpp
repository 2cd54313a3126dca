#include "web_pages.h"

#include <filesystem>
#include <fstream>
#include <sstream>

#include "web_files.h"

namespace tav::host {

namespace {

constexpr std::string_view kUiPrefix = "/devhost/ui/";
constexpr std::string_view kExplorerPrefix = "/devhost/explorer/";

const char* ContentType(std::string_view name) {
    const std::string_view extension = name.substr(std::min(name.rfind('.'), name.size()));
    if (extension == ".html") {
        return "text/html; charset=utf-8";
    }
    if (extension == ".css") {
        return "text/css; charset=utf-8";
    }
    if (extension == ".js") {
        return "text/javascript; charset=utf-8";
    }
    if (extension == ".png") {
        return "image/png";
    }
    if (extension == ".map" || extension == ".json") {
        return "application/json";
    }
    return "application/octet-stream";
}

HttpAnswer Page(int status, std::string_view name, std::string body) {
    HttpAnswer answer;
    answer.status = status;
    answer.contentType = ContentType(name);
    answer.body = std::move(body);
    return answer;
}

std::optional<HttpAnswer> Embedded(std::string_view name) {
    const char* text = WebFile(name);
    return text != nullptr ? std::optional(Page(200, name, text)) : std::nullopt;
}

// A file of the explorer's library; its name may not leave the folder.
std::optional<HttpAnswer> ExplorerFile(const std::string& folder, std::string_view name) {
    if (name.empty() || name.find("..") != std::string_view::npos || name.find('/') != std::string_view::npos) {
        return std::nullopt;
    }
    const std::filesystem::path path = std::filesystem::path(folder) / name;
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error)) {
        return std::nullopt;
    }
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return Page(200, name, text.str());
}

HttpAnswer ExplorerMissing(const std::string& folder) {
    return Page(503, ".html",
                "<!doctype html><meta charset=utf-8><title>API explorer not installed</title>"
                "<body style=\"font:16px system-ui;max-width:40em;margin:3em auto\">"
                "<h1>The API explorer is not installed</h1>"
                "<p>tav-host looks for the files of the <code>swagger-ui-dist</code> package in <code>" +
                    folder +
                    "</code>, and they are not there.</p><p>Run <code>make deps</code> in the project's folder, "
                    "which installs them, or start tav-host with <code>--explorer-files FOLDER</code>.</p>"
                    "<p>The OpenAPI document itself is at <a href=\"/devhost/openapi.json\">/devhost/openapi.json</a>."
                    "</p>");
}

}  // namespace

std::optional<HttpAnswer> ServePage(const std::string& path, const std::string& explorerFiles) {
    if (path == "/" || path == "/index.html") {
        return Embedded("index.html");
    }
    if (path.rfind(kUiPrefix, 0) == 0) {
        return Embedded(std::string_view(path).substr(kUiPrefix.size()));
    }
    if (path == "/devhost/explorer" || path == kExplorerPrefix) {
        std::error_code error;
        if (!std::filesystem::is_regular_file(std::filesystem::path(explorerFiles) / "swagger-ui-bundle.js", error)) {
            return ExplorerMissing(explorerFiles);
        }
        return Embedded("explorer.html");
    }
    if (path.rfind(kExplorerPrefix, 0) == 0) {
        return ExplorerFile(explorerFiles, std::string_view(path).substr(kExplorerPrefix.size()));
    }
    return std::nullopt;
}

}  // namespace tav::host
