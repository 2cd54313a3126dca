#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "api/dispatcher.h"
#include "api/response_record.h"
#include "codec/json_writer.h"
#include "plugin/app_module.h"
#include "types/host_value.h"
#include "types/registry.h"

namespace tav::test {

enum class TestTier : std::int32_t { NONE = 0, GOLD = 3 };

struct TestLeague {
    std::string queue;
    std::int32_t points = 0;
    TestTier tier = TestTier::NONE;
};

// A module with routes of every shape that the dispatcher serves.
class ApiTestModule : public wex::AppModule {
  public:
    ApiTestModule() : AppModule("tav-apitest") {}

    void RegisterRoutesAndTypes() override;

    // 403 fails with status 403; 500 throws as a handler that meets bad data does.
    wex::MaybeType<wex::Failure, std::vector<TestLeague>> GetSummonerLeagues(std::uint64_t summonerId);
    wex::MaybeType<wex::Failure, void> Acknowledge(std::int32_t id);
    wex::MaybeType<wex::Failure, std::string> GetName() const;

    std::vector<std::int32_t> acknowledged;

    // Loads the module as the host would, so its API table exists.
    void LoadForTest();
};

// A field of a packed record as an aligned value: gtest binds references to
// what it compares, and a reference to a packed field may be misaligned.
template <class T>
T Read(T value) {
    return value;
}

// A hand-built request whose texts live as long as it does.
struct TestRequest {
    std::uint32_t method = HostMethodGet;
    std::string path;
    std::vector<std::pair<std::string, std::string>> headers;
    std::string contentType;
    std::string body;
    bool hasBody = false;
    std::vector<HostArgument> arguments;
    std::string methodName;
    const void* endpointContext = nullptr;

    std::vector<HostHeader> headerRecords;  // filled by Record

    HostRequest Record();
};

TestRequest Request(std::uint32_t method, std::string path);

// The lines of the block "== name" of descriptions.txt.
std::vector<std::string> ExpectedLines(const std::string& name);

// Those lines joined, each followed by lineEnd.
std::string ExpectedText(const std::string& name, const std::string& lineEnd = "");

// A response that releases itself.
struct TestResponse {
    HostResponse record{};
    ~TestResponse() {
        if (record.release != nullptr) {
            record.release(&record);
        }
    }
    std::string Error() const { return record.error != nullptr ? record.error : ""; }
    // The result as compact JSON.
    std::string Json() const { return wex::WriteJson(wex::HostValueToBinding(record.result, "result")); }
};

// A loaded ApiTestModule whose whole route table serves requests.
class ApiModuleTest : public ::testing::Test {
  protected:
    void SetUp() override { module_.LoadForTest(); }

    void Serve(TestRequest request, TestResponse& response) {
        const HostRequest record = request.Record();
        wex::Dispatch(module_.TypeRegistry(), response.record, record, module_.Routes());
    }

    ApiTestModule module_;
};

}  // namespace tav::test
