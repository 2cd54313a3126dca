#include "leagues/message_dto.h"

#include "leagues/lcds_types.h"

namespace Orvel::Client::Leagues::LCDS {

void RegisterMessageDtos(const LcdsTypes& types) {
    using Base = Api::SimpleMessage;
    types
        .Struct<SimpleMessage>("LeaguesLcdsSimpleMessage",
                               "com.orvelsoft.platform.messaging.persistence.SimpleDialogMessage")
        .Field("accountId", Inherited<SimpleMessage>(&Base::accountId))
        .Field("msgId", Inherited<SimpleMessage>(&Base::msgId))
        .Field("type", Inherited<SimpleMessage>(&Base::type))
        .Field("params", Inherited<SimpleMessage>(&Base::params));
    types
        .Struct<SimpleMessageResponse>("LeaguesSimpleMessageResponse",
                                       "com.orvelsoft.platform.messaging.persistence.SimpleDialogMessageResponse")
        .Field("accountId", &SimpleMessageResponse::accountId)
        .Field("msgId", &SimpleMessageResponse::msgId)
        .Field("command", &SimpleMessageResponse::command);
}

}  // namespace Orvel::Client::Leagues::LCDS
