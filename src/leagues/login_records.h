#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace Orvel::Client::Leagues {
class ModuleTypes;
}

namespace Orvel::Client::Leagues::Api {

// The season-reward namespace of the platform configuration.
struct SeasonRewardConfig {
    bool QualificationWarningEnabled = false;
};

// A message stored for the player on the server; each param is JSON text.
struct SimpleMessage {
    std::uint64_t accountId = 0;
    std::string msgId;
    std::string type;
    std::vector<std::string> params;
};

// The part of the login data packet that the plug-in reads.
struct LoginDataPacket {
    std::vector<SimpleMessage> simpleMessages;
};

enum class LoginSessionStates : std::int32_t { IN_PROGRESS = 0, SUCCEEDED = 1, LOGGING_OUT = 2, ERROR = 3 };

struct LoginSession {
    LoginSessionStates state = LoginSessionStates::IN_PROGRESS;
    std::uint64_t summonerId = 0;
    std::uint64_t accountId = 0;
};

// LeaguesSeasonRewardConfig, SimpleMessage, LeaguesLoginDataPacket,
// LoginSessionStates, LoginSession.
void RegisterLoginRecords(const ModuleTypes& types);

}  // namespace Orvel::Client::Leagues::Api
