#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace tav::test {

// The tab-separated rows of a case table next to these tests, each of `columns` fields, with \n, \r and \t
// standing for their bytes; lines starting with # are comments. A table that cannot be read, or a row of
// another width, fails the test.
inline std::vector<std::vector<std::string>> ReadCaseTable(const std::string& name, std::size_t columns) {
    std::ifstream file(std::filesystem::path(__FILE__).replace_filename(name), std::ios::binary);
    std::vector<std::vector<std::string>> rows;
    for (std::string line; std::getline(file, line);) {
        if (line.empty() || line[0] == '#') {
            continue;
        }
        std::vector<std::string>& fields = rows.emplace_back(1);
        for (std::size_t at = 0; at < line.size(); ++at) {
            if (line[at] == '\t') {
                fields.emplace_back();
            } else if (line[at] == '\\' && at + 1 < line.size() && std::string("nrt").find(line[at + 1]) <= 2) {
                fields.back() += "\n\r\t"[std::string("nrt").find(line[++at])];
            } else {
                fields.back() += line[at];
            }
        }
        EXPECT_EQ(fields.size(), columns) << name << ": " << line;
        fields.resize(columns);
    }
    EXPECT_FALSE(rows.empty()) << "no cases in " << name << " next to " << __FILE__;
    return rows;
}

}  // namespace tav::test
