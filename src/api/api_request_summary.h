#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace wex {

class BindingTypeRegistry;

// What a handler that builds its whole response learns of the request.
struct ApiRequestSummary {
    std::uint32_t context = 0;  // the request's context word
    std::int64_t time = 0;      // 100-nanosecond ticks since 1970
    std::string path;           // as the host sent it, query included
    const BindingTypeRegistry* registry = nullptr;
    std::uint32_t method = 0;  // a HostMethod
    std::string methodName;    // for method 8
    std::map<std::string, std::string> headers;
};

}  // namespace wex
