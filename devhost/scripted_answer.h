#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "binding/property.h"
#include "boundary/boundary.h"

namespace tav::host {

// What the host answers to one request of the plug-in.
struct ScriptedAnswer {
    wex::BindingProperty value;  // the result value
    std::string error;           // not empty: the request fails with this text
    std::uint32_t status = 200;
    std::vector<std::string> chunks;  // not empty: the body is streamed in these chunks instead
    bool streamFails = false;         // the read after the last chunk fails

    // The value of JSON text (std::invalid_argument for text that is not JSON).
    static ScriptedAnswer Json(std::string_view json);
    static ScriptedAnswer Failure(std::uint32_t status, std::string error);
    // text streamed in chunks of chunkSize bytes, the last one shorter.
    static ScriptedAnswer Stream(std::string_view text, std::size_t chunkSize, bool failsAtEnd = false);
};

// A body that the host streams to the plug-in through a response's stream
// functions, one scripted chunk per read (cut to the size offered).
class ScriptedStream {
  public:
    ScriptedStream(std::vector<std::string> chunks, bool failsAtEnd)
        : chunks_(std::move(chunks)), failsAtEnd_(failsAtEnd) {}

    std::uint64_t Length() const;
    bool Closed() const { return closed_; }
    std::size_t Reads() const { return reads_; }

    // The functions a response carries, with a ScriptedStream as producer.
    static bool ReadFunction(void* producer, void* buffer, std::uint32_t* size, bool* more) noexcept;
    static void CloseFunction(void* producer) noexcept;

  private:
    bool Read(void* buffer, std::uint32_t& size, bool& more);

    std::vector<std::string> chunks_;
    bool failsAtEnd_;
    std::size_t chunk_ = 0;
    std::size_t offset_ = 0;
    std::size_t reads_ = 0;
    bool closed_ = false;
};

}  // namespace tav::host
