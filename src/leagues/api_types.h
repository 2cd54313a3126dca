#pragma once

#include "plugin/app_module.h"
#include "types/registry.h"

namespace Orvel::Client::Leagues {

// Registers the league API records and enumerations under the module's type
// namespace with its API tags. Runs after the server records.
void RegisterLeagueApiTypes(const wex::AppModule& module, wex::BindingTypeRegistry& registry);

}  // namespace Orvel::Client::Leagues
