#pragma once

#include <atomic>
#include <chrono>
#include <memory>
#include <mutex>
#include <ostream>
#include <string>
#include <thread>

#include "event_stream.h"
#include "host_session.h"
#include "host_work_queue.h"

namespace httplib {
class Server;
struct Request;
struct Response;
}  // namespace httplib

namespace tav::host {

struct GatewayOptions {
    std::string address = "127.0.0.1";
    int port = 0;             // 0: any free port
    std::string accessToken;  // not empty: every request must carry it
    std::chrono::milliseconds answerTimeout{60000};
    std::size_t maxEventStreams = 64;    // more are refused with 503
    std::string explorerFiles;           // the folder of the swagger-ui-dist package
    std::ostream* requestLog = nullptr;  // not null: one line per request, "GET /path 200 3 ms"
};

// Longer request bodies are refused with 413.
constexpr std::size_t kMaxBodyBytes = 1 << 20;

// The HTTP face of tav-host: the plug-in's routes at their own paths, tav-host's
// control routes under /devhost/ and the plug-in's events as Server-Sent
// Events on /devhost/events. Requests arrive on the server's threads; each is
// handed to the host's thread through the work queue, and its thread waits
// for the answer (504 after answerTimeout; the late answer is then dropped).
// A token, when set, comes as "Authorization: Bearer TOKEN" or "?token=TOKEN".
class HttpGateway {
  public:
    HttpGateway(HostSession& session, HostWorkQueue& queue, EventStream& events, GatewayOptions options);
    HttpGateway(const HttpGateway&) = delete;
    HttpGateway& operator=(const HttpGateway&) = delete;
    ~HttpGateway();

    // Binds the address and port; false when that fails.
    bool Bind();
    int Port() const { return port_; }
    // Serves on a thread of its own until Stop.
    void Start();
    void Stop();

  private:
    void Route();
    void Preflight(const httplib::Request& request, httplib::Response& response);

    HostSession& session_;
    HostWorkQueue& queue_;
    EventStream& events_;
    GatewayOptions options_;
    std::atomic<std::size_t> openStreams_{0};
    std::mutex logMutex_;
    std::unique_ptr<httplib::Server> server_;
    std::thread serving_;
    int port_ = 0;
};

}  // namespace tav::host
