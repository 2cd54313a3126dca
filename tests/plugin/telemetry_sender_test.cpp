#include "plugin/framework_types.h"

#include <gtest/gtest.h>

#include "plugin/app_module.h"
#include "support/hosted_module.h"

namespace wex {
namespace {

using tav::host::ScriptedAnswer;
using tav::host::SimulatedHost;

class TelemetryModule : public AppModule {
  public:
    TelemetryModule() : AppModule("tav-telemetry") {}
};

class TelemetrySenderTest : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(hosted.Start());
        hosted.host().ClearRecords();
    }

    // Made by Start.
    TelemetrySender& Sender() { return *hosted.module().Telemetry(); }

    tav::test::HostedModule<TelemetryModule> hosted;
};

TEST_F(TelemetrySenderTest, PostsTheDataAsOneStructureUnderTheEventNameAndAFailureReachesOnlyTheFuture) {
    const std::size_t unreleased = SimulatedHost::UnreleasedResponses();
    std::map<std::string, BindingProperty> data;
    data["count"].SetUnsigned(3);
    data["where"].SetString("lobby");
    auto sent = Sender().SendTelemetry("login-started", data);
    ASSERT_EQ(sent.wait_for(std::chrono::seconds(0)), std::future_status::ready);
    EXPECT_TRUE(sent.get().HasValue());
    ASSERT_EQ(hosted.records().requests.size(), 1u);
    const tav::host::RecordedRequest& request = hosted.records().requests[0];
    EXPECT_EQ(request.method, HostMethodPost);
    EXPECT_EQ(request.path, "/telemetry/v1/events/login-started");
    EXPECT_EQ(request.arguments, std::vector<std::string>{R"({"count":3,"where":"lobby"})"});
    EXPECT_EQ(SimulatedHost::UnreleasedResponses(), unreleased);

    hosted.host().Answer(HostMethodPost, "/telemetry/v1/events/x", ScriptedAnswer::Failure(500, "boom"));
    const auto failed = Sender().SendTelemetry("x", {}).get();
    ASSERT_TRUE(failed.HasFailure());
    EXPECT_EQ(failed.GetFailure().Message(), "Error response for POST /telemetry/v1/events/x: boom");
    EXPECT_EQ(hosted.records().requests[1].arguments, std::vector<std::string>{"{}"});
    EXPECT_TRUE(hosted.records().logLines.empty());
}

}  // namespace
}  // namespace wex
