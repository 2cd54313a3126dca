#pragma once

#include <atomic>
#include <chrono>
#include <ostream>
#include <string>

#include "event_stream.h"
#include "host_session.h"
#include "host_work_queue.h"
#include "http_gateway.h"

namespace tav::host {

// A started session served over HTTP in real time: the calling thread becomes
// the host's thread and runs the loop, whose clock follows the wall clock
// (plus every advance asked for), and whose every turn also serves the HTTP
// requests queued so far, inside the plug-in's waits too.
class LiveHost {
  public:
    LiveHost(HostSession& session, GatewayOptions options);

    // Binds the gateway; false when the address or port cannot be had.
    bool Listen();
    int Port() const { return gateway_.Port(); }
    // Serves until stop becomes true; then refuses what is still queued and
    // stops the HTTP server. The session is left to the caller to stop. A
    // stop that comes while the plug-in waits for a server answer that a
    // fault delays says so on out and delivers that answer at once, so that
    // the wait ends.
    void Run(const std::atomic<bool>& stop, std::ostream& out);

  private:
    void OnTurn();
    void BeginStopping();
    double WallSeconds() const;

    HostSession& session_;
    HostWorkQueue queue_;
    EventStream events_;
    HttpGateway gateway_;
    std::chrono::steady_clock::time_point started_ = std::chrono::steady_clock::now();
    double lastWall_ = 0.0;
    const std::atomic<bool>* stop_ = nullptr;
    std::ostream* out_ = nullptr;
    bool stopping_ = false;
};

}  // namespace tav::host
