#include "codec/msgpack_reader.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

#include "describe_value.h"
#include "testdata_file.h"

namespace wex {
namespace {

using Bytes = std::vector<std::uint8_t>;

MessagePackResult Read(const Bytes& bytes) {
    return ReadMessagePack(bytes.data(), bytes.size());
}

TEST(ReadMessagePack, EachInputReadsToItsValueOrFailure) {
    const auto rows = tav::test::ReadCases("msgpack_cases.tsv");
    ASSERT_EQ(rows.size(), 34u);
    for (const auto& row : rows) {
        ASSERT_EQ(row.size(), 4u);
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

TEST(ReadMessagePack, MapsKeepNameOrderAndTheLastOfARepeatedKey) {
    const MessagePackResult result =
        Read({0x83, 0xA1, 'b', 0x01, 0xA1, 'a', 0x92, 0x01, 0x02, 0xA1, 'b', 0x81, 0xA1, 'x', 0xC0});
    EXPECT_EQ(tav::test::DescribeValue(result.value), "{a: [signed:1, signed:2], b: {x: empty}}");
    EXPECT_EQ(result.consumed, 15u);
    EXPECT_EQ(tav::test::DescribeValue(Read({0x82, 0xA1, 'a', 0x92, 0x01, 0x02, 0xA1, 'a', 0xC0}).value), "{a: empty}");
}

TEST(ReadMessagePack, ReadingStopsAfterOneValue) {
    EXPECT_EQ(Read({0x01, 0x02}).consumed, 1u);
    EXPECT_EQ(Read({0x91, 0x90, 0x01}).consumed, 2u);
    const MessagePackResult empty = Read({});
    EXPECT_TRUE(empty.value.IsValid());
    EXPECT_TRUE(empty.value.IsEmpty());
    EXPECT_EQ(empty.consumed, 0u);
}

TEST(ReadMessagePack, InputEndingInsideContainersKeepsWhatWasRead) {
    const MessagePackResult partial = Read({0x92, 0x01});
    EXPECT_TRUE(partial.value.IsValid());
    EXPECT_EQ(tav::test::DescribeValue(partial.value), "[signed:1]");
    EXPECT_EQ(partial.consumed, 2u);

    // A key without its value adds no member.
    const MessagePackResult key = Read({0x82, 0xA1, 'a', 0x01, 0xA1, 'b'});
    EXPECT_EQ(tav::test::DescribeValue(key.value), "{a: signed:1}");
    EXPECT_EQ(key.consumed, 6u);

    // Four thousand million elements declared, none present: nothing is reserved for them.
    const MessagePackResult huge = Read({0xDD, 0xFF, 0xFF, 0xFF, 0xFF});
    EXPECT_TRUE(huge.value.IsValid());
    EXPECT_EQ(tav::test::DescribeValue(huge.value), "[]");
}

TEST(ReadMessagePack, AMillionNestedArraysReadWithoutRecursion) {
    constexpr std::size_t kDepth = 1000000;
    Bytes bytes(kDepth, 0x91);
    bytes.push_back(0x2A);
    const MessagePackResult result = Read(bytes);
    ASSERT_TRUE(result.value.IsValid());
    EXPECT_EQ(result.consumed, kDepth + 1);
    const BindingProperty* node = &result.value;
    for (std::size_t level = 0; level < kDepth; ++level) {
        ASSERT_EQ(node->Size(), 1u);
        node = &node->At(0);
    }
    EXPECT_EQ(tav::test::DescribeValue(*node), "signed:42");
}

TEST(ReadMessagePack, AMillionOpenMapsEndWithoutError) {
    Bytes bytes;
    for (int level = 0; level < 1000000; ++level) {
        bytes.insert(bytes.end(), {0x81, 0xA1, 'k'});
    }
    const MessagePackResult result = Read(bytes);
    EXPECT_TRUE(result.value.IsValid());
    EXPECT_EQ(result.consumed, bytes.size());
}

}  // namespace
}  // namespace wex
