#pragma once

#include <string>
#include <string_view>

namespace wex {

// The host event under which a resource's changes travel: "OnJsonApiEvent"
// and the URI's first three path segments (five under tav-platform-config),
// joined by "_"; empty segments do not count. Sub-resources so share the
// event of their resource:
//   /tav-login/v1/session/x -> OnJsonApiEvent_tav-login_v1_session
std::string ResourceEventName(std::string_view uri);

// The host event of a server message type: "OnLcdsEvent_" and the type name
// with every "." replaced by "_".
std::string LcdsEventName(std::string_view typeName);

}  // namespace wex
