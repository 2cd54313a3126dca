#include "api/route_template.h"

#include <gtest/gtest.h>

#include <regex>
#include <string>
#include <vector>

#include "api/route_table.h"
#include "support/case_table.h"
#include "support/route_expression.h"

namespace wex {

namespace {

TEST(RouteTemplate, NormalisesOneTrailingSlashAndNamesEachParameterWithItsKind) {
    const char* const kinds[] = {"plain", "reserved", "fragment"};
    for (const auto& row : tav::test::ReadCaseTable(__FILE__, "route_templates.tsv", 3)) {
        SCOPED_TRACE(row[0]);
        EXPECT_EQ(NormalizeRouteTemplate(row[0]), row[1]);
        std::string parameters;
        for (const RouteTemplateParameter& parameter : CompileRouteTemplate(row[0]).parameters) {
            parameters += (parameters.empty() ? "" : " ") + std::string(kinds[static_cast<int>(parameter.kind)]) + ":" +
                          parameter.name;
        }
        EXPECT_EQ(parameters, row[2]);
    }
}

// The other escapes are decoded in the dispatcher's request table.
TEST(UrlDecoding, DecodesAnEscapedNulCharacter) {
    EXPECT_EQ(DecodeUrlComponent("%00"), std::string(1, '\0'));
}

// The captures that the template's ECMAScript expression gives, the matcher of record.
std::optional<std::vector<std::string_view>> ExpressionMatch(const std::regex& expression, const std::string& path) {
    std::smatch groups;
    if (!std::regex_match(path, groups, expression)) {
        return std::nullopt;
    }
    std::vector<std::string_view> captures;
    for (std::size_t index = 1; index < groups.size(); ++index) {
        captures.emplace_back(path.data() + groups.position(index), groups.length(index));
    }
    return captures;
}

// Every path up to maxLength characters over alphabet.
std::vector<std::string> AllPaths(const std::string& alphabet, std::size_t maxLength) {
    std::vector<std::string> paths = {""};
    for (std::size_t start = 0, length = 0; length < maxLength; ++length) {
        const std::size_t end = paths.size();
        for (std::size_t index = start; index < end; ++index) {
            for (const char c : alphabet) {
                paths.push_back(paths[index] + c);
            }
        }
        start = end;
    }
    return paths;
}

TEST(RoutePattern, MatchesExactlyAsTheTemplatesExpressionOnGeneratedPaths) {
    // Each template shape: plain, reserved and fragment parameters, literal
    // dots and other escaped characters, neighbouring and repeated captures.
    const char* templates[] = {
        "/{a}",     "/a/{b}",   "/{+r}",   "{#f}", "/p{#f}", "/{a}.{b}",  "/{a}{b}",   "/{+r}/{a}", "/{a}/{+r}",
        "{+r}{+s}", "/x.{a}/y", "/({a})$", "{a}",  "/{+r}#", "/{#f}/{a}", "/{+#odd+}", "/{}",
    };
    for (const char* pathTemplate : templates) {
        SCOPED_TRACE(pathTemplate);
        const CompiledRouteTemplate compiled = CompileRouteTemplate(pathTemplate);
        // The template's own literal characters, and the ones that end captures.
        std::string alphabet = "/a#\n";
        for (const RoutePatternPiece& piece : compiled.pieces) {
            for (const char c : piece.literal) {
                if (alphabet.find(c) == std::string::npos) {
                    alphabet += c;
                }
            }
        }
        const std::vector<std::string> paths = AllPaths(alphabet, alphabet.size() <= 6 ? 6 : 5);
        const std::regex expression(tav::test::RouteTemplateExpression(pathTemplate),
                                    std::regex::ECMAScript | std::regex::optimize);
        const RoutePattern pattern(compiled.pieces);
        std::size_t matched = 0;
        for (const std::string& path : paths) {
            const auto expected = ExpressionMatch(expression, path);
            ASSERT_EQ(pattern.Match(path), expected) << "path '" << path << "'";
            matched += expected.has_value();
        }
        EXPECT_GT(matched, 0u);
    }
}

TEST(RoutePattern, LongPathsMatchWithoutDeepRecursion) {
    const CompiledRouteTemplate compiled = CompileRouteTemplate("/t/{a}/x/{+rest}");
    const RoutePattern pattern(compiled.pieces);
    const std::string segment(2'000'000, 'a');
    const auto captures = pattern.Match("/t/" + segment + "/x/" + segment + "/" + segment);
    ASSERT_TRUE(captures);
    EXPECT_EQ((*captures)[0].size(), segment.size());
    EXPECT_EQ((*captures)[1].size(), 2 * segment.size() + 1);
    EXPECT_FALSE(pattern.Match("/t/" + segment));
}

}  // namespace

}  // namespace wex
