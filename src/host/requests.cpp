#include "host/requests.h"

#include <algorithm>
#include <array>
#include <string>

#include "api/route_table.h"
#include "codec/json_reader.h"
#include "host/plugin_base.h"
#include "types/host_value.h"

namespace wex {

namespace {

// The expected length is only a hint from the other side; a larger one is
// not reserved up front.
constexpr std::uint64_t kMaxReservation = 1 << 20;

// Closes the stream however reading ends.
class StreamCloser {
  public:
    StreamCloser(HostStreamCloseFunction close, void* producer) : close_(close), producer_(producer) {}
    StreamCloser(const StreamCloser&) = delete;
    StreamCloser& operator=(const StreamCloser&) = delete;
    ~StreamCloser() {
        if (close_ != nullptr) {
            close_(producer_);
        }
    }

  private:
    HostStreamCloseFunction close_;
    void* producer_;
};

Failure RequestFailure(std::int32_t code, ConstantText templateText, std::uint32_t method, std::string_view url,
                       std::string_view error) {
    return Failure(code, templateText.View(), {std::string(MethodName(method)), std::string(url), std::string(error)});
}

}  // namespace

RequestArguments::~RequestArguments() {
    for (HostArgument& entry : entries_) {
        HostValue value = entry.value;
        ReleaseHostValue(value);
    }
}

void RequestArguments::Fail(std::string_view message) {
    failed_ = true;
    error_ = message;
}

void RequestArguments::AppendBinding(const BindingProperty& value) {
    if (Failed()) {
        return;
    }
    if (!value.IsValid()) {
        Fail(value.GetError());
        return;
    }
    // Room first, so that a converted value is never left without an owner.
    entries_.push_back(HostArgument{});
    HostValue converted{};
    if (!BindingToHostValue(value, converted, &registry_)) {
        entries_.pop_back();
        Fail("Out of memory");
        return;
    }
    entries_.back().value = converted;
}

bool ReadStreamedBody(const HostResponse& response, std::string& text, const std::function<void()>& yield) {
    const HostStreamReadFunction read = response.streamRead;
    void* const producer = response.streamProducer;
    const StreamCloser closer(response.streamClose, producer);
    const std::uint64_t expectedLength = response.expectedStreamLength;
    text.clear();
    text.reserve(static_cast<std::size_t>(std::min(expectedLength, kMaxReservation)));
    std::array<char, kStreamChunkSize> chunk;
    bool more = true;
    while (more) {
        std::uint32_t size = kStreamChunkSize;
        if (!read(producer, chunk.data(), &size, &more) || size > kStreamChunkSize) {
            return false;
        }
        text.append(chunk.data(), size);
        if (size < kStreamChunkSize && more) {
            yield();
        }
    }
    return true;
}

const BindingTypeRegistry& HostRequests::Registry() const {
    return *module_.TypeRegistry();
}

MaybeType<Failure, void> HostRequests::SendEncoded(HostResponse& response, std::uint32_t method, std::string_view url,
                                                   const RequestArguments& arguments) {
    if (arguments.Failed()) {
        return RequestFailure(400, "Request not sent: Error converting parameters for {method} {url}: {error}", method,
                              url, arguments.Error());
    }
    const std::string path(url);
    HostRequest request{};
    request.method = method >= HostMethodDelete && method <= HostMethodOther ? method : std::uint32_t{HostMethodAny};
    request.path = path.c_str();
    request.arguments = arguments.Entries();
    request.argumentCount = arguments.Count();
    request.context = module_.HostContext();
    module_.SendRequest(response, request);
    const char* const error = response.error;
    if (error != nullptr) {
        const std::uint32_t status = response.status;
        return RequestFailure(static_cast<std::int32_t>(status), "Error response for {method} {url}: {error}", method,
                              url, error);
    }
    return {};
}

MaybeType<Failure, void> HostRequests::RequestWithoutValue(std::uint32_t method, std::string_view url,
                                                           const RequestArguments& arguments) {
    HostResponse response{};
    const ResponseReleaser releaser(response);
    return SendEncoded(response, method, url, arguments);
}

MaybeType<Failure, BindingProperty> HostRequests::RequestValue(std::uint32_t method, std::string_view url,
                                                               const RequestArguments& arguments) {
    HostResponse response{};
    const ResponseReleaser releaser(response);
    MaybeType<Failure, void> sent = SendEncoded(response, method, url, arguments);
    if (sent.HasFailure()) {
        return std::move(sent).GetFailure();
    }
    if (response.streamRead != nullptr) {
        std::string text;
        if (!ReadStreamedBody(response, text, [this] { module_.Yield(); })) {
            return RequestFailure(0, "Error reading streamed response for {method} {url}: {error}", method, url,
                                  "Stream read error");
        }
        BindingProperty value = ParseJson(text);
        if (!value.IsValid()) {
            return RequestFailure(0, "Error reading streamed response for {method} {url}: {error}", method, url,
                                  value.GetError());
        }
        return value;
    }
    const HostValue result = response.result;
    BindingProperty value = HostValueToBinding(result, "<result>");
    if (!value.IsValid()) {
        return ConversionFailure(method, url, value.GetError());
    }
    return value;
}

Failure HostRequests::ConversionFailure(std::uint32_t method, std::string_view url, std::string_view error) {
    return RequestFailure(0, "Error converting response for {method} {url}: {error}", method, url, error);
}

}  // namespace wex
