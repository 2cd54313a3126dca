#pragma once

#include <memory>
#include <string>

#include "league_world.h"

namespace tav::host {

// Reads the world file at path, or the embedded demo world when path is
// empty. Null with error set when the file cannot be read or is no world.
std::shared_ptr<const LeagueWorld> LoadWorld(const std::string& path, std::string& error);

}  // namespace tav::host
