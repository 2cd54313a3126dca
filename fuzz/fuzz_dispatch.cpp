// Drives the dispatcher with arbitrary request records on a small route table:
// any method, path, query, headers, argument entries and body must give a
// response with a value or an error text, and release cleanly.
#include <fuzzer/FuzzedDataProvider.h>

#include <cstdint>
#include <string>
#include <vector>

#include "api/dispatcher.h"
#include "api/native_handler.h"
#include "api/route_table.h"
#include "types/api_description.h"
#include "types/registry.h"

namespace {

struct Item {
    std::string name;
    std::int32_t count = 0;
    std::vector<std::uint64_t> ids;
};

using wex::BindingProperty;
using wex::Failure;
using wex::MaybeType;

struct Service {
    wex::BindingTypeRegistry registry;
    wex::RouteTable routes;

    Service() {
        wex::RegisterBuiltinTypes(registry);
        registry.Struct<Item>("Item").Field("name", &Item::name).Field("count", &Item::count).Field("ids", &Item::ids);
        Add(HostMethodGet, "/items/{id}",
            [](std::uint64_t id, bool verbose) -> MaybeType<Failure, Item> {
                if (verbose && id == 0) {
                    throw std::runtime_error("zero");
                }
                return Item{"item", static_cast<std::int32_t>(id), {id}};
            })
            .AddPathArgument("id", "")
            .AddQueryArgument("verbose", "");
        Add(HostMethodPost, "/items/{+path}",
            [](std::string path, Item item, BindingProperty body,
               std::vector<std::int32_t> counts) -> MaybeType<Failure, BindingProperty> {
                BindingProperty answer;
                answer.Member("path").SetString(path);
                answer.Member("item").SetString(item.name);
                answer.Member("body") = body;
                answer.Member("counts").SetUnsigned(counts.size());
                return answer;
            })
            .AddPathArgument("path", "")
            .AddArgument("item", "", wex::ArgumentLocationAnywhere)
            .AddArgument("body", "", wex::ArgumentLocationBody)
            .AddArgument("counts", "", wex::ArgumentLocationHeader);
        Add(HostMethodAny, "/help", []() -> MaybeType<Failure, void> { return {}; });
        Add(HostMethodGet, "/page{#part}", [](std::string part) -> MaybeType<Failure, std::string> {
            return Failure(403, "no {part}", {part});
        }).AddPathArgument("part", "");
    }

    template <class Handler>
    wex::ApiArgumentBuilder Add(std::uint32_t method, const char* pathTemplate, Handler handler) {
        wex::BindingFunctionInfo function;
        function.handler = wex::MakeApiHandler(std::move(handler));
        if (std::string_view(pathTemplate) == "/help") {
            function.tags = {"$builtin"};
        }
        return routes.AddRoute(registry, method, pathTemplate, std::move(function), "PURGE");
    }
};

HostValue TextValue(const std::string& text) {
    HostValue value{};
    value.tag = HostValueBorrowedString;
    value.payload.ref.data = text.c_str();
    return value;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Service service;
    FuzzedDataProvider input(data, size);
    const std::uint32_t method = input.ConsumeIntegralInRange<std::uint32_t>(0, 9);
    const std::string path = input.ConsumeRandomLengthString(512);
    const std::string methodName = input.ConsumeRandomLengthString(8);
    std::vector<std::string> texts;
    for (std::size_t count = input.ConsumeIntegralInRange<std::size_t>(0, 6); count > 0; --count) {
        texts.push_back(input.ConsumeRandomLengthString(64));
    }
    std::vector<HostHeader> headers;
    for (std::size_t index = 0; index + 1 < texts.size(); index += 2) {
        headers.push_back({texts[index].c_str(), texts[index + 1].c_str()});
    }
    std::vector<HostArgument> arguments;
    for (std::size_t index = 0; index < texts.size(); ++index) {
        const bool named = index % 3 == 0;
        arguments.push_back({named ? texts[index].c_str() : nullptr, TextValue(texts[index])});
    }
    const bool withArguments = input.ConsumeBool();
    const std::string contentType = input.ConsumeRandomLengthString(48);
    const std::string body = input.ConsumeRemainingBytesAsString();

    HostRequest request{};
    request.method = method;
    request.path = path.c_str();
    request.arguments = withArguments && !arguments.empty() ? arguments.data() : nullptr;
    request.argumentCount = withArguments ? static_cast<std::uint32_t>(arguments.size()) : 0;
    request.headers = headers.empty() ? nullptr : headers.data();
    request.headerCount = static_cast<std::uint32_t>(headers.size());
    request.contentType = contentType.c_str();
    request.body = body.empty() ? nullptr : body.data();
    request.bodyLength = static_cast<std::uint32_t>(body.size());
    request.methodName = methodName.c_str();

    HostResponse response;
    wex::Dispatch(&service.registry, response, request, service.routes.Routes());
    if (response.release == nullptr) {
        __builtin_trap();  // every response carries its release function
    }
    if (response.streamClose != nullptr) {
        response.streamClose(response.streamProducer);
    }
    response.release(&response);
    return 0;
}
