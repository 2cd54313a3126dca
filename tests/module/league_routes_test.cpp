// Each route of the module held against its template and its handler, so
// that a forgotten or misspelt argument name fails here rather than on every
// request to the route, with "Unknown argument".
#include <gtest/gtest.h>

#include <cstddef>
#include <set>
#include <string>

#include "api/route_table.h"
#include "module/leagues_module.h"
#include "support/loaded_module.h"

namespace Orvel::Client::Leagues {
namespace {

TEST(LeagueRoutes, NameEveryHandlerArgumentAndTakeThePathArgumentsFromTheTemplate) {
    const test::LoadedModule loaded;
    const wex::RouteList routes = loaded.Module().Routes();
    ASSERT_EQ(routes.size(), 8u);
    for (const wex::Route* route : routes) {
        SCOPED_TRACE(route->pathTemplate);
        std::multiset<std::string> templateParameters;
        for (const wex::RouteTemplateParameter& parameter : route->parameters) {
            templateParameters.insert(parameter.name);
        }
        std::multiset<std::string> pathArguments;
        const auto& arguments = route->function->arguments;
        for (std::size_t index = 0; index < arguments.size(); ++index) {
            SCOPED_TRACE(index);
            // The handler describes the type of each of its arguments; the builder names them.
            EXPECT_NE(arguments[index].type.kind, wex::BindingTypeKind::None)
                << "named, but no argument of the handler";
            EXPECT_FALSE(arguments[index].name.empty()) << "an argument of the handler without a name";
            if (route->argumentLocations[index] == wex::ArgumentLocationPath) {
                pathArguments.insert(arguments[index].name);
            }
        }
        EXPECT_EQ(pathArguments, templateParameters);
    }
}

}  // namespace
}  // namespace Orvel::Client::Leagues
