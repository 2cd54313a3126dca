#pragma once

#include <gtest/gtest.h>
#include <httplib.h>

#include <atomic>
#include <memory>
#include <sstream>
#include <thread>

#include "live_host.h"
#include "world_source.h"

namespace tav::test {

inline std::shared_ptr<const tav::host::LeagueWorld> DemoWorld() {
    std::string error;
    return tav::host::LoadWorld("", error);
}

// The plug-in on the demo world, served over HTTP on a free loopback port by a host thread of its own.
class LiveHostTest : public ::testing::Test {
  protected:
    void Serve(tav::host::GatewayOptions options = {}) {
        ASSERT_TRUE(session_.Start(TAV_PLUGIN_PATH, {18, 0, 0})) << session_.Error();
        live_ = std::make_unique<tav::host::LiveHost>(session_, options);
        ASSERT_TRUE(live_->Listen());
        hostThread_ = std::thread([this] { live_->Run(stop_, hostOutput_); });
        client_ = std::make_unique<httplib::Client>("127.0.0.1", live_->Port());
    }

    void TearDown() override {
        stop_ = true;
        if (hostThread_.joinable()) {
            hostThread_.join();
        }
    }

    tav::host::HostSession session_{DemoWorld()};
    std::unique_ptr<tav::host::LiveHost> live_;
    std::atomic<bool> stop_{false};
    std::ostringstream hostOutput_;
    std::thread hostThread_;
    std::unique_ptr<httplib::Client> client_;
};

}  // namespace tav::test
