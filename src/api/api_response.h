#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>

#include "api/body_producer.h"

namespace wex {

// The answer of a handler that builds a whole response: such a handler takes
// the request's ApiRequestSummary as its first parameter. The body is the
// text, or the producer when there is one.
struct ApiResponse {
    std::uint32_t status = 200;
    std::map<std::string, std::string> headers;
    std::string text;
    std::unique_ptr<BodyProducer> producer;
};

}  // namespace wex
