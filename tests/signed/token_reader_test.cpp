#include "signed/token_reader.h"

#include <gtest/gtest.h>

#include <string>

#include "codec/json_writer.h"

namespace Orvel::Client::Leagues::json {
namespace {

// The value read, written back as compact JSON; or the exception's kind and message.
std::string ReadAsText(std::string_view text) {
    try {
        return wex::WriteJson(ReadObject(text));
    } catch (const ScanException& error) {
        return std::string("scan: ") + error.what();
    } catch (const ParseException& error) {
        return std::string("parse: ") + error.what();
    }
}

TEST(TokenJsonReader, ReadsAnObjectOfEveryKindOfValue) {
    EXPECT_EQ(ReadAsText(R"( {"sub": "1234", "exp": 1700000000, "admin": true, "guest": false, "scope": null,
                             "roles": ["a", 2.5, [], {}], "nested": {"x": -1e3}} )"),
              R"({"admin":true,"exp":1700000000.0,"guest":false,"nested":{"x":-1000.0},)"
              R"("roles":["a",2.5,[],{}],"scope":null,"sub":"1234"})");
    EXPECT_EQ(ReadAsText("{}"), "{}");
    EXPECT_EQ(ReadAsText("\t\r\n{ }\n"), "{}");
}

TEST(TokenJsonReader, NumbersAreDoubles) {
    const wex::BindingProperty object = ReadObject(R"({"a": 1700000000.9, "b": 0, "c": -0.5e-2, "d": 1E+2})");
    EXPECT_EQ(object.Member("a").Kind(), wex::BindingPropertyKind::Float);
    EXPECT_DOUBLE_EQ(object.Member("a").AsDouble(), 1700000000.9);
    EXPECT_EQ(object.Member("b").Kind(), wex::BindingPropertyKind::Float);
    EXPECT_DOUBLE_EQ(object.Member("c").AsDouble(), -0.005);
    EXPECT_DOUBLE_EQ(object.Member("d").AsDouble(), 100.0);
}

TEST(TokenJsonReader, StringEscapesStandForTheirCharactersExceptUnicodeWhichStaysAsWritten) {
    const wex::BindingProperty object = ReadObject(R"({"s": "q\" b\\ s\/ \b\f\n\r\t \u00e9 \u12"})");
    EXPECT_EQ(object.Member("s").AsString(), "q\" b\\ s/ \b\f\n\r\t \\u00e9 \\u12");
    EXPECT_EQ(ReadObject(R"({"a\tb": 1})").HasMember("a\tb"), true);
}

TEST(TokenJsonReader, StringsKeepRawBytes) {
    const std::string text = std::string("{\"k\": \"\x01\xff") + '\0' + "z\"}";
    EXPECT_EQ(ReadObject(text).Member("k").AsString(), std::string_view("\x01\xff\0z", 4));
}

TEST(TokenJsonReader, FailsAtTheFirstErrorWithItsMessage) {
    struct Row {
        const char* text;
        const char* outcome;
    };
    const Row rows[] = {
        // Scanning.
        {R"({"a": "x\q"})", R"(scan: Unrecognized escape sequence found in string: \q)"},
        {R"({"a": "x\)", R"(scan: Unrecognized escape sequence found in string: \)"},
        {R"({"a": 1.2.3})", "scan: Unexpected character in NUMBER token: 1.2.3"},
        {R"({"a": 1e})", "scan: Unexpected character in NUMBER token: 1e"},
        {R"({"a": -})", "scan: Unexpected character in NUMBER token: -"},
        {R"({"a": 1-2+3})", "scan: Unexpected character in NUMBER token: 1-2+3"},
        {R"({"a": 1e999})", "scan: Unexpected character in NUMBER token: 1e999"},
        {R"({"a": tru})", "scan: Expected string: true"},
        {R"({"a": fals)", "scan: Expected string: false"},
        {R"({"a": nul})", "scan: Expected string: null"},
        {R"({"a": True})", "scan: Unexpected character in stream: T"},
        {R"({"a": +1})", "scan: Unexpected character in stream: +"},
        {R"({"a": .5})", "scan: Unexpected character in stream: ."},
        {R"({"a": 'x'})", "scan: Unexpected character in stream: '"},
        {"{\"a\": 1}\x01", "scan: Unexpected character in stream: \x01"},
        // Tokens are read as the grammar asks for them: the first error in the text wins.
        {R"([1, @])", "parse: Unexpected token: ["},
        {R"({"a": 1} @)", "scan: Unexpected character in stream: @"},
        // Grammar.
        {R"({"a": 1, "a": 2})", "parse: Duplicate object member token: a"},
        {R"({"o": {"a": 1, "b": 2, "a": 3}})", "parse: Duplicate object member token: a"},
        {R"({"a": 1, "A": 2, "a ": 3})", R"({"A":2.0,"a":1.0,"a ":3.0})"},
        {R"([])", "parse: Unexpected token: ["},
        {R"("text")", "parse: Unexpected token: text"},
        {R"(42)", "parse: Unexpected token: 42"},
        {R"({1: 2})", "parse: Unexpected token: 1"},
        {R"({"a" 1})", "parse: Unexpected token: 1"},
        {R"({"a": })", "parse: Unexpected token: }"},
        {R"({"a": 1,})", "parse: Unexpected token: }"},
        {R"({"a": [1,]})", "parse: Unexpected token: ]"},
        {R"({"a": [1 2]})", "parse: Unexpected token: 2"},
        {R"({"a": 1 "b": 2})", "parse: Unexpected token: b"},
        {R"({"a": [}})", "parse: Unexpected token: }"},
        {R"({"a": {]})", "parse: Unexpected token: ]"},
        {R"({"a": 1]})", "parse: Unexpected token: ]"},
        {R"({, "a": 1})", "parse: Unexpected token: ,"},
        {R"({"a": :})", "parse: Unexpected token: :"},
        // The end where a value is needed, and where punctuation or a name is.
        {"", "parse: Unexpected end of token stream"},
        {"  \n ", "parse: Unexpected end of token stream"},
        {R"({"a":)", "parse: Unexpected end of token stream"},
        {R"({"a": [)", "parse: Unexpected end of token stream"},
        {R"({"a": [1,)", "parse: Unexpected end of token stream"},
        {R"({)", "parse: Unexpected End of token stream"},
        {R"({"a")", "parse: Unexpected End of token stream"},
        {R"({"a": 1)", "parse: Unexpected End of token stream"},
        {R"({"a": 1,)", "parse: Unexpected End of token stream"},
        {R"({"a": [1)", "parse: Unexpected End of token stream"},
        {R"({"a": "open)", "parse: Unexpected End of token stream"},
        // After the object.
        {R"({} {})", "parse: Expected End of token stream; found {"},
        {R"({}})", "parse: Expected End of token stream; found }"},
        {R"({} "tail)", "parse: Expected End of token stream; found tail"},
        {R"({} null)", "parse: Expected End of token stream; found null"},
        {R"({} -2.5)", "parse: Expected End of token stream; found -2.5"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(ReadAsText(row.text), row.outcome);
    }
}

TEST(TokenJsonReader, BothErrorKindsAreJsonExceptions) {
    EXPECT_THROW(ReadObject("{\"a\": #}"), Exception);
    EXPECT_THROW(ReadObject("{\"a\": }"), Exception);
}

TEST(TokenJsonReader, DeepNestingNeitherRecursesNorFails) {
    constexpr int kDepth = 200000;
    const std::string deep = "{\"a\": " + std::string(kDepth, '[') + std::string(kDepth, ']') + "}";
    const wex::BindingProperty object = ReadObject(deep);
    EXPECT_EQ(object.Member("a").Size(), 1u);
    EXPECT_EQ(ReadAsText("{\"a\": " + std::string(kDepth, '[')), "parse: Unexpected end of token stream");
    std::string objects = "{";
    for (int level = 0; level < kDepth; ++level) {
        objects += "\"o\":{";
    }
    const wex::BindingProperty nested = ReadObject(objects + std::string(kDepth + 1, '}'));
    int depth = 0;
    for (const wex::BindingProperty* node = &nested; node->HasMember("o"); node = &node->Member("o")) {
        ++depth;
    }
    EXPECT_EQ(depth, kDepth);
    EXPECT_EQ(ReadAsText(objects + std::string(kDepth, '}')), "parse: Unexpected End of token stream");
}

}  // namespace
}  // namespace Orvel::Client::Leagues::json
