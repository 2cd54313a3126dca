#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "binding/property.h"
#include "types/registry.h"

namespace sample::leagues {

enum class Tier : std::int32_t { NONE = 0, GOLD = 3, PLATINUM = 4 };

struct Standing {
    std::string id;
    std::uint64_t position = 0;
    std::int64_t points = 0;
    bool inactive = false;
    std::vector<Tier> pastTiers;
    Tier tier = Tier::NONE;
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
    wex::BindingProperty extra;
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
    registry.Struct<Standing>("SampleStanding", tags)
        .Field("id", &Standing::id)
        .Field("position", &Standing::position)
        .Field("points", &Standing::points)
        .Field("inactive", &Standing::inactive)
        .Field("pastTiers", &Standing::pastTiers)
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
        .Field("extra", &Sparse::extra, wex::BindingFieldOption::OmitWhenDefault)
        .Field("key", &Sparse::key, wex::BindingFieldOption::OmitWhenDefault);
}

}  // namespace sample::leagues
