#include "support/case_table.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <sstream>

namespace tav::test {

std::string ReadFileBytes(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::vector<std::vector<std::string>> ReadCases(const std::filesystem::path& table) {
    std::istringstream text(ReadFileBytes(table));
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
    EXPECT_FALSE(rows.empty()) << "no cases in " << table.string();
    return rows;
}

std::string Unescape(std::string_view field) {
    std::string bytes;
    for (std::size_t at = 0; at < field.size(); ++at) {
        const char code = at + 1 < field.size() && field[at] == '\\' ? field[at + 1] : '\0';
        const std::size_t simple = std::string_view("nrt0\\").find(code);
        if (simple != std::string_view::npos) {
            bytes += "\n\r\t\0\\"[simple];
            ++at;
        } else if (code == 'x' && at + 4 <= field.size()) {
            bytes += static_cast<char>(std::stoi(std::string(field.substr(at + 2, 2)), nullptr, 16));
            at += 3;
        } else {
            bytes += field[at];
        }
    }
    return bytes;
}

std::vector<std::vector<std::string>> ReadCaseTable(const char* source, std::string_view name, std::size_t columns) {
    std::vector<std::vector<std::string>> rows = ReadCases(source, name);
    for (std::vector<std::string>& fields : rows) {
        EXPECT_EQ(fields.size(), columns) << name << ": a row of " << fields.size() << " fields";
        fields.resize(columns);
        for (std::string& field : fields) {
            field = Unescape(field);
        }
    }
    return rows;
}

}  // namespace tav::test
