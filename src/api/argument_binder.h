#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <string_view>

#include "api/api_handler.h"
#include "api/route_table.h"
#include "binding/property.h"
#include "boundary/boundary.h"

namespace wex {

// Binds the arguments of one call into slots, one per argument of the called
// function, from the sources of a request in the dispatcher's order. Every
// step does nothing once the call has failed, so the first failure's message
// is the one that call.result carries.
class ArgumentBinder {
  public:
    ArgumentBinder(ApiCallContext& call, const Route& route, std::span<BindingProperty> slots)
        : call_(call), route_(route), slots_(slots) {}

    // Non-optional bool arguments that hold nothing become false.
    void BindDefaults();
    // Arguments of location 0 or 4, each from the header named by its name in lower case.
    void BindHeaders(const HostRequest& request);
    void BindPathParameters(const std::map<std::string, std::string>& parameters);
    // The text after the first "?" of the path.
    void BindQuery(std::string_view query);
    // The request's argument entries; an unnamed entry is positional, counted
    // after the path parameters.
    void BindDirectArguments(const HostRequest& request, std::size_t pathParameterCount);
    // The body, into the first argument of location 5, by its content type.
    void BindBody(const HostRequest& request);

    // One text value under key ("name" or "name.path.0"), from location.
    void BindText(std::string_view key, std::string_view text, std::int32_t location);

  private:
    std::int32_t LocationOf(std::size_t index) const;
    // The slot that path (segments separated by ".") selects under root; null after a failure.
    BindingProperty* Walk(BindingProperty& root, std::string_view path);
    // Counts the elements that At(index) would append to slot against the
    // request's budget; false, with nothing counted, when they exceed it.
    bool ReserveGrowth(const BindingProperty& slot, std::uint64_t index);
    void BindWhole(std::size_t index, std::string_view text);
    void Fail(std::string message) { call_.result.SetError(message); }
    bool Failed() const { return !call_.result.IsValid(); }

    ApiCallContext& call_;
    const Route& route_;
    std::span<BindingProperty> slots_;
    std::uint64_t grownElements_ = 0;
};

}  // namespace wex
