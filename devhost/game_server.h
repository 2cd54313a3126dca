#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "binding/property.h"

namespace tav::host {

// What the game server answers to a call of one destination's method.
struct ServerAnswer {
    // A service-proxy answer arrives on this turn of the host after the call.
    // With kDuringRequest it arrives before the call's request has returned,
    // with kNever not at all.
    static constexpr int kDuringRequest = 0;
    static constexpr int kNever = -1;

    std::string className;       // the server class of the body
    wex::BindingProperty body;   // empty: an answer without a body
    std::string error;           // not empty: the call fails with this text
    std::uint32_t status = 500;  // of a synchronous call that fails
    int turns = 1;
    // A service-proxy answer also waits until the host's clock has moved on this far.
    double delaySeconds = 0.0;
    // Set: the answer's payload is this text as it is, JSON or not (a
    // service-proxy payload, or the body string of a synchronous call).
    std::optional<std::string> payloadText;

    // A body of JSON text (std::invalid_argument for text that is not JSON).
    static ServerAnswer Json(std::string className, std::string_view body, int turns = 1);
    static ServerAnswer Failure(std::string error, std::uint32_t status = 500, int turns = 1);
};

// Answers a call from its destination, method and argument list (a collection).
using ServerResponder = std::function<ServerAnswer(std::string_view destination, std::string_view method,
                                                   const wex::BindingProperty& arguments)>;

// The game server as tests script it: one answer per destination and method,
// given to every call of it; calls without a script go to the responder, if any.
class GameServer {
  public:
    void Script(const std::string& destination, const std::string& method, ServerAnswer answer);
    void Unscript(const std::string& destination, const std::string& method);
    void UnscriptAll() { answers_.clear(); }
    void SetResponder(ServerResponder responder) { responder_ = std::move(responder); }

    // The scripted answer, else the responder's; an unanswered call fails, naming the call.
    ServerAnswer Answer(std::string_view destination, std::string_view method,
                        const wex::BindingProperty& arguments = wex::BindingProperty()) const;

  private:
    std::map<std::pair<std::string, std::string>, ServerAnswer> answers_;
    ServerResponder responder_;
};

}  // namespace tav::host
