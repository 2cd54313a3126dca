#include "codec/yaml_reader.h"

#include <gtest/gtest.h>

#include <string>

#include "codec/json_writer.h"
#include "describe_value.h"

namespace wex {
namespace {

// The value's picture, or the failure's message.
std::string Read(const std::string& text) {
    const BindingProperty value = ReadYaml(text);
    return value.IsValid() ? tav::test::DescribeValue(value) : std::string(value.GetError());
}

struct Row {
    const char* text;
    std::string expected;
};

void ExpectRows(const Row* rows, std::size_t count) {
    for (std::size_t index = 0; index < count; ++index) {
        SCOPED_TRACE(rows[index].text);
        EXPECT_EQ(Read(rows[index].text), rows[index].expected);
    }
}

TEST(ReadYaml, MappingsSequencesAndScalarsBuildTheTree) {
    const Row rows[] = {
        {"b: 1\na: [x, 'y', \"2\"]\nc:\n  - ~\n  -\n  - {d: -3}",
         "{a: [string:\"x\", string:\"y\", string:\"2\"], b: unsigned:1, c: [empty, empty, {d: signed:-3}]}"},
        {"a: 1\na: [2]", "{a: [unsigned:2]}"},
        {"a: [1]\na: ~", "{a: empty}"},
        {"\"a\\0b\": 1", std::string("{a\0b: unsigned:1}", 17)},
        {"a: |\n  42\n", "{a: string:\"42\n\"}"},
        {"a: >-\n  42\n", "{a: unsigned:42}"},
        {"!!map {? !!str k : !!float 2}", "{k: float:2}"},
        {"- !!int 7\n- !!bool yes", "[unsigned:7, empty]"},
    };
    ExpectRows(rows, std::size(rows));
}

TEST(ReadYaml, TextsWithoutAValueAreAValidEmptyValue) {
    for (const char* text : {"", "# only a comment\n", "---\n...\n", "--- ~\n", "--- \n--- \n"}) {
        SCOPED_TRACE(text);
        const BindingProperty value = ReadYaml(text);
        EXPECT_TRUE(value.IsValid());
        EXPECT_TRUE(value.IsEmpty());
    }
}

TEST(ReadYaml, OnlyOneDocumentMayHoldAValue) {
    const Row rows[] = {
        {"--- 1\n--- 2", "Multi-document YAML is not supported."},
        {"a: 1\n---\nb: 2", "Multi-document YAML is not supported."},
        {"--- 1\n--- ~", "Multi-document YAML is not supported."},
        {"---\n...\n--- 3", "unsigned:3"},
        {"--- ~\n--- [1]", "[unsigned:1]"},
    };
    ExpectRows(rows, std::size(rows));
}

TEST(ReadYaml, AliasesCopyTheirAnchorsValues) {
    const Row rows[] = {
        {"a: &x {b: [1, 2]}\nc: *x", "{a: {b: [unsigned:1, unsigned:2]}, c: {b: [unsigned:1, unsigned:2]}}"},
        {"x: !!str &a 5\ny: *a", "{x: string:\"5\", y: string:\"5\"}"},
        {"- &e\n- *e", "[empty, empty]"},
        {"&k a: 1\n*k : 2", "{a: unsigned:2}"},
    };
    ExpectRows(rows, std::size(rows));

    // The copy is a value of its own: changing one leaves the other.
    BindingProperty value = ReadYaml("a: &x [1]\nb: *x");
    value.Member("b").At(0).SetBool(true);
    EXPECT_EQ(tav::test::DescribeValue(value), "{a: [unsigned:1], b: [bool:true]}");
}

TEST(ReadYaml, FailuresNameTheirEventsPositionFromOne) {
    const Row rows[] = {
        {"{[a]: b}", "Unexpected start of sequence. At line: 1 col: 2"},
        {"? [a]\n: b", "Unexpected start of sequence. At line: 1 col: 3"},
        {"{{a: 1}: b}", "Unexpected start of mapping. At line: 1 col: 2"},
        {"!!int 1: a", "Invalid mapping key. Only string scalar keys are allowed. At line: 1 col: 1"},
        {"- &n 5\n- {*n : 1}", "Invalid mapping key. Only string scalar keys are allowed. At line: 2 col: 4"},
        {"a: *x\nb: &x 1", "Undefined alias encountered: \"x\". At line: 1 col: 4"},
        {"a: &x [1, *x]", "Cannot deserialize cyclic aliases. Alias \"x\". At line: 1 col: 11"},
        {"a: &x {b: {c: *x}}", "Cannot deserialize cyclic aliases. Alias \"x\". At line: 1 col: 15"},
        {"a: &x 1\nb: &x 2", "Duplicate occurrence of anchor \"x\". At line: 2 col: 4"},
        {"a: &x [1]\nb: &x [2]", "Duplicate occurrence of anchor \"x\". At line: 2 col: 4"},
        // The name is taken when the container starts, before its end.
        {"a: &x [&x 1]", "Duplicate occurrence of anchor \"x\". At line: 1 col: 8"},
        // Scalar failures carry no position.
        {"a: !!int -12x", "Value -12x for 'yaml' of type int64_t is in an incorrect format"},
    };
    ExpectRows(rows, std::size(rows));
}

TEST(ReadYaml, ParserErrorsKeepTheParsersPositionsFromZero) {
    const Row rows[] = {
        {"a: [1, 2", "YAML parser error: did not find expected ',' or ']'. At line: 1 col: 0"},
        {"key: 'unterminated", "YAML parser error: found unexpected end of stream. At line: 0 col: 18"},
        {"a: 1\n b: 2", "YAML parser error: mapping values are not allowed in this context. At line: 1 col: 2"},
        {"- a\nb: c", "YAML parser error: did not find expected '-' indicator. At line: 1 col: 0"},
    };
    ExpectRows(rows, std::size(rows));
}

std::string Nested(std::size_t depth) {
    return std::string(depth, '[') + "1" + std::string(depth, ']');
}

TEST(ReadYaml, ContainersNestAThousandLevelsAndNoMore) {
    EXPECT_TRUE(ReadYaml(Nested(1000)).IsValid());
    EXPECT_EQ(Read(Nested(1001)), "Nesting too deep (more than 1000 levels). At line: 1 col: 1001");
    EXPECT_EQ(Read(Nested(1000000)), "Nesting too deep (more than 1000 levels). At line: 1 col: 1001");
}

// Each level holds ten aliases of the one before, so each copies ten times
// more: the budget runs out at the seventh alias of level five (column 40).
std::string NestedAliases(int levels) {
    std::string text = "l0: &l0 [x, x, x, x, x, x, x, x, x, x]\n";
    for (int level = 1; level < levels; ++level) {
        const std::string alias = "*l" + std::to_string(level - 1);
        text += "l" + std::to_string(level) + ": &l" + std::to_string(level) + " [";
        for (int copy = 0; copy < 10; ++copy) {
            text += (copy == 0 ? "" : ", ") + alias;
        }
        text += "]\n";
    }
    return text;
}

TEST(ReadYaml, CopiesOfNestedAliasesAreBounded) {
    const BindingProperty fewer = ReadYaml(NestedAliases(5));
    ASSERT_TRUE(fewer.IsValid()) << fewer.GetError();
    EXPECT_EQ(fewer.Member("l4").Size(), 10u);
    EXPECT_EQ(fewer.Member("l4").At(9).At(9).At(9).At(9).At(9).AsString(), "x");
    EXPECT_EQ(Read(NestedAliases(7)), "Too many nodes created by aliases (more than 1000000). At line: 6 col: 40");
}

}  // namespace
}  // namespace wex
