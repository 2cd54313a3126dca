#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <list>
#include <sstream>
#if defined(__linux__)
#include <sys/resource.h>
#include <unistd.h>
#endif

#include "address_sanitizer.h"
#include "api/api_handler.h"
#include "api/route_table.h"
#include "api_test_module.h"
#include "support/case_table.h"

namespace tav::test {
namespace {

using DispatchTest = ApiModuleTest;

// The result as JSON, "none", or "error STATUS: text"; checks what either kind of answer leaves unset.
std::string Answer(const TestResponse& response) {
    if (response.record.error == nullptr) {
        EXPECT_EQ(Read(response.record.status), 0u);
        EXPECT_STREQ(response.record.text, "");
        EXPECT_EQ(Read(response.record.headerCount), 0u);
        EXPECT_EQ(Read(response.record.streamRead), nullptr);
        return response.record.result.tag == HostValueNone ? "none" : response.Json();
    }
    EXPECT_EQ(Read(response.record.errorFlag), 1);
    EXPECT_EQ(Read(response.record.result.tag), static_cast<std::uint32_t>(HostValueNone));
    return "error " + std::to_string(Read(response.record.status)) + ": " + response.Error();
}

TEST_F(DispatchTest, AnswersEachRequestOfTheCases) {
    const std::map<std::string, std::uint32_t> methods = {
        {"GET", HostMethodGet}, {"POST", HostMethodPost}, {"DELETE", HostMethodDelete}};
    std::ifstream file(std::filesystem::path(__FILE__).parent_path() / "dispatch_cases.txt");
    ASSERT_TRUE(file.good());
    TestRequest request;
    std::list<std::string> texts;  // the names and texts of direct arguments, at fixed addresses
    int answered = 0;
    for (std::string line; std::getline(file, line);) {
        if (line.empty() || line[0] == '#') {
            continue;
        }
        const std::size_t space = std::min(line.find(' '), line.size());
        const std::string word = line.substr(0, space);
        const std::string rest = line.substr(std::min(space + 1, line.size()));
        if (word == "header") {
            const std::size_t colon = rest.find(": ");
            request.headers.emplace_back(rest.substr(0, colon), rest.substr(colon + 2));
        } else if (word == "type") {
            request.contentType = rest;
        } else if (word == "body") {
            request.body = Unescape(rest);
            request.hasBody = true;
        } else if (word == "arg") {
            std::istringstream fields(rest);
            std::string name, kind, value;
            fields >> name >> kind >> value;
            HostArgument& argument = request.arguments.emplace_back();
            argument.name = name == "-" ? nullptr : texts.emplace_back(name).c_str();
            if (kind == "text") {
                argument.value.tag = HostValueBorrowedString;
                argument.value.payload.ref.data = texts.emplace_back(value).c_str();
            } else if (kind == "bool") {
                argument.value.tag = HostValueBool;
                argument.value.payload.boolean = static_cast<std::uint8_t>(std::stoi(value));
            } else if (kind == "signed") {
                argument.value.tag = HostValueSigned;
                argument.value.payload.integer = std::stoll(value);
            } else {
                argument.value.tag = static_cast<std::uint32_t>(std::stoul(value));
            }
        } else if (word == "->") {
            SCOPED_TRACE(request.path);
            TestResponse response;
            Serve(request, response);
            if (rest == "ok") {
                EXPECT_EQ(response.Error(), "");
            } else {
                EXPECT_EQ(Answer(response), rest);
            }
            ++answered;
        } else {
            ASSERT_EQ(methods.count(word), 1u) << line;
            request = Request(methods.at(word), rest);
        }
    }
    EXPECT_GE(answered, 89);                                         // every case of the file was read
    EXPECT_EQ(module_.acknowledged, std::vector<std::int32_t>{42});  // a member function without a value ran
}

TEST_F(DispatchTest, DottedKeysOfOneRequestAddAtMost65536ElementsInAll) {
    std::string hostile = "/test/echo/n?options.0.1048575=1";
    for (int key = 1; key < 300; ++key) {
        hostile += "&options." + std::to_string(key) + ".1048575=1";
    }
    TestResponse response;
    Serve(Request(HostMethodPost, hostile), response);
    EXPECT_EQ(response.Error(), "Index 1048575 is out of range");
}

// A handler of the platform's own kind, which chooses a response kind.
class KindHandler : public wex::ApiFunctionHandler {
  public:
    explicit KindHandler(std::uint32_t code) : code_(code) {}
    void* ConvertArguments(wex::ApiCallContext&, std::span<const wex::BindingProperty>, std::uint32_t) const override {
        return nullptr;
    }
    void Invoke(wex::ApiCallContext& call, const wex::ApiRequestSummary*, void*, std::uint32_t) const override {
        call.responseKind = 7;
        call.responseKindCode = code_;
    }
    void ReleaseArguments(void*) const override {}
    void Describe(wex::BindingFunctionInfo&) const override {}
    const wex::BindingTypeIdentity& ResultType() const override { return wex::BindingTypeIdentity::Of<std::int32_t>(); }

  private:
    std::uint32_t code_;
};

TEST(DispatchResponseKind, OnlyTheCodesOneToThreeReachTheHost) {
    const std::pair<std::uint32_t, std::uint32_t> cases[] = {{0, 0}, {1, 1}, {3, 3}, {4, 0}};
    for (const auto& [code, sent] : cases) {
        SCOPED_TRACE(code);
        wex::BindingTypeRegistry registry;
        wex::RouteTable table;
        wex::BindingFunctionInfo function;
        function.handler = std::make_shared<const KindHandler>(code);
        table.AddRoute(registry, HostMethodGet, "/kind", function);
        TestRequest request = Request(HostMethodGet, "/kind");
        const HostRequest record = request.Record();
        TestResponse response;
        wex::Dispatch(&registry, response.record, record, table.Routes());
        EXPECT_EQ(response.Error(), "");
        EXPECT_EQ(Read(response.record.responseKind), 7);
        EXPECT_EQ(Read(response.record.responseKindCode), sent);
    }
}

#if defined(__linux__)
// Caps the address space at what the process maps now plus extra bytes.
void CapAddressSpace(std::size_t extra) {
    std::size_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    const rlim_t cap = pages * static_cast<rlim_t>(sysconf(_SC_PAGESIZE)) + extra;
    const rlimit limit{cap, cap};
    setrlimit(RLIMIT_AS, &limit);
}

// 8 million numbers take 32 MB natively and 128 MB as a binding value, and
// far more on their way to the host: the cap lets the handler answer, and only
// the conversion for the host runs out.
TEST_F(DispatchTest, AResultThatRunsOutOfMemoryOnItsWayToTheHostAnswers400WithTheText) {
    if (tav::host::kUnderAddressSanitizer) {
        GTEST_SKIP() << "the sanitizer maps more address space than the cap leaves";
    }
    EXPECT_EXIT(
        {
            CapAddressSpace(std::size_t{280} << 20);
            TestResponse response;
            Serve(Request(HostMethodGet, "/test/zeros/8000000"), response);
            std::fprintf(stderr, "%s %u\n", response.Error().c_str(), Read(response.record.status));
            std::exit(0);
        },
        testing::ExitedWithCode(0), "^Out of memory 400\n$");
}
#endif

}  // namespace
}  // namespace tav::test
