#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "boundary/boundary.h"

namespace wex {

// The size of every chunk offered to a stream's read function.
inline constexpr std::uint32_t kStreamChunkSize = 4096;

// Reads the streamed body of response into text, chunk by chunk. A chunk that
// comes back short while more is to come means the producer is waiting for
// the host, so yield is called before the next read. The stream is closed on
// every path. False on a read error (a read function that answers false, or
// one that claims more bytes than it was offered).
bool ReadStreamedBody(const HostResponse& response, std::string& text, const std::function<void()>& yield);

}  // namespace wex
