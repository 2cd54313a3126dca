#include "http_answer.h"

#include "codec/json_writer.h"
#include "value_builders.h"

namespace tav::host {

HttpAnswer HttpAnswer::Failure(int status, const std::string& message) {
    return Json(wex::WriteJson(Structure({{"message", String(message)}, {"status", Signed(status)}})), status);
}

HttpAnswer HttpAnswer::NotAllowed(std::string_view method, const std::string& path,
                                  const std::vector<std::string>& allowed) {
    std::string list;
    for (const std::string& name : allowed) {
        list += (list.empty() ? "" : ", ") + name;
    }
    HttpAnswer answer = Failure(405, std::string(method) + " is not allowed on " + path + "; it takes " + list);
    answer.headers.emplace_back("Allow", list);
    return answer;
}

HttpAnswer HttpAnswer::Json(std::string body, int status) {
    HttpAnswer answer;
    answer.status = status;
    answer.body = std::move(body);
    return answer;
}

HttpAnswer RouteHttpAnswer(const EndpointAnswer& answer) {
    const int status = static_cast<int>(answer.status);
    if (answer.failed) {
        return HttpAnswer::Failure(status != 0 ? status : 400, answer.error);
    }
    HttpAnswer http;
    if (!answer.json.empty()) {
        http.body = answer.json;
    } else if (!answer.text.empty()) {
        const auto type = answer.headers.find("Content-Type");
        http.contentType = type != answer.headers.end() ? type->second : "text/plain";
        http.body = answer.text;
    }
    http.status = status != 0 ? status : http.body.empty() ? 204 : 200;
    return http;
}

}  // namespace tav::host
