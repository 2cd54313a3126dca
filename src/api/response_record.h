#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "api/api_handler.h"
#include "boundary/boundary.h"

namespace wex {

// The response record as the dispatcher fills it for the host. Every text in
// it is an allocated copy, except the empty text, which is one shared
// constant; ReleaseResponseRecord, set as the record's release function,
// frees them all.

// Clears response and sets its release function.
void ResetResponseRecord(HostResponse& response) noexcept;
// Frees what the dispatcher allocated in response and clears it to zero.
void ReleaseResponseRecord(HostResponse* response) noexcept;

// The error text, owned by the record; a constant text when memory runs out.
void SetResponseError(HostResponse& response, std::string_view message) noexcept;
// Each throws std::bad_alloc, leaving the record releasable.
void SetResponseText(HostResponse& response, std::string_view text);
void SetResponseHeaders(HostResponse& response, const std::map<std::string, std::string>& headers);
// Hands the producer to the host through the record's stream functions.
void SetResponseProducer(HostResponse& response, std::unique_ptr<BodyProducer> producer);

}  // namespace wex
