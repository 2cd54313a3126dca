#include "leagues/leagues_module.h"

#include "leagues/api_types.h"
#include "leagues/league_dtos.h"

namespace Orvel::Client::Leagues {

LeaguesModule::LeaguesModule() : AppModule("tav-leagues") {}

LeaguesModule::~LeaguesModule() = default;

void LeaguesModule::RegisterRoutesAndTypes() {
    RegisterLeagueDtos(*this, *TypeRegistry());
    RegisterLeagueApiTypes(*this, *TypeRegistry());
}

bool LeaguesModule::OnStart() { return true; }

}  // namespace Orvel::Client::Leagues
