#include "codec/msgpack_reader.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

#include "codec/json_writer.h"
#include "support/case_table.h"
#include "support/describe_value.h"
#include "support/nested_text.h"

namespace wex {
namespace {

using Bytes = std::vector<std::uint8_t>;

MessagePackResult Read(const Bytes& bytes) {
    return ReadMessagePack(bytes.data(), bytes.size());
}

TEST(ReadMessagePack, EachInputReadsToItsValueOrFailure) {
    for (const auto& row : tav::test::ReadCaseTable(__FILE__, "msgpack_cases.tsv", 4)) {
        SCOPED_TRACE(row[0]);
        Bytes bytes;
        std::istringstream hex(row[1]);
        for (unsigned byte = 0; hex >> std::hex >> byte;) {
            bytes.push_back(static_cast<std::uint8_t>(byte));
        }
        const MessagePackResult result = Read(bytes);
        EXPECT_EQ(
            result.value.IsValid() ? tav::test::DescribeValue(result.value) : std::string(result.value.GetError()),
            row[3]);
        EXPECT_EQ(result.consumed, std::stoul(row[2]));
        if (!result.value.IsValid()) {
            EXPECT_EQ(result.value.Size(), 1u);
        }
    }
}

TEST(ReadMessagePack, AMillionNestedArraysOrOpenMapsReadWithoutRecursion) {
    constexpr std::size_t kDepth = 1000000;
    Bytes bytes(kDepth, 0x91);
    bytes.push_back(0x2A);
    const MessagePackResult result = Read(bytes);
    ASSERT_TRUE(result.value.IsValid());
    EXPECT_EQ(result.consumed, kDepth + 1);
    EXPECT_EQ(WriteJson(result.value), tav::test::NestedText(kDepth, "42"));

    // A million open maps end without error.
    Bytes maps;
    for (std::size_t level = 0; level < kDepth; ++level) {
        maps.insert(maps.end(), {0x81, 0xA1, 'k'});
    }
    const MessagePackResult open = Read(maps);
    EXPECT_TRUE(open.value.IsValid());
    EXPECT_EQ(open.consumed, maps.size());
}

}  // namespace
}  // namespace wex
