// The apex leagues of one queue as the league routes build them: a challenger
// list of 300 entries and a master list of 200 arrive as server JSON, are
// parsed, read into the league list DTOs, converted into API leagues, sorted
// and marked, and numbered. Each stage is measured alone and the whole run
// once; rapidjson's DOM parses the same texts beside ParseJson. Last, the
// challenger league as the routes answer it, to a binding value and back, and
// through a host into JSON.
#include <benchmark/benchmark.h>
#include <rapidjson/document.h>

#include <string>

#include "codec/json_reader.h"
#include "codec/json_writer.h"
#include "leagues/standings.h"
#include "leagues/server_dtos.h"
#include "module/leagues_module.h"
#include "plugin/app_module.h"
#include "types/host_value.h"
#include "types/native_conversion.h"

namespace {

using namespace Orvel::Client::Leagues;

constexpr int kChallengers = 300;
constexpr int kMasters = 200;
constexpr int kLeagues = 2;

// One league entry as the server writes it; every seventh is in a series.
std::string EntryJson(int index, const std::string& tier) {
    const std::string id = std::to_string(100000 + index);
    std::string json = R"({"__class":"com.orvelsoft.leagues.pojo.LeagueItemDTO","playerOrTeamId":")";
    json += id;
    json += R"(","playerOrTeamName":"Player )";
    json += id;
    json += R"(","previousDayLeaguePosition":)";
    json += std::to_string((index * 17) % 300 + 1);
    json += R"(,"wins":)";
    json += std::to_string(200 + index % 50);
    json += R"(,"losses":)";
    json += std::to_string(150 + index % 40);
    json += index % 5 == 0 ? R"(,"hotStreak":true)" : R"(,"hotStreak":false)";
    json += index % 3 == 0 ? R"(,"veteran":true)" : R"(,"veteran":false)";
    json += R"(,"freshBlood":false,"miniSeries":)";
    json += index % 7 == 0 ? R"({"progress":"WLN","wins":1,"losses":1,"target":2,"timeLeftToPlayMillis":0})" : "null";
    json += R"(,"leaguePoints":)";
    json += std::to_string((index * 7919) % 1500);
    json += R"(,"queueType":"RANKED_SOLO_5x5","tier":")";
    json += tier;
    json += R"(","rank":"I","inactive":false,"displayDecayWarning":false,"inactivityStatus":"ACTIVE",)"
            R"("timeUntilInactivityStatusChanges":0,"demotionWarning":0,"apexDaysUntilDecay":5})";
    return json;
}

std::string LeagueListJson(const std::string& tier, int entries, int maxLeagueSize) {
    std::string json = R"({"__class":"com.orvelsoft.leagues.pojo.LeagueListDTO","name":"Blue Owl's Den","tier":")";
    json += tier;
    json += R"(","queue":"RANKED_SOLO_5x5","requestorsName":"","entries":[)";
    for (int index = 0; index < entries; ++index) {
        json += index == 0 ? "" : ",";
        json += EntryJson(index, tier);
    }
    json += R"(],"nextApexUpdate":1700000000000,"maxLeagueSize":)";
    json += std::to_string(maxLeagueSize);
    json += "}";
    return json;
}

// The league module, loaded once, for its registry of server records.
class Fixture {
  public:
    Fixture() {
        info_.major = 18;
        module_ = static_cast<LeaguesModule*>(wex::LoadPlugin<LeaguesModule>(&info_));
    }
    ~Fixture() { info_.callbacks->Stop(info_.context); }

    const wex::BindingTypeRegistry& Registry() const { return *module_->TypeRegistry(); }

    const std::string challengerJson = LeagueListJson("CHALLENGER", kChallengers, kChallengers);
    const std::string masterJson = LeagueListJson("MASTER", kMasters, 0);

  private:
    PluginLoadInfo info_{};
    LeaguesModule* module_ = nullptr;
};

const Fixture& Data() {
    static const Fixture fixture;
    return fixture;
}

LCDS::LeagueListDTO ReadList(const wex::BindingProperty& value) {
    LCDS::LeagueListDTO list;
    wex::BindingProperty status;
    wex::FromBinding(status, list, value, "<value>", Data().Registry());
    return list;
}

void ConvertApexLeagues(const LCDS::LeagueListDTO& challengerList, const LCDS::LeagueListDTO& masterList) {
    Api::League challenger = ConvertLeagueList(challengerList, 0);
    Api::League master = ConvertLeagueList(masterList, 0);
    MarkApexMovements(challenger, master);
    AssignStandingPositions(master, challenger);
    AssignStandingPositions(challenger, challenger);
    benchmark::DoNotOptimize(challenger);
    benchmark::DoNotOptimize(master);
}

void BM_ParseJson(benchmark::State& state) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(wex::ParseJson(Data().challengerJson));
        benchmark::DoNotOptimize(wex::ParseJson(Data().masterJson));
    }
    state.SetItemsProcessed(state.iterations() * kLeagues);
    state.SetBytesProcessed(state.iterations() * (Data().challengerJson.size() + Data().masterJson.size()));
}
BENCHMARK(BM_ParseJson)->Unit(benchmark::kMicrosecond);

void BM_Parse_RapidjsonDom(benchmark::State& state) {
    for (auto _ : state) {
        rapidjson::Document challenger;
        challenger.Parse(Data().challengerJson.c_str());
        rapidjson::Document master;
        master.Parse(Data().masterJson.c_str());
        benchmark::DoNotOptimize(challenger);
        benchmark::DoNotOptimize(master);
    }
    state.SetItemsProcessed(state.iterations() * kLeagues);
    state.SetBytesProcessed(state.iterations() * (Data().challengerJson.size() + Data().masterJson.size()));
}
BENCHMARK(BM_Parse_RapidjsonDom)->Unit(benchmark::kMicrosecond);

void BM_ReadDtos(benchmark::State& state) {
    const wex::BindingProperty challenger = wex::ParseJson(Data().challengerJson);
    const wex::BindingProperty master = wex::ParseJson(Data().masterJson);
    for (auto _ : state) {
        benchmark::DoNotOptimize(ReadList(challenger));
        benchmark::DoNotOptimize(ReadList(master));
    }
    state.SetItemsProcessed(state.iterations() * kLeagues);
}
BENCHMARK(BM_ReadDtos)->Unit(benchmark::kMicrosecond);

void BM_ConvertMarkAndNumber(benchmark::State& state) {
    const LCDS::LeagueListDTO challenger = ReadList(wex::ParseJson(Data().challengerJson));
    const LCDS::LeagueListDTO master = ReadList(wex::ParseJson(Data().masterJson));
    for (auto _ : state) {
        ConvertApexLeagues(challenger, master);
    }
    state.SetItemsProcessed(state.iterations() * kLeagues);
}
BENCHMARK(BM_ConvertMarkAndNumber)->Unit(benchmark::kMicrosecond);

void BM_FromServerJson(benchmark::State& state) {
    for (auto _ : state) {
        ConvertApexLeagues(ReadList(wex::ParseJson(Data().challengerJson)),
                           ReadList(wex::ParseJson(Data().masterJson)));
    }
    state.SetItemsProcessed(state.iterations() * kLeagues);
}
BENCHMARK(BM_FromServerJson)->Unit(benchmark::kMicrosecond);

// Argument 0: to a BindingProperty only; 1: and back to the native league.
void BM_LeagueList(benchmark::State& state) {
    const bool andBack = state.range(0) != 0;
    const wex::BindingTypeRegistry& registry = Data().Registry();
    const Api::League source = ConvertLeagueList(ReadList(wex::ParseJson(Data().challengerJson)), 0);
    for (auto _ : state) {
        const wex::BindingProperty value = wex::ToBinding(source, registry);
        if (andBack) {
            Api::League back;
            wex::BindingProperty status;
            wex::FromBinding(status, back, value, "league", registry);
            benchmark::DoNotOptimize(back);
            if (!status.IsValid() || back.leagues.size() != source.leagues.size()) {
                state.SkipWithError("the round trip failed");
            }
        }
        benchmark::DoNotOptimize(value);
    }
    state.counters["ns_per_entry"] = benchmark::Counter(static_cast<double>(state.iterations() * kChallengers),
                                                        benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}
BENCHMARK(BM_LeagueList)->ArgName("andBack")->Arg(0)->Arg(1);

// The challenger league's way out through a host: handed over as a host value,
// which a host like tav-host turns back into a value and writes as JSON.
void BM_LeagueListThroughHost(benchmark::State& state) {
    const wex::BindingProperty value = wex::ToBinding(
        ConvertLeagueList(ReadList(wex::ParseJson(Data().challengerJson)), 0), Data().Registry());
    for (auto _ : state) {
        HostValue handed;
        if (!wex::BindingToHostValue(value, handed, &Data().Registry())) {
            state.SkipWithError("the value could not be handed over");
        }
        const wex::BindingProperty received = wex::HostValueToBinding(handed, "league");
        benchmark::DoNotOptimize(wex::WriteJson(received));
        wex::ReleaseHostValue(handed);
    }
    state.counters["ns_per_entry"] = benchmark::Counter(static_cast<double>(state.iterations() * kChallengers),
                                                        benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}
BENCHMARK(BM_LeagueListThroughHost)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
