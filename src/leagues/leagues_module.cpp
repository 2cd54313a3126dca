#include "leagues/leagues_module.h"

#include "leagues/api_types.h"

namespace Orvel::Client::Leagues {

LeaguesModule::LeaguesModule() : AppModule("tav-leagues") {}

LeaguesModule::~LeaguesModule() = default;

void LeaguesModule::RegisterRoutesAndTypes() {
    RegisterLeagueApiTypes(*this, *TypeRegistry());
}

bool LeaguesModule::OnStart() { return true; }

}  // namespace Orvel::Client::Leagues
