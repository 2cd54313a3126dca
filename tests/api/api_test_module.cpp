#include "api_test_module.h"

#include <cstring>
#include <filesystem>
#include <fstream>

#include "api/api_handler.h"

namespace tav::test {

using wex::ApiRequestSummary;
using wex::ApiResponse;
using wex::ArgumentLocationBody;
using wex::ArgumentLocationHeader;
using wex::BindingProperty;
using wex::Failure;
using wex::MaybeType;

namespace {

using Echo = MaybeType<Failure, BindingProperty>;

// A handler that answers its one argument.
const auto EchoText = [](std::string text) -> Echo {
    BindingProperty answer;
    answer.SetString(text);
    return answer;
};

// A body of "0123456789" handed out in pieces of at most four bytes.
class DigitsProducer : public wex::BodyProducer {
  public:
    bool Read(void* buffer, std::uint32_t& size, bool& more) override {
        const std::uint32_t count = std::min<std::uint32_t>({size, 4, static_cast<std::uint32_t>(10 - sent_)});
        std::memcpy(buffer, "0123456789" + sent_, count);
        sent_ += count;
        size = count;
        more = sent_ < 10;
        return true;
    }
    std::uint32_t Length() const override { return 10; }

  private:
    std::size_t sent_ = 0;
};

}  // namespace

MaybeType<Failure, std::vector<TestLeague>> ApiTestModule::GetSummonerLeagues(std::uint64_t summonerId) {
    if (summonerId == 403) {
        return Failure(403, "Forbidden");
    }
    if (summonerId == 500) {
        throw std::runtime_error("Bad tier id 'x'");
    }
    return std::vector<TestLeague>{{"RANKED_SOLO_5x5", 42, TestTier::GOLD}, {"RANKED_FLEX", 0, TestTier::NONE}};
}

MaybeType<Failure, void> ApiTestModule::Acknowledge(std::int32_t id) {
    acknowledged.push_back(id);
    return {};
}

MaybeType<Failure, std::string> ApiTestModule::GetName() const {
    return ShortName();
}

void ApiTestModule::RegisterRoutesAndTypes() {
    wex::BindingTypeRegistry& registry = *TypeRegistry();
    registry.Enum<TestTier>("TestTier").Value("NONE", TestTier::NONE).Value("GOLD", TestTier::GOLD);
    registry.Struct<TestLeague>("TestLeague")
        .Field("queue", &TestLeague::queue)
        .Field("points", &TestLeague::points)
        .Field("tier", &TestLeague::tier);

    AddRoute(HostMethodGet, "/tav-leagues/v1/summoner-leagues/{summonerId}", &ApiTestModule::GetSummonerLeagues)
        .AddPathArgument("summonerId", "The player");
    AddRoute(HostMethodGet, "/tav-leagues/v1/teams/{id}", [](std::string id) {
        return EchoText("team " + id);
    }).AddPathArgument("id", "");
    AddRoute(HostMethodPost, "/tav-leagues/v2/notifications/{id}/acknowledge", &ApiTestModule::Acknowledge)
        .AddPathArgument("id", "");
    AddRoute(HostMethodGet, "/test/name", &ApiTestModule::GetName);
    AddRoute(HostMethodGet, "/tav-leagues/v2/tiers/",
             [](std::vector<std::uint64_t> ids, bool verbose) -> Echo {
                 BindingProperty answer;
                 BindingProperty& list = answer.Member("ids");
                 list.MakeCollection();
                 for (const std::uint64_t id : ids) {
                     list.Append().SetUnsigned(id);
                 }
                 answer.Member("verbose").SetBool(verbose);
                 return answer;
             })
        .AddQueryArgument("ids", "")
        .AddQueryArgument("verbose", "");
    AddRoute(HostMethodGet, "/test/files/{+path}", EchoText).AddPathArgument("path", "");
    AddRoute(HostMethodGet, "/test/page{#section}", EchoText).AddPathArgument("section", "");
    AddRoute(HostMethodGet, "/test/{x}/a.b", EchoText).AddPathArgument("x", "");
    AddRoute(HostMethodGet, "/test/zeros/{count}",
             [](std::uint32_t count) -> MaybeType<Failure, std::vector<std::int32_t>> {
                 return std::vector<std::int32_t>(count);
             })
        .AddPathArgument("count", "");
    AddRoute(HostMethodGet, "/test/number", [](std::int32_t number) -> MaybeType<Failure, std::int32_t> {
        return number;
    }).AddQueryArgument("number", "");
    AddRoute(HostMethodGet, "/test/orphan/{nothing}", []() { return EchoText("never"); });
    AddRoute(HostMethodPost, "/test/echo/{name}",
             [](std::string name, BindingProperty options, BindingProperty summonerId, BindingProperty payload,
                bool flag) -> Echo {
                 BindingProperty answer;
                 answer.Member("name").SetString(name);
                 answer.Member("options") = options;
                 answer.Member("summonerId") = summonerId;
                 answer.Member("payload") = payload;
                 answer.Member("flag").SetBool(flag);
                 return answer;
             })
        .AddPathArgument("name", "")
        .AddArgument("options", "", wex::ArgumentLocationAnywhere)
        .AddArgument("summonerId", "", ArgumentLocationHeader)
        .AddArgument("payload", "", ArgumentLocationBody)
        .AddQueryArgument("flag", "");
    AddRoute(HostMethodGet, "/test/league", [](TestLeague league) -> MaybeType<Failure, TestLeague> {
        return league;
    }).AddQueryArgument("league", "");
    AddRoute(HostMethodGet, "/test/response", [](const ApiRequestSummary& summary) -> ApiResponse {
        ApiResponse response;
        response.status = 201;
        response.headers["X-Path"] = summary.path;
        response.headers["X-Header"] = summary.headers.count("probe") != 0 ? summary.headers.at("probe") : "";
        response.text = "created";
        response.producer = std::make_unique<DigitsProducer>();
        return response;
    });
}

void ApiTestModule::LoadForTest() {
    PluginLoadInfo info{};
    info.major = 18;
    Load(info);
}

TestRequest Request(std::uint32_t method, std::string path) {
    TestRequest request;
    request.method = method;
    request.path = std::move(path);
    return request;
}

std::vector<std::string> ExpectedLines(const std::string& name) {
    std::ifstream file(std::filesystem::path(__FILE__).replace_filename("descriptions.txt"));
    std::vector<std::string> lines;
    bool inBlock = false;
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with("== ")) {
            inBlock = line.substr(3) == name;
        } else if (inBlock) {
            lines.push_back(line);
        }
    }
    EXPECT_FALSE(lines.empty()) << "no block '" << name << "' in descriptions.txt";
    return lines;
}

std::string ExpectedText(const std::string& name, const std::string& lineEnd) {
    std::string text;
    for (const std::string& line : ExpectedLines(name)) {
        text += line + lineEnd;
    }
    return text;
}

HostRequest TestRequest::Record() {
    headerRecords.clear();
    for (const auto& [name, value] : headers) {
        headerRecords.push_back({name.c_str(), value.c_str()});
    }
    HostRequest request{};
    request.method = method;
    request.path = path.c_str();
    request.arguments = arguments.empty() ? nullptr : arguments.data();
    request.argumentCount = static_cast<std::uint32_t>(arguments.size());
    request.endpointContext = endpointContext;
    request.headers = headerRecords.empty() ? nullptr : headerRecords.data();
    request.headerCount = static_cast<std::uint32_t>(headerRecords.size());
    request.contentType = contentType.c_str();
    request.body = hasBody ? body.data() : nullptr;
    request.bodyLength = static_cast<std::uint32_t>(body.size());
    request.context = 9;
    request.methodName = methodName.c_str();
    return request;
}

}  // namespace tav::test
