#include "endpoint_call.h"

#include <array>
#include <string_view>

#include "host_value_json.h"

namespace tav::host {

namespace {

bool MatchesTemplate(std::string_view pathTemplate, std::string_view path) {
    std::size_t at = 0;
    std::size_t index = 0;
    while (index < pathTemplate.size()) {
        if (pathTemplate[index] == '{') {
            const std::size_t close = pathTemplate.find('}', index);
            if (close == std::string_view::npos) {
                return false;
            }
            const std::size_t end = std::min(path.find('/', at), path.size());
            if (end == at) {
                return false;
            }
            at = end;
            index = close + 1;
        } else {
            if (at == path.size() || path[at] != pathTemplate[index]) {
                return false;
            }
            ++at;
            ++index;
        }
    }
    return at == path.size();
}

std::string ReadStreamedBody(const HostResponse& response) {
    std::string body;
    std::array<char, 4096> chunk;
    bool more = true;
    while (more) {
        std::uint32_t size = chunk.size();
        if (!response.streamRead(response.streamProducer, chunk.data(), &size, &more) || size > chunk.size()) {
            break;
        }
        body.append(chunk.data(), size);
    }
    if (response.streamClose != nullptr) {
        response.streamClose(response.streamProducer);
    }
    return body;
}

EndpointAnswer ReadAnswer(const HostResponse& response) {
    EndpointAnswer answer;
    answer.status = response.status;
    answer.failed = response.error != nullptr;
    answer.error = response.error != nullptr ? response.error : "";
    const HostValue result = response.result;
    answer.json = result.tag != HostValueNone ? HostValueJson(result) : "";
    answer.text = response.streamRead != nullptr ? ReadStreamedBody(response)
                  : response.text != nullptr     ? response.text
                                                 : "";
    for (std::uint32_t index = 0; index < response.headerCount; ++index) {
        answer.headers[response.headers[index].name] = response.headers[index].value;
    }
    return answer;
}

}  // namespace

const HostEndpointRecord* FindEndpoint(const HostApiTable& table, std::uint32_t method, std::string_view path) {
    const HostEndpointRecord* found = nullptr;
    for (const HostEndpointRecord* endpoint = table.endpoints; endpoint != nullptr; endpoint = endpoint->next) {
        const std::string_view pathTemplate = endpoint->pathTemplate != nullptr ? endpoint->pathTemplate : "";
        if (endpoint->method != method || !MatchesTemplate(pathTemplate, path)) {
            continue;
        }
        if (pathTemplate.find('{') == std::string_view::npos) {
            return endpoint;
        }
        if (found == nullptr) {
            found = endpoint;
        }
    }
    return found;
}

EndpointAnswer CallEndpoint(const HostApiTable& table, std::uint32_t hostContext, std::uint32_t method,
                            const std::string& pathWithQuery, const std::string& body, const std::string& contentType) {
    const std::string path = pathWithQuery.substr(0, pathWithQuery.find('?'));
    const HostEndpointRecord* endpoint = FindEndpoint(table, method, path);
    if (endpoint == nullptr) {
        EndpointAnswer answer;
        answer.status = 404;
        answer.failed = true;
        answer.error = "No endpoint for " + pathWithQuery;
        return answer;
    }
    HostRequest request{};
    request.method = method;
    request.path = pathWithQuery.c_str();
    request.endpointContext = endpoint->context;
    request.contentType = contentType.empty() ? nullptr : contentType.c_str();
    request.body = body.empty() ? nullptr : body.data();
    request.bodyLength = static_cast<std::uint32_t>(body.size());
    request.context = hostContext;
    HostResponse response{};
    endpoint->entry(&response, &request);
    EndpointAnswer answer = ReadAnswer(response);
    if (response.release != nullptr) {
        response.release(&response);
    }
    return answer;
}

}  // namespace tav::host
