#include "world_platform.h"

#include "codec/json_writer.h"
#include "value_builders.h"

namespace tav::host {

namespace {

const char* SwitchText(bool on) {
    return on ? "true" : "false";
}

}  // namespace

void WorldPlatform::SetUp() {
    for (const WorldPlayer& player : world_.players) {
        host_.SetResource("/tav-summoner/v1/summoners/" + std::to_string(player.summonerId),
                          wex::WriteJson(Structure({{"summonerId", Unsigned(player.summonerId)},
                                                    {"accountId", Unsigned(player.accountId)},
                                                    {"displayName", String(player.name)}})));
    }
    const auto& platform = world_.platform;
    host_.SetResource(kLeagueServiceEnabled, SwitchText(platform.leagueServiceEnabled));
    host_.SetResource(kJwtEnabled, SwitchText(platform.jwtEnabled));
    host_.SetResource(
        kSeasonReward,
        wex::WriteJson(Structure({{"QualificationWarningEnabled", Bool(platform.qualificationWarningEnabled)}})));
    SetGameflow(platform.gameflowPhase, platform.gameflowQueue);
}

void WorldPlatform::LogIn() {
    const WorldPlayer& player = world_.Current();
    host_.SetResource(kLoginSession, wex::WriteJson(Structure({{"state", String("SUCCEEDED")},
                                                               {"summonerId", Unsigned(player.summonerId)},
                                                               {"accountId", Unsigned(player.accountId)}})));
    wex::BindingProperty messages = EmptyCollection();
    for (const WorldMessage& message : world_.messages) {
        wex::BindingProperty params = EmptyCollection();
        for (const std::string& param : message.params) {
            params.Append() = String(param);
        }
        messages.Append() = Structure({{"accountId", Unsigned(player.accountId)},
                                       {"msgId", String(message.msgId)},
                                       {"type", String(message.type)},
                                       {"params", params}});
    }
    host_.SetResource(kLoginDataPacket, wex::WriteJson(Structure({{"simpleMessages", messages}})));
}

void WorldPlatform::LogOut() {
    host_.DeleteResource(kLoginSession);
    host_.DeleteResource(kLoginDataPacket);
}

void WorldPlatform::SetGameflow(const std::string& phase, const std::string& queue) {
    host_.SetResource(
        kGameflowSession,
        wex::WriteJson(Structure(
            {{"phase", String(phase)}, {"gameData", Structure({{"queue", Structure({{"type", String(queue)}})}})}})));
}

void WorldPlatform::DeleteGameflow() {
    host_.DeleteResource(kGameflowSession);
}

bool WorldPlatform::SetSwitch(const std::string& name, bool on) {
    if (name == "leagueServiceEnabled") {
        host_.SetResource(kLeagueServiceEnabled, SwitchText(on));
    } else if (name == "JWTEnabled") {
        host_.SetResource(kJwtEnabled, SwitchText(on));
    } else {
        return false;
    }
    return true;
}

}  // namespace tav::host
