#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace tav::test {

// The whole file as raw bytes; empty when it cannot be read.
inline std::string ReadFileBytes(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

}  // namespace tav::test
