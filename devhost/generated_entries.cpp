#include "generated_entries.h"

#include <array>
#include <string>

#include "value_builders.h"

namespace tav::host {

namespace {

// A small generator of our own: the standard distributions differ between
// libraries, and a world must read the same everywhere.
class SeededNumbers {
  public:
    explicit SeededNumbers(std::uint64_t seed) : state_(seed ^ 0x9E3779B97F4A7C15ULL) {}
    std::uint64_t Next() {
        state_ += 0x9E3779B97F4A7C15ULL;
        std::uint64_t mixed = state_;
        mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9ULL;
        mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBULL;
        return mixed ^ (mixed >> 31);
    }
    std::uint64_t Below(std::uint64_t limit) { return limit == 0 ? 0 : Next() % limit; }

  private:
    std::uint64_t state_;
};

constexpr std::array<const char*, 16> kFirst = {"Ash",  "Brin", "Cor",  "Dusk",  "Ember", "Fen",   "Gale", "Hollow",
                                                "Iron", "Jade", "Kest", "Lumen", "Mire",  "North", "Oak",  "Quill"};
constexpr std::array<const char*, 12> kSecond = {"fall", "wick",  "mere",  "vale",  "thorn", "crest",
                                                 "ward", "reach", "brook", "spire", "wood",  "shade"};

std::string InventedName(SeededNumbers& numbers, std::uint32_t index) {
    return std::string(kFirst[numbers.Below(kFirst.size())]) + kSecond[numbers.Below(kSecond.size())] +
           std::to_string(index + 1);
}

std::int64_t TopPoints(const std::string& tier) {
    if (tier == "CHALLENGER") {
        return 1400;
    }
    return tier == "MASTER" ? 600 : 100;
}

}  // namespace

std::vector<wex::BindingProperty> GenerateEntries(const WorldLeague& league, std::uint32_t count, std::uint64_t seed,
                                                  std::uint64_t firstId) {
    SeededNumbers numbers(seed);
    std::vector<wex::BindingProperty> entries;
    entries.reserve(count);
    std::int64_t points = TopPoints(league.tier);
    for (std::uint32_t index = 0; index < count; ++index) {
        points = std::max<std::int64_t>(0, points - static_cast<std::int64_t>(numbers.Below(6)));
        const std::uint64_t wins = 60 + numbers.Below(140);
        wex::BindingProperty entry = Structure({
            {"playerOrTeamId", String(std::to_string(firstId + index))},
            {"playerOrTeamName", String(InventedName(numbers, index))},
            {"queueType", String(league.queue)},
            {"tier", String(league.tier)},
            {"rank", String("I")},
            {"leaguePoints", Signed(points)},
            {"wins", Unsigned(wins)},
            {"losses", Unsigned(wins - numbers.Below(40))},
            {"previousDayLeaguePosition", Unsigned(1 + numbers.Below(count))},
            {"hotStreak", Bool(numbers.Below(5) == 0)},
            {"veteran", Bool(numbers.Below(4) == 0)},
            {"freshBlood", Bool(numbers.Below(6) == 0)},
            {"inactive", Bool(false)},
        });
        entries.push_back(std::move(entry));
    }
    return entries;
}

}  // namespace tav::host
