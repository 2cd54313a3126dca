#include "codec/msgpack_reader.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "describe_value.h"

namespace wex {
namespace {

using Bytes = std::vector<std::uint8_t>;

MessagePackResult Read(const Bytes& bytes) {
    return ReadMessagePack(bytes.data(), bytes.size());
}

struct ValueRow {
    const char* name;
    Bytes bytes;
    std::string expected;
};

TEST(ReadMessagePack, EveryMarkerReadsToItsKindAndValue) {
    const ValueRow rows[] = {
        {"positive fixint low", {0x00}, "signed:0"},
        {"positive fixint high", {0x7F}, "signed:127"},
        {"negative fixint low", {0xE0}, "signed:-32"},
        {"negative fixint high", {0xFF}, "signed:-1"},
        {"nil", {0xC0}, "empty"},
        {"false", {0xC2}, "bool:false"},
        {"true", {0xC3}, "bool:true"},
        {"uint 8", {0xCC, 0x05}, "unsigned:5"},
        {"uint 8 max", {0xCC, 0xFF}, "unsigned:255"},
        {"uint 16 max", {0xCD, 0xFF, 0xFF}, "unsigned:65535"},
        {"uint 32 max", {0xCE, 0xFF, 0xFF, 0xFF, 0xFF}, "unsigned:4294967295"},
        {"uint 64 max", {0xCF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}, "unsigned:18446744073709551615"},
        {"uint 64 big-endian", {0xCF, 0x01, 0x02, 0x03, 0x04, 0x05, 0x06, 0x07, 0x08}, "unsigned:72623859790382856"},
        {"int 8 min", {0xD0, 0x80}, "signed:-128"},
        {"int 8 max", {0xD0, 0x7F}, "signed:127"},
        {"int 16 min", {0xD1, 0x80, 0x00}, "signed:-32768"},
        {"int 32 min", {0xD2, 0x80, 0x00, 0x00, 0x00}, "signed:-2147483648"},
        {"int 32 max", {0xD2, 0x7F, 0xFF, 0xFF, 0xFF}, "signed:2147483647"},
        {"int 64 min", {0xD3, 0x80, 0, 0, 0, 0, 0, 0, 0}, "signed:-9223372036854775808"},
        {"int 64 -2", {0xD3, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFE}, "signed:-2"},
        {"float 32", {0xCA, 0x3F, 0xC0, 0x00, 0x00}, "float:1.5"},
        {"float 32 widened", {0xCA, 0x3D, 0xCC, 0xCC, 0xCD}, "float:0.10000000149011612"},
        {"float 64", {0xCB, 0x3F, 0xB9, 0x99, 0x99, 0x99, 0x99, 0x99, 0x9A}, "float:0.10000000000000001"},
        {"fixstr empty", {0xA0}, "string:\"\""},
        {"fixstr", {0xA3, 'a', 'b', 'c'}, "string:\"abc\""},
        {"str 8", {0xD9, 0x02, 'h', 'i'}, "string:\"hi\""},
        {"str 16", {0xDA, 0x00, 0x02, 'h', 'i'}, "string:\"hi\""},
        {"str 32", {0xDB, 0x00, 0x00, 0x00, 0x02, 'h', 'i'}, "string:\"hi\""},
        {"bin 8", {0xC4, 0x02, 0x00, 0x01}, "blob:AAE="},
        {"bin 16", {0xC5, 0x00, 0x01, 0xFF}, "blob:/w=="},
        {"bin 32 empty", {0xC6, 0x00, 0x00, 0x00, 0x00}, "blob:"},
        {"fixarray", {0x92, 0x01, 0xC3}, "[signed:1, bool:true]"},
        {"fixarray empty", {0x90}, "[]"},
        {"array 16", {0xDC, 0x00, 0x01, 0xC0}, "[empty]"},
        {"array 32", {0xDD, 0x00, 0x00, 0x00, 0x01, 0x07}, "[signed:7]"},
        {"fixmap", {0x81, 0xA1, 'a', 0x01}, "{a: signed:1}"},
        {"fixmap empty", {0x80}, "{}"},
        {"map 16", {0xDE, 0x00, 0x01, 0xA1, 'k', 0x90}, "{k: []}"},
        {"map 32 with str 8 key", {0xDF, 0x00, 0x00, 0x00, 0x01, 0xD9, 0x01, 'k', 0xC0}, "{k: empty}"},
    };
    for (const ValueRow& row : rows) {
        SCOPED_TRACE(row.name);
        const MessagePackResult result = Read(row.bytes);
        EXPECT_TRUE(result.value.IsValid()) << result.value.GetError();
        EXPECT_EQ(tav::test::DescribeValue(result.value), row.expected);
        EXPECT_EQ(result.consumed, row.bytes.size());
    }
}

TEST(ReadMessagePack, MapsKeepNameOrderAndTheLastOfARepeatedKey) {
    const MessagePackResult result =
        Read({0x83, 0xA1, 'b', 0x01, 0xA1, 'a', 0x92, 0x01, 0x02, 0xA1, 'b', 0x81, 0xA1, 'x', 0xC0});
    EXPECT_EQ(tav::test::DescribeValue(result.value), "{a: [signed:1, signed:2], b: {x: empty}}");
    EXPECT_EQ(result.consumed, 15u);
}

TEST(ReadMessagePack, ARepeatedKeySetToNilDropsTheEarlierValue) {
    const MessagePackResult result = Read({0x82, 0xA1, 'a', 0x92, 0x01, 0x02, 0xA1, 'a', 0xC0});
    EXPECT_EQ(tav::test::DescribeValue(result.value), "{a: empty}");
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

struct ErrorRow {
    const char* name;
    Bytes bytes;
    std::string message;
    std::size_t consumed;
};

TEST(ReadMessagePack, BadInputFailsWithItsMessageAndPosition) {
    const ErrorRow rows[] = {
        {"never used", {0xC1}, "Invalid MessagePack data at position 1.", 1},
        {"ext 8", {0xC7, 0x01, 0x01, 0x00}, "Invalid MessagePack data at position 1.", 1},
        {"ext 16", {0xC8}, "Invalid MessagePack data at position 1.", 1},
        {"ext 32", {0xC9}, "Invalid MessagePack data at position 1.", 1},
        {"fixext 1", {0xD4, 0x01, 0x00}, "Invalid MessagePack data at position 1.", 1},
        {"fixext 16", {0xD8}, "Invalid MessagePack data at position 1.", 1},
        {"nested", {0x92, 0x01, 0xD5}, "Invalid MessagePack data at position 3.", 3},
        {"integer key", {0x81, 0x01, 0x01}, "Invalid MessagePack data at position 2. Map keys must be strings.", 2},
        {"nil key", {0x81, 0xC0}, "Invalid MessagePack data at position 2. Map keys must be strings.", 2},
        {"bin key", {0x81, 0xC4, 0x00}, "Invalid MessagePack data at position 2. Map keys must be strings.", 2},
        {"uint 8", {0xCC}, "Invalid MessagePack data. 8-bit integer value at position 1 is truncated.", 1},
        {"uint 16", {0xCD, 0x00}, "Invalid MessagePack data. 16-bit integer value at position 1 is truncated.", 1},
        {"int 32", {0xD2, 0, 0, 0}, "Invalid MessagePack data. 32-bit integer value at position 1 is truncated.", 1},
        {"uint 64", {0xCF, 0, 0, 0, 0, 0, 0, 0},
         "Invalid MessagePack data. 64-bit integer value at position 1 is truncated.", 1},
        {"float 32", {0xCA}, "Invalid MessagePack data. 32-bit integer value at position 1 is truncated.", 1},
        {"float 64", {0x91, 0xCB, 0}, "Invalid MessagePack data. 64-bit integer value at position 2 is truncated.", 2},
        {"str 8 length", {0xD9}, "Invalid MessagePack data. 8-bit integer value at position 1 is truncated.", 1},
        {"array 16 count", {0xDC, 0x00}, "Invalid MessagePack data. 16-bit integer value at position 1 is truncated.",
         1},
        {"map 32 count", {0xDF}, "Invalid MessagePack data. 32-bit integer value at position 1 is truncated.", 1},
        {"bin 32 length", {0xC6, 0, 0}, "Invalid MessagePack data. 32-bit integer value at position 1 is truncated.",
         1},
        {"fixstr payload", {0xA5, 0x61, 0x62}, "Invalid MessagePack data. String of size 5 at position 1 is truncated.",
         1},
        {"str 32 payload", {0xDB, 0, 0, 0, 9, 'a'},
         "Invalid MessagePack data. String of size 9 at position 5 is truncated.", 5},
        {"key payload", {0x81, 0xA2, 'a'}, "Invalid MessagePack data. String of size 2 at position 2 is truncated.", 2},
        {"bin 8 payload", {0xC4, 0x05, 0x00},
         "Invalid MessagePack data. Raw bytes of size 5 at position 2 are truncated.", 2},
        {"bin 32 payload", {0xC6, 0xFF, 0xFF, 0xFF, 0xFF},
         "Invalid MessagePack data. Raw bytes of size 4294967295 at position 5 are truncated.", 5},
    };
    for (const ErrorRow& row : rows) {
        SCOPED_TRACE(row.name);
        const MessagePackResult result = Read(row.bytes);
        EXPECT_FALSE(result.value.IsValid());
        EXPECT_EQ(result.value.GetError(), row.message);
        EXPECT_EQ(result.consumed, row.consumed);
        // The partial tree is dropped: the error member is all that is left.
        EXPECT_EQ(result.value.Size(), 1u);
    }
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
