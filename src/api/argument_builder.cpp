#include "api/argument_builder.h"

#include <utility>

#include "api/route.h"
#include "types/type_info.h"

namespace wex {

ApiArgumentBuilder& ApiArgumentBuilder::AddPathArgument(std::string name, std::string description) {
    return AddArgument(std::move(name), std::move(description), ArgumentLocationPath);
}

ApiArgumentBuilder& ApiArgumentBuilder::AddQueryArgument(std::string name, std::string description) {
    return AddArgument(std::move(name), std::move(description), ArgumentLocationQuery);
}

ApiArgumentBuilder& ApiArgumentBuilder::AddArgument(std::string name, std::string description, std::int32_t location) {
    if (function_ == nullptr) {
        return *this;
    }
    const std::size_t index = named_++;
    if (index >= function_->arguments.size()) {
        function_->arguments.resize(index + 1);
    }
    function_->arguments[index].name = std::move(name);
    function_->arguments[index].description = std::move(description);
    if (index >= route_->argumentLocations.size()) {
        route_->argumentLocations.resize(index + 1, ArgumentLocationAnywhere);
    }
    route_->argumentLocations[index] = location;
    return *this;
}

}  // namespace wex
