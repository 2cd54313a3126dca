// The codecs beside their peers, on the three corpora of the JSON benchmark and
// their MessagePack and block-style YAML forms (made at start-up):
//   ParseJson       vs rapidjson's Document::Parse and nlohmann::json::parse
//   WriteJson       vs rapidjson's Writer over a Document
//   ReadMessagePack vs msgpack-c's unpack to an object
//   ReadYaml        vs a bare libyaml event loop that builds nothing, and yaml-cpp's Load
// Two floors show what interning every key and string costs before any tree is
// built: rapidjson's reader with a handler that only hashes the texts
// (FNV-1a, as the intern table does), and FNV-1a over the texts alone. A third
// times the tree builder alone, fed the corpus' steps with nothing to read.
#include <benchmark/benchmark.h>
#include <yaml-cpp/yaml.h>
#include <yaml.h>
#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <msgpack.hpp>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "binding/fnv1a.h"
#include "binding/tree_builder.h"
#include "codec/json_reader.h"
#include "codec/json_writer.h"
#include "codec/msgpack_reader.h"
#include "codec/yaml_reader.h"

namespace {

// One call on the tree builder; texts and values are read from the parsed
// corpus, which the steps keep alive.
struct BuildStep {
    enum class Kind : std::uint8_t { Collection, Structure, Close, Key, Value } kind;
    std::string_view name;                         // for Key
    const wex::BindingProperty* value = nullptr;  // for Value
};

struct Corpus {
    std::string name;
    std::string json;
    std::vector<std::uint8_t> msgpack;
    std::string yaml;
    std::vector<std::string> texts;  // every member name and string value
    std::shared_ptr<const wex::BindingProperty> parsed;
    std::vector<BuildStep> steps;  // that build parsed again, members in their stored order
};

std::string ReadFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

bool IsContainer(const wex::BindingProperty& value) {
    return value.Kind() == wex::BindingPropertyKind::Collection || value.Kind() == wex::BindingPropertyKind::Structure;
}

// A scalar as YAML: strings double-quoted with JSON's escapes, which YAML reads too.
std::string YamlScalar(const wex::BindingProperty& value) {
    if (value.IsEmpty()) {
        return "~";
    }
    if (value.Size() == 0 && IsContainer(value)) {
        return value.Kind() == wex::BindingPropertyKind::Collection ? "[]" : "{}";
    }
    return wex::WriteJson(value);
}

// Block style, two spaces per level; the corpora nest only a few levels.
void AppendBlockYaml(std::string& text, const wex::BindingProperty& value, const std::string& indent) {
    auto appendItem = [&](const std::string& lead, const wex::BindingProperty& item) {
        text += indent + lead;
        if (IsContainer(item) && item.Size() != 0) {
            text += "\n";
            AppendBlockYaml(text, item, indent + "  ");
        } else {
            text += ' ';
            text += YamlScalar(item);
            text += '\n';
        }
    };
    for (const wex::BindingProperty& element : value.Elements()) {
        appendItem("-", element);
    }
    for (const wex::BindingMember member : value.Members()) {
        wex::BindingProperty name;
        name.SetString(member.name);
        appendItem(wex::WriteJson(name) + ":", member.value);
    }
}

// Walks with its own stack, as the corpora are read without a depth limit here.
std::vector<std::string> TextsOf(const wex::BindingProperty& root) {
    std::vector<std::string> texts;
    std::vector<const wex::BindingProperty*> pending{&root};
    while (!pending.empty()) {
        const wex::BindingProperty* node = pending.back();
        pending.pop_back();
        if (node->Kind() == wex::BindingPropertyKind::String) {
            texts.emplace_back(node->AsString());
        }
        for (const wex::BindingProperty& element : node->Elements()) {
            pending.push_back(&element);
        }
        for (const wex::BindingMember member : node->Members()) {
            texts.emplace_back(member.name);
            pending.push_back(&member.value);
        }
    }
    return texts;
}

// The corpora nest only a few levels.
void AppendBuildSteps(std::vector<BuildStep>& steps, const wex::BindingProperty& node) {
    const bool isStructure = node.Kind() == wex::BindingPropertyKind::Structure;
    if (!isStructure && node.Kind() != wex::BindingPropertyKind::Collection) {
        steps.push_back({BuildStep::Kind::Value, {}, &node});
        return;
    }
    steps.push_back({isStructure ? BuildStep::Kind::Structure : BuildStep::Kind::Collection, {}});
    for (const wex::BindingProperty& element : node.Elements()) {
        AppendBuildSteps(steps, element);
    }
    for (const wex::BindingMember member : node.Members()) {
        steps.push_back({BuildStep::Kind::Key, member.name});
        AppendBuildSteps(steps, member.value);
    }
    steps.push_back({BuildStep::Kind::Close, {}});
}

void SetValue(wex::BindingProperty& slot, const wex::BindingProperty& value) {
    switch (value.Kind()) {
        case wex::BindingPropertyKind::String:
            slot.SetString(value.AsString());
            break;
        case wex::BindingPropertyKind::Signed:
            slot.SetSigned(value.AsInt64());
            break;
        case wex::BindingPropertyKind::Unsigned:
            slot.SetUnsigned(value.AsUnsigned());
            break;
        case wex::BindingPropertyKind::Float:
            slot.SetFloat(value.AsDouble());
            break;
        case wex::BindingPropertyKind::Bool:
            slot.SetBool(value.ToBool());
            break;
        default:
            break;
    }
}

void SetBytes(benchmark::State& state, std::size_t size) {
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * size));
}

void ParseJsonBinding(benchmark::State& state, const Corpus& corpus) {
    for (auto _ : state) {
        wex::BindingProperty value = wex::ParseJson(corpus.json.c_str());
        benchmark::DoNotOptimize(value);
    }
    SetBytes(state, corpus.json.size());
}

void ParseJsonRapidjson(benchmark::State& state, const Corpus& corpus) {
    for (auto _ : state) {
        rapidjson::Document document;
        document.Parse(corpus.json.c_str());
        benchmark::DoNotOptimize(document);
    }
    SetBytes(state, corpus.json.size());
}

void ParseJsonNlohmann(benchmark::State& state, const Corpus& corpus) {
    for (auto _ : state) {
        nlohmann::json document = nlohmann::json::parse(corpus.json);
        benchmark::DoNotOptimize(document);
    }
    SetBytes(state, corpus.json.size());
}

// Reads the text and hashes every key and string, building nothing.
class HashingHandler : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, HashingHandler> {
  public:
    bool String(const char* text, rapidjson::SizeType length, bool) { return Hash(text, length); }
    bool Key(const char* text, rapidjson::SizeType length, bool) { return Hash(text, length); }
    std::uint32_t Sum() const { return sum_; }

  private:
    bool Hash(const char* text, rapidjson::SizeType length) {
        sum_ += wex::Fnv1a32({text, length});
        return true;
    }
    std::uint32_t sum_ = 0;
};

void ParseJsonSaxFnv1aFloor(benchmark::State& state, const Corpus& corpus) {
    for (auto _ : state) {
        HashingHandler handler;
        rapidjson::Reader reader;
        rapidjson::StringStream stream(corpus.json.c_str());
        reader.Parse(stream, handler);
        benchmark::DoNotOptimize(handler.Sum());
    }
    SetBytes(state, corpus.json.size());
}

void Fnv1aOfTheTextsFloor(benchmark::State& state, const Corpus& corpus) {
    for (auto _ : state) {
        std::uint32_t sum = 0;
        for (const std::string& text : corpus.texts) {
            sum += wex::Fnv1a32(text);
        }
        benchmark::DoNotOptimize(sum);
    }
    SetBytes(state, corpus.msgpack.size());
}

// What any reader on the tree builder pays with nothing to read: interning,
// allocation, and moving each value into its container.
void TreeBuilderFloor(benchmark::State& state, const Corpus& corpus) {
    for (auto _ : state) {
        wex::BindingProperty root;
        wex::BindingTreeBuilder builder(root);
        for (const BuildStep& step : corpus.steps) {
            switch (step.kind) {
                case BuildStep::Kind::Collection:
                    builder.OpenCollection();
                    break;
                case BuildStep::Kind::Structure:
                    builder.OpenStructure();
                    break;
                case BuildStep::Kind::Close:
                    builder.Close();
                    break;
                case BuildStep::Kind::Key:
                    builder.Key(step.name);
                    break;
                case BuildStep::Kind::Value:
                    SetValue(builder.NextValue(), *step.value);
                    break;
            }
        }
        benchmark::DoNotOptimize(root);
    }
    SetBytes(state, corpus.msgpack.size());
}

void WriteJsonBinding(benchmark::State& state, const Corpus& corpus) {
    const wex::BindingProperty value = wex::ParseJson(corpus.json.c_str());
    for (auto _ : state) {
        std::string text = wex::WriteJson(value);
        benchmark::DoNotOptimize(text);
    }
    SetBytes(state, corpus.json.size());
}

void WriteJsonRapidjson(benchmark::State& state, const Corpus& corpus) {
    rapidjson::Document document;
    document.Parse(corpus.json.c_str());
    for (auto _ : state) {
        rapidjson::StringBuffer buffer;
        rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
        document.Accept(writer);
        std::string text(buffer.GetString(), buffer.GetSize());
        benchmark::DoNotOptimize(text);
    }
    SetBytes(state, corpus.json.size());
}

void ReadMessagePackBinding(benchmark::State& state, const Corpus& corpus) {
    for (auto _ : state) {
        wex::MessagePackResult result = wex::ReadMessagePack(corpus.msgpack.data(), corpus.msgpack.size());
        benchmark::DoNotOptimize(result);
    }
    SetBytes(state, corpus.msgpack.size());
}

void ReadMessagePackMsgpackC(benchmark::State& state, const Corpus& corpus) {
    for (auto _ : state) {
        msgpack::object_handle handle =
            msgpack::unpack(reinterpret_cast<const char*>(corpus.msgpack.data()), corpus.msgpack.size());
        benchmark::DoNotOptimize(handle);
    }
    SetBytes(state, corpus.msgpack.size());
}

void ReadYamlBinding(benchmark::State& state, const Corpus& corpus) {
    for (auto _ : state) {
        wex::BindingProperty value = wex::ReadYaml(corpus.yaml);
        benchmark::DoNotOptimize(value);
    }
    SetBytes(state, corpus.yaml.size());
}

// What reading costs with nothing built: the limit for a tree builder on libyaml.
void ReadYamlBareEvents(benchmark::State& state, const Corpus& corpus) {
    for (auto _ : state) {
        yaml_parser_t parser;
        yaml_parser_initialize(&parser);
        yaml_parser_set_encoding(&parser, YAML_UTF8_ENCODING);
        yaml_parser_set_input_string(&parser, reinterpret_cast<const unsigned char*>(corpus.yaml.data()),
                                     corpus.yaml.size());
        std::size_t events = 0;
        yaml_event_t event;
        while (yaml_parser_parse(&parser, &event) != 0) {
            const bool end = event.type == YAML_STREAM_END_EVENT;
            yaml_event_delete(&event);
            ++events;
            if (end) {
                break;
            }
        }
        yaml_parser_delete(&parser);
        benchmark::DoNotOptimize(events);
    }
    SetBytes(state, corpus.yaml.size());
}

void ReadYamlYamlCpp(benchmark::State& state, const Corpus& corpus) {
    for (auto _ : state) {
        YAML::Node node = YAML::Load(corpus.yaml);
        benchmark::DoNotOptimize(node);
    }
    SetBytes(state, corpus.yaml.size());
}

void Register(const std::string& name, void (*run)(benchmark::State&, const Corpus&), const Corpus& corpus) {
    benchmark::RegisterBenchmark((name + "/" + corpus.name).c_str(), run, corpus);
}

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    const std::filesystem::path data = std::filesystem::path(TAV_TESTDATA_DIR) / "nativejson-benchmark/data";
    if (!std::filesystem::is_directory(data)) {
        std::printf("bench_codec skipped: the corpora are not in %s\n", data.c_str());
        return 0;
    }
    std::vector<Corpus> corpora;
    for (const char* name : {"canada", "citm_catalog", "twitter"}) {
        Corpus corpus{name, ReadFile(data / (std::string(name) + ".json")), {}, {}, {}, {}, {}};
        corpus.msgpack = nlohmann::json::to_msgpack(nlohmann::json::parse(corpus.json));
        const wex::BindingProperty parsed = wex::ParseJson(corpus.json);
        AppendBlockYaml(corpus.yaml, parsed, "");
        corpus.texts = TextsOf(parsed);
        corpus.parsed = std::make_shared<const wex::BindingProperty>(parsed);
        AppendBuildSteps(corpus.steps, *corpus.parsed);
        const wex::BindingProperty yaml = wex::ReadYaml(corpus.yaml);
        if (!yaml.IsValid()) {
            std::printf("The YAML form of %s does not read: %s\n", name, std::string(yaml.GetError()).c_str());
            return 1;
        }
        corpora.push_back(std::move(corpus));
    }
    for (const Corpus& corpus : corpora) {
        Register("ParseJson", ParseJsonBinding, corpus);
        Register("ParseJson_RapidjsonDocument", ParseJsonRapidjson, corpus);
        Register("ParseJson_Nlohmann", ParseJsonNlohmann, corpus);
        Register("ParseJson_SaxFnv1aFloor", ParseJsonSaxFnv1aFloor, corpus);
        Register("WriteJson", WriteJsonBinding, corpus);
        Register("WriteJson_RapidjsonWriter", WriteJsonRapidjson, corpus);
        Register("ReadMessagePack", ReadMessagePackBinding, corpus);
        Register("ReadMessagePack_MsgpackC", ReadMessagePackMsgpackC, corpus);
        Register("ReadMessagePack_Fnv1aOfTheTextsFloor", Fnv1aOfTheTextsFloor, corpus);
        Register("ReadMessagePack_TreeBuilderFloor", TreeBuilderFloor, corpus);
        Register("ReadYaml", ReadYamlBinding, corpus);
        Register("ReadYaml_BareLibyamlEvents", ReadYamlBareEvents, corpus);
        Register("ReadYaml_YamlCpp", ReadYamlYamlCpp, corpus);
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
