#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace wex {

struct BindingFunctionInfo;
struct Route;

// Names the arguments of a newly added route's function in order: the n-th
// call describes the handler's n-th argument and sets where requests give it.
// For a function registered before under the same name it does nothing, so
// the first registration's description stands.
class ApiArgumentBuilder {
  public:
    // function is null when the function was registered before.
    ApiArgumentBuilder(BindingFunctionInfo* function, Route& route) : function_(function), route_(&route) {}

    ApiArgumentBuilder& AddPathArgument(std::string name, std::string description);
    ApiArgumentBuilder& AddQueryArgument(std::string name, std::string description);
    // Any ArgumentLocation, for arguments read from a header or the body.
    ApiArgumentBuilder& AddArgument(std::string name, std::string description, std::int32_t location);

  private:
    BindingFunctionInfo* function_;
    Route* route_;
    std::size_t named_ = 0;
};

}  // namespace wex
