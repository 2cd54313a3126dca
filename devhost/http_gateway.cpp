#include "http_gateway.h"

#include <httplib.h>

#include "control_routes.h"

namespace tav::host {

namespace {

constexpr std::size_t kServerThreads = 16;
constexpr std::chrono::milliseconds kEventWait{500};

void Write(httplib::Response& response, const HttpAnswer& answer) {
    response.status = answer.status;
    if (!answer.body.empty()) {
        response.set_content(answer.body, answer.contentType.c_str());
    }
}

bool Authorized(const httplib::Request& request, const std::string& token) {
    return token.empty() || request.get_header_value("Authorization") == "Bearer " + token ||
           request.get_param_value("token") == token;
}

// A request that announces no body by Content-Length or Transfer-Encoding has none (RFC 9112, 6.3), where
// the server library would wait for one until its read timeout and then answer 400. False when reading fails.
bool ReadBody(const httplib::Request& request, const httplib::ContentReader& reader, std::string& body) {
    if (!request.has_header("Content-Length") && !request.has_header("Transfer-Encoding")) {
        return true;
    }
    return reader([&body](const char* data, std::size_t length) {
        body.append(data, length);
        return true;
    });
}

// Streams events from the one published next; comments in between find a reader that has gone.
void StreamEvents(EventStream& events, httplib::Response& response) {
    response.set_header("Cache-Control", "no-cache");
    auto next = std::make_shared<std::uint64_t>(events.Next());
    auto greeted = std::make_shared<bool>(false);
    response.set_chunked_content_provider("text/event-stream",
                                          [&events, next, greeted](std::size_t, httplib::DataSink& sink) {
                                              if (!*greeted) {
                                                  *greeted = true;
                                                  const std::string hello = ": tav-host events\n\n";
                                                  return sink.write(hello.data(), hello.size());
                                              }
                                              std::string text;
                                              if (events.Wait(*next, text, kEventWait)) {
                                                  return sink.write(text.data(), text.size());
                                              }
                                              if (events.Closed()) {
                                                  sink.done();
                                                  return true;
                                              }
                                              const std::string keepAlive = ": keep-alive\n\n";
                                              return sink.write(keepAlive.data(), keepAlive.size());
                                          });
}

}  // namespace

HttpGateway::HttpGateway(HostSession& session, HostWorkQueue& queue, EventStream& events, GatewayOptions options)
    : session_(session),
      queue_(queue),
      events_(events),
      options_(std::move(options)),
      server_(std::make_unique<httplib::Server>()) {
    server_->new_task_queue = [] { return new httplib::ThreadPool(kServerThreads); };
    // The library's default shares the port with any other server that asks the same (SO_REUSEPORT), so a
    // second tav-host on a taken port would take every other request. Reusing the address alone still lets
    // a restarted host bind while the last one's connections linger.
    server_->set_socket_options([](socket_t socket) {
        const int yes = 1;
        setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    });
    Route();
}

HttpGateway::~HttpGateway() {
    Stop();
}

void HttpGateway::Route() {
    const auto handle = [this](const httplib::Request& request, httplib::Response& response, const std::string& body) {
        if (!Authorized(request, options_.accessToken)) {
            Write(response, HttpAnswer::Failure(401,
                                                "This tav-host needs the access token it printed at start, "
                                                "as \"Authorization: Bearer TOKEN\" or \"?token=TOKEN\""));
            return;
        }
        if (request.method == "GET" && request.path == "/devhost/events") {
            StreamEvents(events_, response);
            return;
        }
        const std::string method = request.method;
        const std::string path = request.path;
        const std::string target = request.target;
        const std::string contentType = request.get_header_value("Content-Type");
        HostSession& session = session_;
        const bool control = path.rfind(kControlPrefix, 0) == 0;
        std::future<HttpAnswer> answer = queue_.Post([=, &session] {
            return control ? ServeControl(session, method, path, body)
                           : session.CallRoute(method, target, body, contentType);
        });
        if (answer.wait_for(options_.answerTimeout) != std::future_status::ready) {
            Write(response, HttpAnswer::Failure(504, "The host did not answer in time"));
            return;
        }
        Write(response, answer.get());
    };
    const auto withoutBody = [handle](const httplib::Request& request, httplib::Response& response) {
        handle(request, response, {});
    };
    const auto withBody = [handle](const httplib::Request& request, httplib::Response& response,
                                   const httplib::ContentReader& reader) {
        std::string body;
        if (!ReadBody(request, reader, body)) {
            Write(response, HttpAnswer::Failure(400, "The request's body could not be read"));
            return;
        }
        handle(request, response, body);
    };
    server_->Get(".*", withoutBody);
    server_->Options(".*", withoutBody);
    server_->Post(".*", withBody);
    server_->Put(".*", withBody);
    server_->Delete(".*", withBody);
    server_->Patch(".*", withBody);
}

bool HttpGateway::Bind() {
    if (options_.port == 0) {
        port_ = server_->bind_to_any_port(options_.address);
        return port_ > 0;
    }
    port_ = options_.port;
    return server_->bind_to_port(options_.address, options_.port);
}

void HttpGateway::Start() {
    serving_ = std::thread([this] { server_->listen_after_bind(); });
}

void HttpGateway::Stop() {
    if (serving_.joinable()) {
        server_->stop();
        serving_.join();
    }
}

}  // namespace tav::host
