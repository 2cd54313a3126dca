#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "binding/property.h"
#include "types/registry.h"

namespace sample::leagues {

enum class Tier : std::int32_t { NONE = 0, GOLD = 3, PLATINUM = 4 };
enum class Emblem : std::int32_t { VETERAN = 0, HOTSTREAK = 1, FRESHBLOOD = 2 };

struct Standing {
    std::string id;
    std::uint64_t position = 0;
    std::int64_t points = 0;
    bool inactive = false;
    std::vector<Emblem> emblems;
    Tier tier = Tier::NONE;
    std::uint64_t seriesWins = 0;  // not registered
};

struct Division {
    std::string name;
    std::vector<Standing> standings;
    std::map<std::string, std::int32_t> counts;
    wex::BindingProperty extra;
    std::vector<std::uint8_t> badge;
    float ratio = 0;
};

// Two fields, both required.
struct Key {
    std::string region;
    std::int32_t number = 0;
};

// Fields that are left out when they hold nothing.
struct Sparse {
    std::int32_t count = 0;
    std::string label;
    std::vector<std::int32_t> list;
    Tier tier = Tier::NONE;
    double ratio = 0;
    bool flag = false;
    Key key;
};

struct Unregistered {
    int value = 0;
};

inline void Register(wex::BindingTypeRegistry& registry) {
    const std::vector<std::string> tags = {"sample"};
    registry.Enum<Tier>("SampleTier", tags)
        .Value("NONE", Tier::NONE)
        .Value("GOLD", Tier::GOLD)
        .Value("PLATINUM", Tier::PLATINUM);
    registry.Enum<Emblem>("SampleEmblem", tags)
        .Value("VETERAN", Emblem::VETERAN)
        .Value("HOTSTREAK", Emblem::HOTSTREAK)
        .Value("FRESHBLOOD", Emblem::FRESHBLOOD);
    registry.Struct<Standing>("SampleStanding", tags)
        .Field("id", &Standing::id)
        .Field("position", &Standing::position)
        .Field("points", &Standing::points)
        .Field("inactive", &Standing::inactive)
        .Field("emblems", &Standing::emblems)
        .Field("tier", &Standing::tier);
    registry.Struct<Division>("SampleDivision", tags)
        .Field("name", &Division::name)
        .Field("standings", &Division::standings)
        .Field("counts", &Division::counts)
        .Field("extra", &Division::extra)
        .Field("badge", &Division::badge)
        .Field("ratio", &Division::ratio);
    registry.Struct<Key>("SampleKey")
        .Field("region", &Key::region, wex::BindingFieldOption::Required)
        .Field("number", &Key::number, wex::BindingFieldOption::Required);
    registry.Struct<Sparse>("SampleSparse")
        .Field("count", &Sparse::count, wex::BindingFieldOption::OmitWhenDefault)
        .Field("label", &Sparse::label, wex::BindingFieldOption::OmitWhenDefault)
        .Field("list", &Sparse::list, wex::BindingFieldOption::OmitWhenDefault)
        .Field("tier", &Sparse::tier, wex::BindingFieldOption::OmitWhenDefault)
        .Field("ratio", &Sparse::ratio, wex::BindingFieldOption::OmitWhenDefault)
        .Field("flag", &Sparse::flag, wex::BindingFieldOption::OmitWhenDefault)
        .Field("key", &Sparse::key, wex::BindingFieldOption::OmitWhenDefault);
}

}  // namespace sample::leagues
