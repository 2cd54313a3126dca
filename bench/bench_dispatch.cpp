// Requests through the endpoint entry and the dispatcher for a GET with a path
// parameter and two query parameters, on tables of 8 and 100 routes, beside
// the route matching alone: the templates' own matcher and, as the peer, the
// templates' ECMAScript expressions run by std::regex.
#include <benchmark/benchmark.h>

#include <regex>
#include <string>
#include <vector>

#include "api/dispatcher.h"
#include "api/live_addresses.h"
#include "api/native_handler.h"
#include "api/route_table.h"
#include "support/route_expression.h"
#include "types/registry.h"

namespace {

using wex::Failure;
using wex::MaybeType;

struct Service {
    wex::BindingTypeRegistry registry;
    wex::RouteTable routes;
    std::vector<std::regex> expressions;
    std::string path;
    HostEndpointContext context{};

    explicit Service(int routeCount) {
        for (int index = 0; index < routeCount; ++index) {
            const std::string pathTemplate = "/svc" + std::to_string(index) + "/v1/items/{id}";
            wex::BindingFunctionInfo function;
            function.handler = wex::MakeApiHandler(
                [](std::uint64_t id, std::int32_t limit, bool verbose) -> MaybeType<Failure, std::uint64_t> {
                    return verbose ? id + static_cast<std::uint64_t>(limit) : id;
                });
            routes.AddRoute(registry, HostMethodGet, pathTemplate, std::move(function))
                .AddPathArgument("id", "")
                .AddQueryArgument("limit", "")
                .AddQueryArgument("verbose", "");
            expressions.emplace_back(tav::test::RouteTemplateExpression(pathTemplate),
                                     std::regex::ECMAScript | std::regex::optimize);
        }
        // The last route registered: every other route is tried first.
        path = "/svc" + std::to_string(routeCount - 1) + "/v1/items/42?limit=10&verbose=true";
        context = {nullptr, routes.Routes().back()};
        // As a module's API table does: the entry refuses a context it does not know as live.
        wex::LiveEndpointContexts().Add(&context);
    }
    ~Service() { wex::LiveEndpointContexts().Remove(&context); }
    Service(const Service&) = delete;
    Service& operator=(const Service&) = delete;

    HostRequest Request() const {
        HostRequest request{};
        request.method = HostMethodGet;
        request.path = path.c_str();
        request.endpointContext = &context;
        request.contentType = "";
        return request;
    }
};

void BM_EndpointEntry(benchmark::State& state) {
    const Service service(static_cast<int>(state.range(0)));
    const HostRequest request = service.Request();
    for (auto _ : state) {
        HostResponse response;
        wex::EndpointEntry(&response, &request);
        benchmark::DoNotOptimize(response.result.payload.natural);
        response.release(&response);
    }
    state.SetItemsProcessed(state.iterations());
}

void BM_DispatchWholeTable(benchmark::State& state) {
    const Service service(static_cast<int>(state.range(0)));
    const HostRequest request = service.Request();
    for (auto _ : state) {
        HostResponse response;
        wex::Dispatch(nullptr, response, request, service.routes.Routes());
        benchmark::DoNotOptimize(response.result.payload.natural);
        response.release(&response);
    }
    state.SetItemsProcessed(state.iterations());
}

// What matching costs inside BM_DispatchWholeTable.
void BM_MatchRoute(benchmark::State& state) {
    const Service service(static_cast<int>(state.range(0)));
    const std::string_view path = std::string_view(service.path).substr(0, service.path.find('?'));
    for (auto _ : state) {
        auto match = wex::MatchRoute(service.routes.Routes(), HostMethodGet, "", path);
        benchmark::DoNotOptimize(match);
    }
    state.SetItemsProcessed(state.iterations());
}

// The peer: the same selection with each template's expression run by std::regex.
void BM_RegexMatchRoute(benchmark::State& state) {
    const Service service(static_cast<int>(state.range(0)));
    const std::string path = service.path.substr(0, service.path.find('?'));
    for (auto _ : state) {
        std::smatch groups;
        std::size_t matched = 0;
        for (const std::regex& expression : service.expressions) {
            if (std::regex_match(path, groups, expression)) {
                matched += groups[1].length();
            }
        }
        benchmark::DoNotOptimize(matched);
    }
    state.SetItemsProcessed(state.iterations());
}

BENCHMARK(BM_EndpointEntry)->Arg(8)->Arg(100);
BENCHMARK(BM_DispatchWholeTable)->Arg(8)->Arg(100);
// One route: what the endpoint entry matches.
BENCHMARK(BM_MatchRoute)->Arg(1)->Arg(8)->Arg(100);
BENCHMARK(BM_RegexMatchRoute)->Arg(1)->Arg(8)->Arg(100);

}  // namespace

BENCHMARK_MAIN();
