// Sends arbitrary requests to tav-host's control routes on the demo world:
// the first byte picks the method, the text up to the first newline is the
// route under /devhost/, the rest the body. Every request gets an answer
// with a status; none crashes the host.
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "control_routes.h"
#include "world_source.h"

namespace {

tav::host::HostSession& Session() {
    static const auto session = [] {
        std::string error;
        return std::make_unique<tav::host::HostSession>(tav::host::LoadWorld("", error));
    }();
    return *session;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static constexpr std::array<const char*, 5> kMethods = {"GET", "PUT", "POST", "DELETE", "PATCH"};
    if (size == 0) {
        return 0;
    }
    const std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);
    const std::size_t newline = text.find('\n');
    const std::string route = text.substr(0, newline);
    const std::string body = newline == std::string::npos ? "" : text.substr(newline + 1);
    const auto answer = tav::host::ServeControl(Session(), kMethods[data[0] % kMethods.size()],
                                                std::string(tav::host::kControlPrefix) + route, body);
    if (answer.status < 200 || answer.status > 599) {
        __builtin_trap();
    }
    // Faults set by one input must not change the next one's answers.
    Session().Server().ClearFaults();
    return 0;
}
