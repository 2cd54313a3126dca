#include "world_source.h"

#include <fstream>
#include <sstream>

#include "demo_world.h"

namespace tav::host {

std::shared_ptr<const LeagueWorld> LoadWorld(const std::string& path, std::string& error) {
    std::string text = kDemoWorld;
    if (!path.empty()) {
        std::ifstream file(path, std::ios::binary);
        if (!file) {
            error = "cannot read the world file " + path;
            return nullptr;
        }
        std::ostringstream content;
        content << file.rdbuf();
        text = content.str();
    }
    WorldReading reading = ReadLeagueWorld(text);
    if (!reading.error.empty()) {
        error = (path.empty() ? std::string("the demo world") : path) + ": " + reading.error;
        return nullptr;
    }
    return std::make_shared<const LeagueWorld>(std::move(reading.world));
}

}  // namespace tav::host
