#include "http_gateway.h"

#include <httplib.h>
#include <strings.h>

#include <condition_variable>
#include <deque>
#include <mutex>

#include "control_routes.h"
#include "journal.h"
#include "web_pages.h"

namespace tav::host {

namespace {

// Connections beside the event streams: requests, and idle ones that the server library keeps open for a
// client's next request.
constexpr std::size_t kRequestConnections = 32;
constexpr std::chrono::milliseconds kEventWait{500};

// When the request being served on this thread began, for its line on the console.
thread_local std::chrono::steady_clock::time_point requestStart;

void Write(httplib::Response& response, const HttpAnswer& answer) {
    response.status = answer.status;
    for (const auto& [name, value] : answer.headers) {
        response.set_header(name.c_str(), value);
    }
    if (!answer.body.empty()) {
        response.set_content(answer.body, answer.contentType.c_str());
    }
}

long long MillisecondsSince(std::chrono::steady_clock::time_point start) {
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start).count();
}

// Pages of this machine's own servers, on any port: "http://localhost:5173", "http://127.0.0.1:3000",
// "http://[::1]:8080".
bool LoopbackOrigin(std::string_view origin) {
    for (std::string_view scheme : {"http://", "https://"}) {
        if (origin.substr(0, scheme.size()) == scheme) {
            origin.remove_prefix(scheme.size());
            const std::size_t colon = origin.rfind(':');
            const std::string_view host =
                colon != std::string_view::npos && origin.back() != ']' ? origin.substr(0, colon) : origin;
            const std::string_view port = origin.substr(host.size());
            const bool numeric = port.find_first_not_of("0123456789", 1) == std::string_view::npos;
            const bool loopback =
                host == "localhost" || host == "[::1]" ||
                (host.substr(0, 4) == "127." && host.find_first_not_of("0123456789.") == std::string_view::npos);
            return loopback && (port.empty() || (port.size() > 1 && numeric));
        }
    }
    return false;
}

std::string MethodList(const std::vector<std::string>& methods) {
    std::string list;
    for (const std::string& method : methods) {
        list += method + ", ";
    }
    return list + "OPTIONS";
}

// The scheme of the Authorization header counts in any letter case (RFC 9110, 11.1).
bool Authorized(const httplib::Request& request, const std::string& token) {
    if (token.empty() || request.get_param_value("token") == token) {
        return true;
    }
    const std::string authorization = request.get_header_value("Authorization");
    const std::size_t space = authorization.find(' ');
    return space != std::string::npos && strcasecmp(authorization.substr(0, space).c_str(), "Bearer") == 0 &&
           authorization.substr(space + 1) == token;
}

// The target without its "token" arguments: the token is the host's, and the plug-in refuses arguments
// that its routes do not name.
std::string WithoutToken(const std::string& target) {
    const std::size_t query = target.find('?');
    if (query == std::string::npos) {
        return target;
    }
    std::string kept;
    for (std::size_t at = query + 1; at <= target.size();) {
        const std::size_t end = std::min(target.find('&', at), target.size());
        const std::string argument = target.substr(at, end - at);
        if (argument.substr(0, argument.find('=')) != "token") {
            kept += (kept.empty() ? "?" : "&") + argument;
        }
        at = end + 1;
    }
    return target.substr(0, query) + kept;
}

// A request that announces no body by Content-Length or Transfer-Encoding has none (RFC 9112, 6.3), where
// the server library would wait for one until its read timeout and then answer 400. False when reading fails
// or the body is longer than kMaxBodyBytes (then tooLarge).
bool ReadBody(const httplib::Request& request, const httplib::ContentReader& reader, std::string& body,
              bool& tooLarge) {
    if (!request.has_header("Content-Length") && !request.has_header("Transfer-Encoding")) {
        return true;
    }
    tooLarge = request.get_header_value<std::uint64_t>("Content-Length") > kMaxBodyBytes;
    return !tooLarge && reader([&body, &tooLarge](const char* data, std::size_t length) {
        tooLarge = length > kMaxBodyBytes - body.size();
        body.append(data, tooLarge ? 0 : length);
        return !tooLarge;
    });
}

// A reader of the event stream. Its place is given back when the stream's provider is dropped, which the
// server library does when the connection ends.
struct StreamReader {
    StreamReader(std::atomic<std::size_t>& open, std::uint64_t next) : open(open), next(next) {}
    ~StreamReader() { --open; }

    std::atomic<std::size_t>& open;
    std::uint64_t next;
    bool greeted = false;
};

// Streams events from the one published next; comments in between find a reader that has gone.
void StreamEvents(EventStream& events, std::shared_ptr<StreamReader> reader, httplib::Response& response) {
    response.set_header("Cache-Control", "no-cache");
    response.set_chunked_content_provider("text/event-stream", [&events, reader](std::size_t, httplib::DataSink& sink) {
        if (!reader->greeted) {
            reader->greeted = true;
            const std::string hello = ": tav-host events\n\n";
            return sink.write(hello.data(), hello.size());
        }
        std::string text;
        if (events.Wait(reader->next, text, kEventWait)) {
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

// Runs each connection on a thread of its own, so that event streams, which hold theirs for as long as
// their reader stays, never leave a request waiting for a thread. Threads start as connections need them,
// up to limit, and stay for later connections; while limit connections are open, the listener waits
// before it accepts another.
class ConnectionThreads : public httplib::TaskQueue {
  public:
    explicit ConnectionThreads(std::size_t limit) : limit_(limit) {}

    void enqueue(std::function<void()> connection) override {
        std::unique_lock lock(mutex_);
        freed_.wait(lock, [this] { return open_ < limit_; });
        connections_.push_back(std::move(connection));
        ++open_;
        if (idle_ < connections_.size()) {
            threads_.emplace_back([this] { Serve(); });
        } else {
            queued_.notify_one();
        }
    }

    // The server library calls this from its listening thread, after the last enqueue.
    void shutdown() override {
        {
            std::lock_guard lock(mutex_);
            stopping_ = true;
        }
        queued_.notify_all();
        for (std::thread& thread : threads_) {
            thread.join();
        }
    }

  private:
    void Serve() {
        std::unique_lock lock(mutex_);
        while (true) {
            ++idle_;
            queued_.wait(lock, [this] { return !connections_.empty() || stopping_; });
            --idle_;
            if (connections_.empty()) {
                return;
            }
            std::function<void()> connection = std::move(connections_.front());
            connections_.pop_front();
            lock.unlock();
            connection();
            lock.lock();
            --open_;
            freed_.notify_one();
        }
    }

    const std::size_t limit_;
    std::mutex mutex_;
    std::condition_variable queued_;
    std::condition_variable freed_;
    std::deque<std::function<void()>> connections_;
    std::vector<std::thread> threads_;
    std::size_t open_ = 0;  // queued or being served
    std::size_t idle_ = 0;  // threads waiting for a connection
    bool stopping_ = false;
};

}  // namespace

HttpGateway::HttpGateway(HostSession& session, HostWorkQueue& queue, EventStream& events, GatewayOptions options)
    : session_(session),
      queue_(queue),
      events_(events),
      options_(std::move(options)),
      server_(std::make_unique<httplib::Server>()) {
    server_->set_payload_max_length(kMaxBodyBytes);
    // An answer goes out in more than one write; held back for the client's delayed acknowledgement, each
    // small answer would take 40 ms.
    server_->set_tcp_nodelay(true);
    server_->new_task_queue = [this] { return new ConnectionThreads(options_.maxEventStreams + kRequestConnections); };
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
    server_->set_pre_routing_handler([](const httplib::Request&, httplib::Response&) {
        requestStart = std::chrono::steady_clock::now();
        return httplib::Server::HandlerResponse::Unhandled;
    });
    server_->set_post_routing_handler([](const httplib::Request& request, httplib::Response& response) {
        const std::string origin = request.get_header_value("Origin");
        if (LoopbackOrigin(origin)) {
            response.set_header("Access-Control-Allow-Origin", origin);
            response.set_header("Access-Control-Expose-Headers", "Allow");
            response.set_header("Vary", "Origin");
        }
    });
    server_->set_logger([this](const httplib::Request& request, const httplib::Response& response) {
        if (options_.requestLog != nullptr) {
            std::lock_guard lock(logMutex_);
            *options_.requestLog << request.method << ' ' << request.path << ' ' << response.status << ' '
                                 << MillisecondsSince(requestStart) << " ms" << std::endl;
        }
    });
    const auto handle = [this](const httplib::Request& request, httplib::Response& response, const std::string& body) {
        if (request.method == "OPTIONS") {
            Preflight(request, response);
            return;
        }
        // The pages hold no state, and a browser asks for their files without the token.
        if (request.method == "GET" || request.method == "HEAD") {
            if (std::optional<HttpAnswer> page = ServePage(request.path, options_.explorerFiles)) {
                Write(response, *page);
                return;
            }
        }
        if (!Authorized(request, options_.accessToken)) {
            Write(response, HttpAnswer::Failure(401,
                                                "This tav-host needs the access token it printed at start, "
                                                "as \"Authorization: Bearer TOKEN\" or \"?token=TOKEN\""));
            return;
        }
        if (request.method == "GET" && request.path == "/devhost/events") {
            if (openStreams_.fetch_add(1) >= options_.maxEventStreams) {
                --openStreams_;
                Write(response,
                      HttpAnswer::Failure(503, "tav-host serves at most " + std::to_string(options_.maxEventStreams) +
                                                   " event streams at once; close one to open another"));
                return;
            }
            StreamEvents(events_, std::make_shared<StreamReader>(openStreams_, events_.Next()), response);
            return;
        }
        const std::string method = request.method;
        const std::string path = request.path;
        const std::string target = options_.accessToken.empty() ? request.target : WithoutToken(request.target);
        const std::string contentType = request.get_header_value("Content-Type");
        HostSession& session = session_;
        const bool control = path.rfind(kControlPrefix, 0) == 0;
        std::future<HttpAnswer> answer = queue_.Post([=, &session] {
            return control ? ServeControl(session, method, target, body)
                           : session.CallRoute(method, target, body, contentType);
        });
        const HttpAnswer written = answer.wait_for(options_.answerTimeout) == std::future_status::ready
                                       ? answer.get()
                                       : HttpAnswer::Failure(504, "The host did not answer in time");
        Write(response, written);
        // Reads of tav-host's own state would drown what the plug-in did, and clearing the journal leaves it
        // empty.
        if (!control || (method != "GET" && path != "/devhost/journal")) {
            session_.Host().HostJournal().Add(
                "http",
                "http " + method + " " + path + " -> " + std::to_string(written.status) + " in " +
                    std::to_string(MillisecondsSince(requestStart)) + " ms",
                Shortened(target + (body.empty() ? "" : " " + body), 1024) + " -> " + Shortened(written.body, 1024));
        }
    };
    const auto withoutBody = [handle](const httplib::Request& request, httplib::Response& response) {
        handle(request, response, {});
    };
    const auto withBody = [handle](const httplib::Request& request, httplib::Response& response,
                                   const httplib::ContentReader& reader) {
        std::string body;
        bool tooLarge = false;
        if (!ReadBody(request, reader, body, tooLarge)) {
            if (tooLarge) {
                // What is left of the body is not read, so the connection cannot serve another request.
                if (request.get_header_value("Connection") != "close") {
                    response.set_header("Connection", "close");
                }
                Write(response, HttpAnswer::Failure(413, "tav-host takes request bodies of at most " +
                                                             std::to_string(kMaxBodyBytes) + " bytes"));
                return;
            }
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

// Answers OPTIONS, with or without a cross-origin preflight, from the methods that the path takes; the
// browser asks without the token.
void HttpGateway::Preflight(const httplib::Request& request, httplib::Response& response) {
    const std::string path = request.path;
    HostSession& session = session_;
    std::future<HttpAnswer> methods = queue_.Post([path, &session] {
        const std::vector<std::string> allowed =
            path.rfind(kControlPrefix, 0) == 0 ? ControlMethods(path) : session.Host().AllowedMethods(path);
        if (allowed.empty()) {
            return HttpAnswer::Failure(404, "No route takes " + path);
        }
        HttpAnswer answer = HttpAnswer::Json("", 204);
        answer.headers.emplace_back("Allow", MethodList(allowed));
        return answer;
    });
    HttpAnswer answer = methods.wait_for(options_.answerTimeout) == std::future_status::ready
                            ? methods.get()
                            : HttpAnswer::Failure(504, "The host did not answer in time");
    if (answer.status == 204 && LoopbackOrigin(request.get_header_value("Origin"))) {
        const std::string headers = request.get_header_value("Access-Control-Request-Headers");
        answer.headers.emplace_back("Access-Control-Allow-Methods", answer.headers.front().second);
        answer.headers.emplace_back("Access-Control-Allow-Headers",
                                    headers.empty() ? "Content-Type, Authorization" : headers);
        answer.headers.emplace_back("Access-Control-Max-Age", "600");
    }
    Write(response, answer);
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
