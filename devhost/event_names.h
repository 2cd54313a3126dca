#pragma once

#include <string>
#include <string_view>

namespace tav::host {

// The platform's names of the events that carry resource changes and server
// messages, as subscribers know them:
//   /tav-login/v1/session/x -> OnJsonApiEvent_tav-login_v1_session
//   /tav-platform-config/v1/namespaces/A/b -> OnJsonApiEvent_tav-platform-config_v1_namespaces_A_b
//   com.example.Message -> OnLcdsEvent_com_example_Message
std::string ResourceEventName(std::string_view uri);
std::string ServerMessageEventName(std::string_view typeName);

}  // namespace tav::host
