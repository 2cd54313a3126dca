#include "scripted_answer.h"

#include <algorithm>
#include <cstring>

#include "host_value_json.h"

namespace tav::host {

ScriptedAnswer ScriptedAnswer::Json(std::string_view json) {
    ScriptedAnswer answer;
    answer.value = JsonValue(json);
    return answer;
}

ScriptedAnswer ScriptedAnswer::Failure(std::uint32_t status, std::string error) {
    ScriptedAnswer answer;
    answer.status = status;
    answer.error = std::move(error);
    return answer;
}

ScriptedAnswer ScriptedAnswer::Stream(std::string_view text, std::size_t chunkSize, bool failsAtEnd) {
    ScriptedAnswer answer;
    for (std::size_t at = 0; at < text.size(); at += chunkSize) {
        answer.chunks.emplace_back(text.substr(at, chunkSize));
    }
    answer.streamFails = failsAtEnd;
    return answer;
}

std::uint64_t ScriptedStream::Length() const {
    std::uint64_t length = 0;
    for (const std::string& chunk : chunks_) {
        length += chunk.size();
    }
    return length;
}

bool ScriptedStream::Read(void* buffer, std::uint32_t& size, bool& more) {
    ++reads_;
    if (chunk_ == chunks_.size()) {
        size = 0;
        more = false;
        return !failsAtEnd_;
    }
    const std::string& chunk = chunks_[chunk_];
    const std::size_t count = std::min<std::size_t>(size, chunk.size() - offset_);
    std::memcpy(buffer, chunk.data() + offset_, count);
    size = static_cast<std::uint32_t>(count);
    offset_ += count;
    if (offset_ == chunk.size()) {
        ++chunk_;
        offset_ = 0;
    }
    more = chunk_ < chunks_.size() || failsAtEnd_;
    return true;
}

bool ScriptedStream::ReadFunction(void* producer, void* buffer, std::uint32_t* size, bool* more) noexcept {
    return producer != nullptr && size != nullptr && more != nullptr &&
           static_cast<ScriptedStream*>(producer)->Read(buffer, *size, *more);
}

void ScriptedStream::CloseFunction(void* producer) noexcept {
    if (producer != nullptr) {
        static_cast<ScriptedStream*>(producer)->closed_ = true;
    }
}

}  // namespace tav::host
