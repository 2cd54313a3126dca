#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace tav::test {

// The whole file as raw bytes; empty when it cannot be read.
std::string ReadFileBytes(const std::filesystem::path& path);

// The tab-separated rows of a case table, without its blank lines and the
// lines that start with #; a row that ends in a tab ends with an empty field.
// A table that cannot be read or holds no rows fails the test.
std::vector<std::vector<std::string>> ReadCases(const std::filesystem::path& table);

// The table named name in the folder of the test source given by its __FILE__.
inline std::vector<std::vector<std::string>> ReadCases(const char* source, std::string_view name) {
    return ReadCases(std::filesystem::path(source).replace_filename(name));
}

// \n, \r, \t, \0, \\ and \xNN of a field as the bytes they stand for; any
// other backslash stays as it is.
std::string Unescape(std::string_view field);

// ReadCases beside source, each row of exactly columns fields (a row of
// another width fails the test), every field unescaped.
std::vector<std::vector<std::string>> ReadCaseTable(const char* source, std::string_view name, std::size_t columns);

}  // namespace tav::test
