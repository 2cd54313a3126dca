// The request operations of PluginBase: one exchange with the host, its
// checks in order, and the answer read as a binding value.
#include <string>

#include "api/route_table.h"
#include "codec/json_reader.h"
#include "host/plugin_base.h"
#include "host/response_releaser.h"
#include "host/stream_reading.h"
#include "types/host_value.h"

namespace wex {

namespace {

Failure RequestFailure(std::int32_t code, ConstantText templateText, std::uint32_t method, std::string_view url,
                       std::string_view error) {
    return Failure(code, templateText.View(), {std::string(MethodName(method)), std::string(url), std::string(error)});
}

}  // namespace

MaybeType<Failure, void> PluginBase::SendEncodedRequest(HostResponse& response, std::uint32_t method,
                                                        std::string_view url, const RequestArguments& arguments) {
    if (arguments.Failed()) {
        return RequestFailure(400, "Request not sent: Error converting parameters for {method} {url}: {error}", method,
                              url, arguments.Error());
    }
    const std::string path(url);
    HostRequest request{};
    request.method = method >= HostMethodDelete && method <= HostMethodOther ? method : std::uint32_t{HostMethodAny};
    request.path = path.c_str();
    request.arguments = arguments.Entries();
    request.argumentCount = arguments.Count();
    request.context = hostContext_;
    SendRequest(response, request);
    const char* const error = response.error;
    if (error != nullptr) {
        const std::uint32_t status = response.status;
        return RequestFailure(static_cast<std::int32_t>(status), "Error response for {method} {url}: {error}", method,
                              url, error);
    }
    return {};
}

MaybeType<Failure, void> PluginBase::RequestWithoutValue(std::uint32_t method, std::string_view url,
                                                         const RequestArguments& arguments) {
    HostResponse response{};
    const ResponseReleaser releaser(response);
    return SendEncodedRequest(response, method, url, arguments);
}

MaybeType<Failure, BindingProperty> PluginBase::RequestValue(std::uint32_t method, std::string_view url,
                                                             const RequestArguments& arguments) {
    HostResponse response{};
    const ResponseReleaser releaser(response);
    MaybeType<Failure, void> sent = SendEncodedRequest(response, method, url, arguments);
    if (sent.HasFailure()) {
        return std::move(sent).GetFailure();
    }
    if (response.streamRead != nullptr) {
        std::string text;
        if (!ReadStreamedBody(response, text, [this] { Yield(); })) {
            return RequestFailure(0, "Error reading streamed response for {method} {url}: {error}", method, url,
                                  "Stream read error");
        }
        BindingProperty value = ParseJson(text);
        if (!value.IsValid()) {
            return RequestFailure(0, "Error reading streamed response for {method} {url}: {error}", method, url,
                                  value.GetError());
        }
        return value;
    }
    const HostValue result = response.result;
    BindingProperty value = HostValueToBinding(result, "<result>");
    if (!value.IsValid()) {
        return ConversionFailure(method, url, value.GetError());
    }
    return value;
}

Failure PluginBase::ConversionFailure(std::uint32_t method, std::string_view url, std::string_view error) {
    return RequestFailure(0, "Error converting response for {method} {url}: {error}", method, url, error);
}

}  // namespace wex
