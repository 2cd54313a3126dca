#pragma once

#include <cstdint>
#include <string>

#include "leagues/login_records.h"

namespace Orvel::Client::Leagues {
class LcdsTypes;
}

namespace Orvel::Client::Leagues::LCDS {

// A message the server pushes or stores for the player: the same shape as
// the messages of the login data packet, so both are read alike.
struct SimpleMessage : Api::SimpleMessage {};

// The acknowledgement of a stored message.
struct SimpleMessageResponse {
    std::uint64_t accountId = 0;
    std::string msgId;
    std::string command;
};

// LeaguesLcdsSimpleMessage, LeaguesSimpleMessageResponse.
void RegisterMessageDtos(const LcdsTypes& types);

}  // namespace Orvel::Client::Leagues::LCDS
