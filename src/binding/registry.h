#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "binding/event_info.h"
#include "binding/function_info.h"
#include "binding/native_type_builders.h"
#include "binding/type_builder.h"
#include "binding/type_info.h"

namespace wex {

// One module's descriptions of its native types, functions and events.
// Registration happens at start-up; afterwards descriptions do not change, so
// conversions read them without a lock. One mutex guards the maps, held for
// each lookup or insertion only. Descriptions live as long as the registry.
class BindingTypeRegistry {
  public:
    BindingTypeRegistry() = default;
    BindingTypeRegistry(const BindingTypeRegistry&) = delete;
    BindingTypeRegistry& operator=(const BindingTypeRegistry&) = delete;

    // Begins the description of a type, or refers to the one registered under
    // that name before (the builder then adds nothing). A type under the
    // reserved identity is not entered in the index by identifier.
    BindingTypeBuilder BeginType(std::uint32_t size, std::string name, const BindingTypeIdentity& identity,
                                 bool isEnum);

    template <class Structure>
    BindingStructBuilder<Structure> Struct(std::string name, const std::vector<std::string>& tags = {}) {
        BindingTypeBuilder builder =
            BeginType(sizeof(Structure), std::move(name), BindingTypeIdentity::Of<Structure>(), false);
        return BindingStructBuilder<Structure>(builder.AddTags(tags));
    }

    template <class Enumeration>
    BindingEnumBuilder<Enumeration> Enum(std::string name, const std::vector<std::string>& tags = {}) {
        BindingTypeBuilder builder =
            BeginType(sizeof(Enumeration), std::move(name), BindingTypeIdentity::Of<Enumeration>(), true);
        return BindingEnumBuilder<Enumeration>(builder.AddTags(tags));
    }

    // Each keeps the first record of a name and answers whether this one was new.
    // A new function record is completed by its route's argument builder while
    // registration lasts, so it comes back writable.
    std::pair<BindingFunctionInfo*, bool> AddFunction(BindingFunctionInfo function);
    std::pair<const BindingEventInfo*, bool> AddEvent(BindingEventInfo event);

    // Null when there is none.
    const BindingTypeInfo* FindType(std::uint32_t identifier) const;
    const BindingTypeInfo* FindType(std::string_view name) const;
    const BindingFunctionInfo* FindFunction(std::string_view name) const;
    const BindingEventInfo* FindEvent(std::string_view name) const;

    // Snapshots, in byte order of the names.
    std::vector<const BindingTypeInfo*> Types() const;
    std::vector<const BindingFunctionInfo*> Functions() const;
    std::vector<const BindingEventInfo*> Events() const;

    static bool IsValidEnumValue(const BindingTypeInfo& type, std::int32_t value);
    // The first name, in byte order, of an enumerator with that value.
    std::optional<std::string_view> EnumValueName(std::uint32_t identifier, std::int32_t value) const;

  private:
    friend class BindingTypeBuilder;

    template <class Record>
    using ByName = std::map<std::string, std::unique_ptr<Record>, std::less<>>;

    mutable std::mutex mutex_;
    ByName<BindingFunctionInfo> functions_;
    ByName<BindingEventInfo> events_;
    ByName<BindingTypeInfo> types_;
    std::unordered_map<std::uint32_t, const BindingTypeInfo*> typesById_;
};

}  // namespace wex
