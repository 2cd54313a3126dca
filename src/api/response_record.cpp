#include "api/response_record.h"

#include <cstdlib>
#include <cstring>
#include <new>

#include "types/host_value.h"

namespace wex {

namespace {

const char kEmptyText[] = "";
const char kOutOfMemory[] = "Out of memory";

// A zero-terminated copy on the library's heap.
char* CopyText(std::string_view text) {
    auto* copy = static_cast<char*>(std::malloc(text.size() + 1));
    if (copy == nullptr) {
        throw std::bad_alloc();
    }
    std::memcpy(copy, text.data(), text.size());
    copy[text.size()] = '\0';
    return copy;
}

bool ReadStream(void* producer, void* buffer, std::uint32_t* size, bool* more) noexcept {
    if (producer == nullptr || size == nullptr || more == nullptr) {
        return false;
    }
    try {
        return static_cast<BodyProducer*>(producer)->Read(buffer, *size, *more);
    } catch (...) {
        return false;
    }
}

void CloseStream(void* producer) noexcept {
    delete static_cast<BodyProducer*>(producer);
}

}  // namespace

void ResetResponseRecord(HostResponse& response) noexcept {
    response = HostResponse{};
    response.release = &ReleaseResponseRecord;
}

void ReleaseResponseRecord(HostResponse* response) noexcept {
    if (response == nullptr) {
        return;
    }
    ReleaseHostValue(response->result);
    if (response->errorFlag != 0) {
        std::free(const_cast<char*>(response->error));
    }
    if (response->text != kEmptyText) {
        std::free(const_cast<char*>(response->text));
    }
    if (response->headers != nullptr) {
        for (std::uint32_t index = 0; index < response->headerCount; ++index) {
            std::free(const_cast<char*>(response->headers[index].name));
            std::free(const_cast<char*>(response->headers[index].value));
        }
        std::free(const_cast<HostHeader*>(response->headers));
    }
    *response = HostResponse{};
}

void SetResponseError(HostResponse& response, std::string_view message) noexcept {
    if (response.errorFlag != 0) {
        std::free(const_cast<char*>(response.error));
    }
    try {
        response.error = CopyText(message);
        response.errorFlag = 1;
    } catch (const std::bad_alloc&) {
        response.error = kOutOfMemory;
        response.errorFlag = 0;
    }
}

void SetResponseText(HostResponse& response, std::string_view text) {
    response.text = text.empty() ? kEmptyText : CopyText(text);
}

void SetResponseHeaders(HostResponse& response, const std::map<std::string, std::string>& headers) {
    if (headers.empty()) {
        return;
    }
    auto* pairs = static_cast<HostHeader*>(std::calloc(headers.size(), sizeof(HostHeader)));
    if (pairs == nullptr) {
        throw std::bad_alloc();
    }
    response.headers = pairs;
    // Counted as they are filled, so a record left by a failed copy releases cleanly.
    for (const auto& [name, value] : headers) {
        HostHeader& pair = pairs[response.headerCount++];
        pair.name = CopyText(name);
        pair.value = CopyText(value);
    }
}

void SetResponseProducer(HostResponse& response, std::unique_ptr<BodyProducer> producer) {
    if (producer == nullptr) {
        return;
    }
    response.expectedStreamLength = producer->Length();
    response.streamRead = &ReadStream;
    response.streamClose = &CloseStream;
    response.streamProducer = producer.release();
}

}  // namespace wex
