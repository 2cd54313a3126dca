// BindingProperty beside rapidjson's DOM (its pool allocator): building and
// dropping a structure of 10,000 string and number members, and deep copies.
// Then the native conversion of a league of 300 standings, both ways, and the
// floors that interning sets: FNV-1a over the benchmark's texts, and entering
// the 15,000 texts, hashes known, into a new document's intern table, as every
// build and every copy must.
#include <benchmark/benchmark.h>
#include <rapidjson/document.h>

#include <algorithm>
#include <cstdio>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "binding/document_pool.h"
#include "binding/fnv1a.h"
#include "binding/native_conversion.h"
#include "binding/property.h"
#include "binding/registry.h"
#include "binding/string_intern_table.h"

namespace {

constexpr int kMembers = 10000;

struct MemberData {
    std::string name;
    std::string text;  // members with an even index hold text, the others a number
};

std::vector<MemberData> MakeMembers(bool shuffled) {
    std::vector<MemberData> members;
    for (int index = 0; index < kMembers; ++index) {
        char name[24];
        std::snprintf(name, sizeof name, "member%05d", index);
        members.push_back({name, index % 2 == 0 ? "value of " + std::string(name) : std::string()});
    }
    if (shuffled) {
        std::shuffle(members.begin(), members.end(), std::mt19937(1));
    }
    return members;
}

void BuildBinding(wex::BindingProperty& root, const std::vector<MemberData>& members) {
    std::int64_t number = 0;
    for (const MemberData& member : members) {
        wex::BindingProperty& value = root.Member(member.name);
        if (!member.text.empty()) {
            value.SetString(member.text);
        } else {
            value.SetSigned(++number);
        }
    }
}

void BuildRapidjson(rapidjson::Document& document, const std::vector<MemberData>& members) {
    auto& allocator = document.GetAllocator();
    document.SetObject();
    std::int64_t number = 0;
    for (const MemberData& member : members) {
        rapidjson::Value name(member.name.data(), static_cast<rapidjson::SizeType>(member.name.size()), allocator);
        rapidjson::Value value;
        if (!member.text.empty()) {
            value.SetString(member.text.data(), static_cast<rapidjson::SizeType>(member.text.size()), allocator);
        } else {
            value.SetInt64(++number);
        }
        document.AddMember(name, value, allocator);
    }
}

void BM_BuildAndDrop_Binding(benchmark::State& state) {
    const auto members = MakeMembers(state.range(0) != 0);
    for (auto _ : state) {
        wex::BindingProperty root;
        BuildBinding(root, members);
        benchmark::DoNotOptimize(root);
    }
    state.SetItemsProcessed(state.iterations() * kMembers);
}
BENCHMARK(BM_BuildAndDrop_Binding)->ArgName("shuffled")->Arg(0)->Arg(1);

void BM_BuildAndDrop_Rapidjson(benchmark::State& state) {
    const auto members = MakeMembers(state.range(0) != 0);
    for (auto _ : state) {
        rapidjson::Document document;
        BuildRapidjson(document, members);
        benchmark::DoNotOptimize(document);
    }
    state.SetItemsProcessed(state.iterations() * kMembers);
}
BENCHMARK(BM_BuildAndDrop_Rapidjson)->ArgName("shuffled")->Arg(0)->Arg(1);

void BM_DeepCopy_Binding(benchmark::State& state) {
    wex::BindingProperty source;
    BuildBinding(source, MakeMembers(false));
    for (auto _ : state) {
        wex::BindingProperty copy(source);
        benchmark::DoNotOptimize(copy);
    }
    state.SetItemsProcessed(state.iterations() * kMembers);
}
BENCHMARK(BM_DeepCopy_Binding);

void BM_DeepCopy_Rapidjson(benchmark::State& state) {
    rapidjson::Document source;
    BuildRapidjson(source, MakeMembers(false));
    for (auto _ : state) {
        rapidjson::Document copy;
        copy.CopyFrom(source, copy.GetAllocator());
        benchmark::DoNotOptimize(copy);
    }
    state.SetItemsProcessed(state.iterations() * kMembers);
}
BENCHMARK(BM_DeepCopy_Rapidjson);

void BM_Fnv1aOfTheTexts_Floor(benchmark::State& state) {
    const auto members = MakeMembers(false);
    for (auto _ : state) {
        std::uint32_t sum = 0;
        for (const MemberData& member : members) {
            sum += wex::Fnv1a32(member.name);
            if (!member.text.empty()) {
                sum += wex::Fnv1a32(member.text);
            }
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * kMembers);
}
BENCHMARK(BM_Fnv1aOfTheTexts_Floor);

void BM_InternTheTexts_Floor(benchmark::State& state) {
    std::vector<std::pair<std::string, std::uint32_t>> texts;
    for (const MemberData& member : MakeMembers(false)) {
        texts.emplace_back(member.name, wex::Fnv1a32(member.name));
        if (!member.text.empty()) {
            texts.emplace_back(member.text, wex::Fnv1a32(member.text));
        }
    }
    for (auto _ : state) {
        wex::DocumentPool pool;
        wex::StringInternTable strings(pool);
        strings.Reserve(static_cast<std::uint32_t>(texts.size()));
        for (const auto& [text, hash] : texts) {
            benchmark::DoNotOptimize(strings.Intern(text, hash));
        }
    }
    state.SetItemsProcessed(state.iterations() * kMembers);
}
BENCHMARK(BM_InternTheTexts_Floor);

// A league list as the league routes return it.
namespace league {

enum class Tier : std::int32_t { NONE = 0, BRONZE, SILVER, GOLD, PLATINUM, DIAMOND, MASTER, CHALLENGER };
enum class Rank : std::int32_t { I = 0, II, III, IV, V, NA };
enum class Queue : std::int32_t { NONE = 0, SOLO5V5, FLEXTT, FLEXSR };
enum class Emblem : std::int32_t { VETERAN = 0, HOTSTREAK, FRESHBLOOD };
enum class Game : std::int32_t { W = 0, L, N };

struct Standing {
    std::string id;
    std::string name;
    std::uint64_t position = 0;
    std::int64_t positionDelta = 0;
    std::uint64_t previousPosition = 0;
    std::vector<Emblem> emblems;
    std::uint64_t wins = 0;
    std::uint64_t losses = 0;
    std::vector<Game> miniseriesResults;
    std::int64_t points = 0;
    bool inactive = false;
    bool pendingPromotion = false;
    bool pendingDemotion = false;
    std::string inactivityStatus;
    std::int64_t apexDaysUntilDecay = 0;
};

struct Division {
    Rank leagueRank = Rank::NA;
    std::vector<Standing> standings;
};

struct League {
    Queue queueType = Queue::NONE;
    Tier tier = Tier::NONE;
    std::string leagueName;
    std::string requesterId;
    std::vector<Division> divisions;
};

void Register(wex::BindingTypeRegistry& registry) {
    registry.Enum<Tier>("BenchLeagueTier")
        .Value("NONE", Tier::NONE)
        .Value("BRONZE", Tier::BRONZE)
        .Value("SILVER", Tier::SILVER)
        .Value("GOLD", Tier::GOLD)
        .Value("PLATINUM", Tier::PLATINUM)
        .Value("DIAMOND", Tier::DIAMOND)
        .Value("MASTER", Tier::MASTER)
        .Value("CHALLENGER", Tier::CHALLENGER);
    registry.Enum<Rank>("BenchLeagueRank")
        .Value("I", Rank::I)
        .Value("II", Rank::II)
        .Value("III", Rank::III)
        .Value("IV", Rank::IV)
        .Value("V", Rank::V)
        .Value("NA", Rank::NA);
    registry.Enum<Queue>("BenchLeagueQueueType")
        .Value("SOLO5V5", Queue::SOLO5V5)
        .Value("FLEXTT", Queue::FLEXTT)
        .Value("FLEXSR", Queue::FLEXSR)
        .Value("NONE", Queue::NONE);
    registry.Enum<Emblem>("BenchLeagueEmblem")
        .Value("VETERAN", Emblem::VETERAN)
        .Value("HOTSTREAK", Emblem::HOTSTREAK)
        .Value("FRESHBLOOD", Emblem::FRESHBLOOD);
    registry.Enum<Game>("BenchMiniseries").Value("W", Game::W).Value("L", Game::L).Value("N", Game::N);
    registry.Struct<Standing>("BenchLeagueStanding")
        .Field("id", &Standing::id)
        .Field("name", &Standing::name)
        .Field("position", &Standing::position)
        .Field("positionDelta", &Standing::positionDelta)
        .Field("previousPosition", &Standing::previousPosition)
        .Field("emblems", &Standing::emblems)
        .Field("wins", &Standing::wins)
        .Field("losses", &Standing::losses)
        .Field("miniseriesResults", &Standing::miniseriesResults)
        .Field("points", &Standing::points)
        .Field("inactive", &Standing::inactive)
        .Field("pendingPromotion", &Standing::pendingPromotion)
        .Field("pendingDemotion", &Standing::pendingDemotion)
        .Field("inactivityStatus", &Standing::inactivityStatus)
        .Field("apexDaysUntilDecay", &Standing::apexDaysUntilDecay);
    registry.Struct<Division>("BenchLeagueDivision")
        .Field("leagueRank", &Division::leagueRank)
        .Field("standings", &Division::standings);
    registry.Struct<League>("BenchLeague")
        .Field("queueType", &League::queueType)
        .Field("tier", &League::tier)
        .Field("leagueName", &League::leagueName)
        .Field("requesterId", &League::requesterId)
        .Field("divisions", &League::divisions);
}

constexpr int kStandings = 300;

League MakeLeague() {
    League league{Queue::SOLO5V5, Tier::GOLD, "Ahri's Zealots", "12345678", {}};
    for (int rank = 0; rank < 5; ++rank) {
        Division division{static_cast<Rank>(rank), {}};
        for (int index = 0; index < kStandings / 5; ++index) {
            const int number = rank * 1000 + index;
            Standing standing;
            standing.id = std::to_string(20000000 + number);
            char name[32];
            std::snprintf(name, sizeof name, "Summoner %d", number);
            standing.name = name;
            standing.position = index + 1;
            standing.previousPosition = index + 2;
            standing.positionDelta = 1;
            standing.emblems = {Emblem::HOTSTREAK};
            standing.wins = 40 + index;
            standing.losses = 30 + index;
            standing.miniseriesResults =
                index % 5 == 0 ? std::vector<Game>{Game::W, Game::L, Game::N} : std::vector<Game>{};
            standing.points = index;
            standing.inactivityStatus = "ACTIVE";
            division.standings.push_back(standing);
        }
        league.divisions.push_back(division);
    }
    return league;
}

}  // namespace league

// Argument 0: to a BindingProperty only; 1: and back to the native league.
void BM_LeagueList(benchmark::State& state) {
    const bool andBack = state.range(0) != 0;
    wex::BindingTypeRegistry registry;
    league::Register(registry);
    const league::League source = league::MakeLeague();
    for (auto _ : state) {
        const wex::BindingProperty value = wex::ToBinding(source, registry);
        if (andBack) {
            league::League back;
            wex::BindingProperty status;
            wex::FromBinding(status, back, value, "league", registry);
            benchmark::DoNotOptimize(back);
            if (!status.IsValid() || back.divisions.size() != source.divisions.size()) {
                state.SkipWithError("the round trip failed");
            }
        }
        benchmark::DoNotOptimize(value);
    }
    state.counters["ns_per_entry"] = benchmark::Counter(static_cast<double>(state.iterations() * league::kStandings),
                                                        benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}
BENCHMARK(BM_LeagueList)->ArgName("andBack")->Arg(0)->Arg(1);

void BM_SizeOfBindingProperty(benchmark::State& state) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(sizeof(wex::BindingProperty));
    }
    state.counters["bytes"] = sizeof(wex::BindingProperty);
}
BENCHMARK(BM_SizeOfBindingProperty)->Iterations(1);

}  // namespace

BENCHMARK_MAIN();
