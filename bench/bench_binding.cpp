// BindingProperty beside rapidjson's DOM (its pool allocator): building and
// dropping a structure of 10,000 string and number members, and deep copies.
// Then the floors that interning sets: FNV-1a over the benchmark's texts,
// entering the 15,000 texts, hashes known, into a new document's intern table,
// both at once as a build meets them, and the texts a copy reads from the
// entries of another document, also with each member read as a tree holds it.
#include <benchmark/benchmark.h>
#include <rapidjson/document.h>

#include <algorithm>
#include <cstdio>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "binding/document.h"
#include "binding/fnv1a.h"
#include "binding/property.h"

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

std::vector<std::pair<std::string, std::uint32_t>> HashedTexts() {
    std::vector<std::pair<std::string, std::uint32_t>> texts;
    for (const MemberData& member : MakeMembers(false)) {
        texts.emplace_back(member.name, wex::Fnv1a32(member.name));
        if (!member.text.empty()) {
            texts.emplace_back(member.text, wex::Fnv1a32(member.text));
        }
    }
    return texts;
}

void BM_InternTheTexts_Floor(benchmark::State& state) {
    const auto texts = HashedTexts();
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

// The same, into a table that starts with 8 buckets and doubles past one
// entry a bucket, as a tree built one member at a time must: nothing tells it
// how many texts will come.
void BM_InternTheTextsGrowing_Floor(benchmark::State& state) {
    const auto texts = HashedTexts();
    for (auto _ : state) {
        wex::DocumentPool pool;
        wex::StringInternTable strings(pool);
        for (const auto& [text, hash] : texts) {
            benchmark::DoNotOptimize(strings.Intern(text, hash));
        }
    }
    state.SetItemsProcessed(state.iterations() * kMembers);
}
BENCHMARK(BM_InternTheTextsGrowing_Floor);

// Both rules at once, as a build meets them: each text hashed and interned
// into a growing table, the entries kept in one flat array of members with
// room for all, so that no structure of any kind is built.
void BM_HashAndInternGrowing_Floor(benchmark::State& state) {
    const auto members = MakeMembers(false);
    std::vector<std::pair<const wex::StringEntry*, const wex::StringEntry*>> kept(members.size());
    for (auto _ : state) {
        wex::DocumentPool pool;
        wex::StringInternTable strings(pool);
        std::size_t index = 0;
        for (const MemberData& member : members) {
            kept[index++] = {strings.Intern(member.name), strings.Intern(member.text)};
        }
        benchmark::DoNotOptimize(kept.data());
    }
    state.SetItemsProcessed(state.iterations() * kMembers);
}
BENCHMARK(BM_HashAndInternGrowing_Floor);

// What a deep copy cannot skip: each text of the source document, read from
// its entry with its hash, interned into a new table sized for them all; then
// the same with each member written as a tree holds it (a name and a node of
// payload, document and flags), into arrays of the new document's pool.
struct MemberLayout {
    const wex::StringEntry* name;
    const void* payload;
    const void* document;
    std::uint64_t flags;
};

// A copy's new document, its intern table sized for every text of the source.
struct CopyTarget {
    explicit CopyTarget(const wex::StringInternTable& source) : strings(pool) { strings.Reserve(source.Count()); }
    wex::DocumentPool pool;
    wex::StringInternTable strings;
};

// The next member's place, in arrays of the pool's largest record, as a
// tree's chunks hold members.
template <class Member>
Member& NextPlace(wex::DocumentPool& pool, Member*& next, std::size_t& room) {
    constexpr std::size_t kArrayMembers = wex::DocumentPool::kMaxPooledSize / sizeof(Member);
    if (room == 0) {
        next = static_cast<Member*>(pool.Allocate(kArrayMembers * sizeof(Member)));
        room = kArrayMembers;
    }
    --room;
    return *next++;
}

void BM_CopyTheTexts_Floor(benchmark::State& state) {
    const bool withNodes = state.range(0) != 0;
    wex::DocumentPool sourcePool;
    wex::StringInternTable sourceStrings(sourcePool);
    std::vector<std::pair<const wex::StringEntry*, const wex::StringEntry*>> source;
    for (const MemberData& member : MakeMembers(false)) {
        source.emplace_back(sourceStrings.Intern(member.name), sourceStrings.Intern(member.text));
    }
    MemberLayout scratch;
    for (auto _ : state) {
        CopyTarget target(sourceStrings);
        MemberLayout* members = nullptr;
        std::size_t room = 0;
        for (const auto& [name, text] : source) {
            MemberLayout& place = withNodes ? NextPlace(target.pool, members, room) : scratch;
            place = {target.strings.Intern(name->View(), name->hash), target.strings.Intern(text->View(), text->hash),
                     &target.pool, 1};
        }
        benchmark::DoNotOptimize(scratch);
        benchmark::DoNotOptimize(members);
    }
    state.SetItemsProcessed(state.iterations() * kMembers);
}
BENCHMARK(BM_CopyTheTexts_Floor)->ArgName("nodes")->Arg(0)->Arg(1);

// The same, reading each source member as a tree holds it: a name and a node
// whose kind says whether its payload is a text to intern or a number to take.
struct NodeLayout {
    const void* payload;
    const void* document;
    std::uint8_t kind;
    std::uint8_t flags[2];
};
struct SourceMember {
    const wex::StringEntry* name;
    NodeLayout value;
};

void BM_CopyTheMembers_Floor(benchmark::State& state) {
    wex::DocumentPool sourcePool;
    wex::StringInternTable sourceStrings(sourcePool);
    std::vector<SourceMember> source;
    for (const MemberData& member : MakeMembers(false)) {
        const bool isText = !member.text.empty();
        const void* payload = isText ? static_cast<const void*>(sourceStrings.Intern(member.text)) : nullptr;
        source.push_back({sourceStrings.Intern(member.name), {payload, &sourcePool, std::uint8_t{isText}, {}}});
    }
    for (auto _ : state) {
        CopyTarget target(sourceStrings);
        SourceMember* members = nullptr;
        std::size_t room = 0;
        for (const SourceMember& from : source) {
            SourceMember& to = NextPlace(target.pool, members, room);
            to.name = target.strings.Intern(from.name->View(), from.name->hash);
            to.value.document = &target.pool;
            to.value.kind = from.value.kind;
            if (from.value.kind != 0) {
                const auto* text = static_cast<const wex::StringEntry*>(from.value.payload);
                to.value.payload = target.strings.Intern(text->View(), text->hash);
            } else {
                to.value.payload = from.value.payload;
            }
        }
        benchmark::DoNotOptimize(members);
    }
    state.SetItemsProcessed(state.iterations() * kMembers);
}
BENCHMARK(BM_CopyTheMembers_Floor);

// Members kept in byte order of their names cost, when the names arrive in no
// order, at least a comparison sort of them: here the names interned in the
// shuffled order (as a build lays them out), then sorted by reference.
void BM_SortTheShuffledNames_Floor(benchmark::State& state) {
    wex::DocumentPool pool;
    wex::StringInternTable strings(pool);
    std::vector<const wex::StringEntry*> names;
    for (const MemberData& member : MakeMembers(true)) {
        names.push_back(strings.Intern(member.name));
    }
    std::vector<const wex::StringEntry*> sorted(names.size());
    for (auto _ : state) {
        std::copy(names.begin(), names.end(), sorted.begin());
        std::sort(sorted.begin(), sorted.end(), [](const wex::StringEntry* first, const wex::StringEntry* second) {
            return wex::CompareEntries(*first, *second) < 0;
        });
        benchmark::DoNotOptimize(sorted.data());
    }
    state.SetItemsProcessed(state.iterations() * kMembers);
}
BENCHMARK(BM_SortTheShuffledNames_Floor);

void BM_SizeOfBindingProperty(benchmark::State& state) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(sizeof(wex::BindingProperty));
    }
    state.counters["bytes"] = sizeof(wex::BindingProperty);
}
BENCHMARK(BM_SizeOfBindingProperty)->Iterations(1);

}  // namespace

BENCHMARK_MAIN();
