#pragma once

#include "plugin/app_module.h"
#include "types/registry.h"

namespace Orvel::Client::Leagues {

// Registers the server's records under their local names and enters their
// server class names in the module's class-name tables. Runs before the API
// types.
void RegisterLeagueDtos(wex::AppModule& module, wex::BindingTypeRegistry& registry);

}  // namespace Orvel::Client::Leagues
