#pragma once

#include <deque>
#include <vector>

#include "api/route_table.h"
#include "boundary/boundary.h"

namespace wex {

class BindingTypeRegistry;
struct BindingFunctionInfo;

// The API table that a module hands the host: one endpoint record per route,
// with its function's description, and the registered types and events.
// Every array is contiguous and chained through its records' next pointers.
// Texts point into the registry's descriptions and the routes, which must
// outlive the table; the table owns everything else.
class PackedApiTable {
  public:
    PackedApiTable() = default;
    ~PackedApiTable();
    PackedApiTable(const PackedApiTable&) = delete;
    PackedApiTable& operator=(const PackedApiTable&) = delete;

    // Builds the table once registration is over; module is the first word
    // of every endpoint context.
    void Build(const BindingTypeRegistry& registry, RouteList routes, void* module);

    const HostApiTable& Table() const { return header_; }

  private:
    // The part of an endpoint record that describes its function.
    HostEndpointRecord DescribeFunction(const BindingTypeRegistry& registry, const BindingFunctionInfo& function);
    void BuildTypes(const BindingTypeRegistry& registry);
    void BuildEvents(const BindingTypeRegistry& registry);
    void BuildEndpoints(const BindingTypeRegistry& registry, RouteList routes, void* module);
    const char* const* KeepTexts(const std::vector<std::string>& texts);

    HostApiTable header_{};
    std::vector<HostEndpointRecord> endpoints_;
    std::vector<HostTypeRecord> types_;
    std::vector<HostEventRecord> events_;
    // Arrays that records point into; a deque keeps their addresses as it grows.
    std::deque<std::vector<HostArgumentRecord>> arguments_;
    std::deque<std::vector<HostLocationRecord>> locations_;
    std::deque<std::vector<HostTextListRecord>> textLists_;
    std::deque<std::vector<HostFieldRecord>> fields_;
    std::deque<std::vector<HostEnumeratorRecord>> enumerators_;
    std::deque<std::vector<const char*>> texts_;
    std::deque<HostEndpointContext> contexts_;
};

}  // namespace wex
