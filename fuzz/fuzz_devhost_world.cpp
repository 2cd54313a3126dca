// Reads arbitrary text as a league world: it is a world or an error naming
// the member at fault, never a crash; generated lists stay within their bound.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "league_world.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto reading = tav::host::ReadLeagueWorld(std::string_view(reinterpret_cast<const char*>(data), size));
    if (reading.error.empty() && reading.world.FindPlayer(reading.world.currentPlayer) == nullptr) {
        __builtin_trap();  // a world read without error always has its current player
    }
    return 0;
}
