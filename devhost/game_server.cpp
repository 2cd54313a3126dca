#include "game_server.h"

#include "host_value_json.h"

namespace tav::host {

ServerAnswer ServerAnswer::Json(std::string className, std::string_view body, int turns) {
    ServerAnswer answer;
    answer.className = std::move(className);
    answer.body = JsonValue(body);
    answer.turns = turns;
    return answer;
}

ServerAnswer ServerAnswer::Failure(std::string error, std::uint32_t status, int turns) {
    ServerAnswer answer;
    answer.error = std::move(error);
    answer.status = status;
    answer.turns = turns;
    return answer;
}

void GameServer::Script(const std::string& destination, const std::string& method, ServerAnswer answer) {
    answers_.insert_or_assign(std::make_pair(destination, method), std::move(answer));
}

void GameServer::Unscript(const std::string& destination, const std::string& method) {
    answers_.erase(std::make_pair(destination, method));
}

ServerAnswer GameServer::Answer(std::string_view destination, std::string_view method,
                                const wex::BindingProperty& arguments) const {
    const auto found = answers_.find(std::make_pair(std::string(destination), std::string(method)));
    if (found == answers_.end()) {
        if (responder_) {
            return responder_(destination, method, arguments);
        }
        return ServerAnswer::Failure("No answer scripted for " + std::string(destination) + "." + std::string(method));
    }
    return found->second;
}

}  // namespace tav::host
