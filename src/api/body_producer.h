#pragma once

#include <cstdint>

namespace wex {

// The source of a streamed response body. The call context owns it until the
// response takes it over; the host then reads it through the response's
// stream functions and closes it, which destroys it.
class BodyProducer {
  public:
    // Fills at most size bytes of buffer and sets size to the count written;
    // more tells whether bytes remain. False on a read error.
    virtual bool Read(void* buffer, std::uint32_t& size, bool& more) = 0;
    // The expected length of the whole body, a hint.
    virtual std::uint32_t Length() const = 0;
    virtual ~BodyProducer() = default;
};

}  // namespace wex
