#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "binding/failure.h"
#include "binding/maybe_type.h"
#include "binding/property.h"
#include "boundary/boundary.h"
#include "types/native_conversion.h"

namespace wex {

class BindingTypeRegistry;
class PluginBase;

// The positional arguments of a request to the host, each converted to a
// binding value and then to a host value that this object owns and frees.
// Appending stops at the first value that does not convert; Error() then
// holds the conversion's message.
class RequestArguments {
  public:
    explicit RequestArguments(const BindingTypeRegistry& registry) : registry_(registry) {}
    RequestArguments(const RequestArguments&) = delete;
    RequestArguments& operator=(const RequestArguments&) = delete;
    ~RequestArguments();

    // Texts of any kind (literals, views) travel as strings.
    template <class T>
    void Append(const T& value) {
        if (Failed()) {
            return;
        }
        if constexpr (std::is_same_v<T, BindingProperty>) {
            AppendBinding(value);
        } else if constexpr (std::is_convertible_v<const T&, std::string_view>) {
            BindingProperty text;
            text.SetString(std::string_view(value));
            AppendBinding(text);
        } else {
            AppendBinding(ToBinding(value, registry_));
        }
    }

    // A failed value records its message instead.
    void AppendBinding(const BindingProperty& value);

    bool Failed() const { return failed_; }
    const std::string& Error() const { return error_; }
    const HostArgument* Entries() const { return entries_.empty() ? nullptr : entries_.data(); }
    std::uint32_t Count() const { return static_cast<std::uint32_t>(entries_.size()); }

  private:
    void Fail(std::string_view message);

    const BindingTypeRegistry& registry_;
    std::vector<HostArgument> entries_;
    std::string error_;
    bool failed_ = false;
};

// Hands a response back to the side that filled it, through its release
// function, however the reading of it ends.
class ResponseReleaser {
  public:
    explicit ResponseReleaser(HostResponse& response) : response_(response) {}
    ResponseReleaser(const ResponseReleaser&) = delete;
    ResponseReleaser& operator=(const ResponseReleaser&) = delete;
    ~ResponseReleaser() {
        const HostResponseReleaseFunction release = response_.release;
        if (release != nullptr) {
            release(&response_);
        }
    }

  private:
    HostResponse& response_;
};

// The size of every chunk offered to a stream's read function.
inline constexpr std::uint32_t kStreamChunkSize = 4096;

// Reads the streamed body of response into text, chunk by chunk. A chunk that
// comes back short while more is to come means the producer is waiting for
// the host, so yield is called before the next read. The stream is closed on
// every path. False on a read error (a read function that answers false, or
// one that claims more bytes than it was offered).
bool ReadStreamedBody(const HostResponse& response, std::string& text, const std::function<void()>& yield);

// A module's requests to other plug-ins' endpoints, sent through its
// SendRequest slot: method is a HostMethod code, the arguments travel as
// positional host values, and failures carry the fields "method", "url" and
// "error". [host-thread]
class HostRequests {
  public:
    explicit HostRequests(PluginBase& module) : module_(module) {}

    // Sends a request and checks the host's answer, which the caller releases.
    // An argument that does not convert fails with code 400 and sends nothing.
    template <class... Args>
    MaybeType<Failure, void> SendRaw(HostResponse& response, std::uint32_t method, std::string_view url,
                                     const Args&... arguments) {
        RequestArguments encoded(Registry());
        (encoded.Append(arguments), ...);
        return SendEncoded(response, method, url, encoded);
    }

    // Sends a request and answers its value converted to T (unconverted for
    // BindingProperty), or success alone when T is void. A streamed answer is
    // read as JSON text. The response is released on every path.
    template <class T = void, class... Args>
    MaybeType<Failure, T> Request(std::uint32_t method, std::string_view url, const Args&... arguments) {
        RequestArguments encoded(Registry());
        (encoded.Append(arguments), ...);
        if constexpr (std::is_void_v<T>) {
            return RequestWithoutValue(method, url, encoded);
        } else if constexpr (std::is_same_v<T, BindingProperty>) {
            return RequestValue(method, url, encoded);
        } else {
            MaybeType<Failure, BindingProperty> answer = RequestValue(method, url, encoded);
            if (answer.HasFailure()) {
                return std::move(answer).GetFailure();
            }
            MaybeType<Failure, T> value = FromBinding<T>(answer.Value(), "<result>", Registry());
            if (value.HasFailure()) {
                return ConversionFailure(method, url, value.GetFailure().Message());
            }
            return value;
        }
    }

  private:
    const BindingTypeRegistry& Registry() const;
    MaybeType<Failure, void> SendEncoded(HostResponse& response, std::uint32_t method, std::string_view url,
                                         const RequestArguments& arguments);
    MaybeType<Failure, void> RequestWithoutValue(std::uint32_t method, std::string_view url,
                                                 const RequestArguments& arguments);
    MaybeType<Failure, BindingProperty> RequestValue(std::uint32_t method, std::string_view url,
                                                     const RequestArguments& arguments);
    static Failure ConversionFailure(std::uint32_t method, std::string_view url, std::string_view error);

    PluginBase& module_;
};

}  // namespace wex
