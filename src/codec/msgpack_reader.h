#pragma once

#include <cstddef>
#include <cstdint>

#include "binding/property.h"

namespace wex {

struct MessagePackResult {
    BindingProperty value;  // valid, or failed with the message
    std::size_t consumed;   // bytes read, up to the error when there is one
};

// Reads one MessagePack value, with everything nested in it, and stops there:
// the caller decides whether bytes may follow. Positive fixints become
// "signed", the uint families "unsigned"; map keys must be strings. Input that
// ends inside open containers keeps the items read so far, without an error.
// Nesting is bounded only by memory: the reader keeps its own stack. Throws
// std::bad_alloc when memory runs out.
MessagePackResult ReadMessagePack(const std::uint8_t* data, std::size_t length);

}  // namespace wex
