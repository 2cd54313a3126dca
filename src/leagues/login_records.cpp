#include "leagues/login_records.h"

#include "leagues/module_types.h"

namespace Orvel::Client::Leagues::Api {

void RegisterLoginRecords(const ModuleTypes& types) {
    types.Struct<SeasonRewardConfig>("LeaguesSeasonRewardConfig")
        .Field("QualificationWarningEnabled", &SeasonRewardConfig::QualificationWarningEnabled);
    types.Struct<SimpleMessage>("SimpleMessage")
        .Field("accountId", &SimpleMessage::accountId)
        .Field("msgId", &SimpleMessage::msgId)
        .Field("type", &SimpleMessage::type)
        .Field("params", &SimpleMessage::params);
    types
        .Struct<LoginDataPacket>("LeaguesLoginDataPacket")  //
        .Field("simpleMessages", &LoginDataPacket::simpleMessages);
    types.Enum<LoginSessionStates>("LoginSessionStates")
        .Value("IN_PROGRESS", LoginSessionStates::IN_PROGRESS)
        .Value("ERROR", LoginSessionStates::ERROR)
        .Value("SUCCEEDED", LoginSessionStates::SUCCEEDED)
        .Value("LOGGING_OUT", LoginSessionStates::LOGGING_OUT);
    types.Struct<LoginSession>("LoginSession")
        .Field("state", &LoginSession::state)
        .Field("summonerId", &LoginSession::summonerId)
        .Field("accountId", &LoginSession::accountId);
}

}  // namespace Orvel::Client::Leagues::Api
