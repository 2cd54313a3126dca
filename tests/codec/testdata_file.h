#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

namespace tav::test {

// The whole file as raw bytes; empty when it cannot be read.
inline std::string ReadFileBytes(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// \n, \r, \t, \0 and \\ of a table's field as the bytes they stand for.
inline std::string Unescape(const std::string& field) {
    std::string bytes;
    for (std::size_t at = 0; at < field.size(); ++at) {
        if (field[at] != '\\' || at + 1 == field.size()) {
            bytes += field[at];
            continue;
        }
        const char code = field[++at];
        bytes += code == 'n' ? '\n' : code == 'r' ? '\r' : code == 't' ? '\t' : code == '0' ? '\0' : code;
    }
    return bytes;
}

// The tab-separated rows of a table kept in folder, these tests' unless
// given, without its comment lines.
inline std::vector<std::vector<std::string>> ReadCases(
    const std::string& name, const std::filesystem::path& folder = std::filesystem::path(__FILE__).parent_path()) {
    std::istringstream text(ReadFileBytes(folder / name));
    std::vector<std::vector<std::string>> rows;
    for (std::string line; std::getline(text, line);) {
        if (line.empty() || line[0] == '#') {
            continue;
        }
        std::vector<std::string>& fields = rows.emplace_back();
        std::istringstream columns(line);
        for (std::string field; std::getline(columns, field, '\t');) {
            fields.push_back(field);
        }
        if (line.back() == '\t') {
            fields.emplace_back();
        }
    }
    return rows;
}

}  // namespace tav::test
