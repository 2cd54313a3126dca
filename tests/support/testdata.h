#pragma once

#include <filesystem>
#include <string>

namespace tav::test {

// The shared conformance suites and corpora; absent on a fresh clone elsewhere,
// in which case the tests that need them skip with GTEST_SKIP.
inline std::filesystem::path TestDataDir() { return TAV_TESTDATA_DIR; }

inline bool HasTestData(const std::string& suite) { return std::filesystem::is_directory(TestDataDir() / suite); }

}  // namespace tav::test
