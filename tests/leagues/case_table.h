#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace Orvel::Client::Leagues::test {

// The tab-separated rows of a case file next to these tests, without its comment lines.
inline std::vector<std::vector<std::string>> ReadCases(const char* name) {
    std::ifstream file(std::filesystem::path(__FILE__).replace_filename(name));
    EXPECT_TRUE(file.good()) << "cannot read " << name;
    std::vector<std::vector<std::string>> rows;
    for (std::string line; std::getline(file, line);) {
        if (line.empty() || line[0] == '#') {
            continue;
        }
        std::vector<std::string>& fields = rows.emplace_back();
        std::istringstream columns(line);
        for (std::string field; std::getline(columns, field, '\t');) {
            fields.push_back(field);
        }
    }
    return rows;
}

// A field's \xNN escapes as the bytes they stand for.
inline std::string Unescape(const std::string& field) {
    std::string bytes;
    for (std::size_t at = 0; at < field.size(); ++at) {
        if (field.compare(at, 2, "\\x") == 0 && at + 4 <= field.size()) {
            bytes += static_cast<char>(std::stoi(field.substr(at + 2, 2), nullptr, 16));
            at += 3;
        } else {
            bytes += field[at];
        }
    }
    return bytes;
}

}  // namespace Orvel::Client::Leagues::test
