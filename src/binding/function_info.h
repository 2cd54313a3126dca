#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "binding/type_info.h"

namespace wex {

class ApiFunctionHandler;
class BindingTypeRegistry;

struct BindingArgumentInfo {
    std::string name;
    std::string description;
    bool optional = false;
    BindingTypeIdentifier type;
    std::int32_t location = 0;  // where a request may give it: 0 anywhere, 1 query, 2 path, 4 header, 5 body
};

// A function of the module's local API, as registered with its route.
struct BindingFunctionInfo {
    std::string name;
    std::string nameSpace;
    std::string description;
    std::string help;
    std::vector<BindingArgumentInfo> arguments;
    BindingTypeIdentifier result;
    bool threadSafe = false;
    bool async = false;
    std::vector<std::string> tags;
    // What a request to the function runs; shared by every route of the function.
    std::shared_ptr<const ApiFunctionHandler> handler;
    // The registry that converts its arguments and result.
    const BindingTypeRegistry* registry = nullptr;

    // The index of the argument of exactly that name, or -1.
    std::ptrdiff_t FindArgument(std::string_view argumentName) const {
        for (std::size_t index = 0; index < arguments.size(); ++index) {
            if (arguments[index].name == argumentName) {
                return static_cast<std::ptrdiff_t>(index);
            }
        }
        return -1;
    }
    bool HasTag(std::string_view tag) const {
        for (const std::string& own : tags) {
            if (own == tag) {
                return true;
            }
        }
        return false;
    }
};

}  // namespace wex
