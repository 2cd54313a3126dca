#include "host/stream_reading.h"

#include <algorithm>
#include <array>

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

}  // namespace

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

}  // namespace wex
