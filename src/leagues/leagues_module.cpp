#include "leagues/leagues_module.h"

namespace Orvel::Client::Leagues {

LeaguesModule::LeaguesModule() : AppModule("tav-leagues") {}

LeaguesModule::~LeaguesModule() = default;

void LeaguesModule::RegisterRoutesAndTypes() {}

bool LeaguesModule::OnStart() { return true; }

}  // namespace Orvel::Client::Leagues
