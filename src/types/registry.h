#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <unordered_map>
#include <utility>
#include <vector>

#include "types/native_conversion.h"
#include "types/native_kind.h"
#include "types/type_info.h"

namespace wex {

class BindingTypeRegistry;

// Adds to the description that BindingTypeRegistry::BeginType began. When the
// name was registered before, the builder refers to that description and adds
// nothing to it, so the first registration of a name wins.
class BindingTypeBuilder {
  public:
    BindingTypeBuilder(BindingTypeRegistry& registry, BindingTypeInfo& type, bool isNew)
        : registry_(&registry), type_(&type), isNew_(isNew) {}

    // False when the name was registered before.
    bool IsNew() const { return isNew_; }
    const BindingTypeInfo& Type() const { return *type_; }

    BindingTypeBuilder& AddField(std::string name, std::string description, std::uint32_t offset,
                                 BindingTypeIdentifier type, std::uint32_t flags, const BindingConverter& converter,
                                 bool optional);
    // An enumerator of a name already there takes the new value and description.
    BindingTypeBuilder& AddEnumValue(std::string name, std::int32_t value, std::string description = {});
    BindingTypeBuilder& AddTags(const std::vector<std::string>& tags);
    BindingTypeBuilder& SetNameSpace(std::string nameSpace);
    BindingTypeBuilder& SetDescription(std::string description);

  private:
    BindingTypeRegistry* registry_;
    BindingTypeInfo* type_;
    bool isNew_;
};

// What a field is marked with, combined with "|".
enum class BindingFieldOption : std::uint32_t {
    None = 0,
    OmitWhenDefault = BindingFieldFlags::OmitWhenDefault,  // on output, left out when it holds nothing
    Required = BindingFieldFlags::Required,                // on input, a missing or empty member fails
    Optional = 4,                                          // shown in API descriptions only
};

constexpr BindingFieldOption operator|(BindingFieldOption left, BindingFieldOption right) {
    return static_cast<BindingFieldOption>(static_cast<std::uint32_t>(left) | static_cast<std::uint32_t>(right));
}

// What the builders of structures and enumerations share.
template <class Self>
class BindingNativeTypeBuilder {
  public:
    explicit BindingNativeTypeBuilder(BindingTypeBuilder builder) : builder_(builder) {}

    Self& NameSpace(std::string nameSpace) {
        builder_.SetNameSpace(std::move(nameSpace));
        return static_cast<Self&>(*this);
    }
    Self& Description(std::string description) {
        builder_.SetDescription(std::move(description));
        return static_cast<Self&>(*this);
    }

    const BindingTypeBuilder& Builder() const { return builder_; }

  protected:
    BindingTypeBuilder builder_;
};

// Describes a native structure once, field by field, from member pointers:
//   registry.Struct<LeagueStanding>(ns + "LeagueStanding", tags)
//       .Field("id", &LeagueStanding::id)
//       .Field("wins", &LeagueStanding::wins, BindingFieldOption::OmitWhenDefault, "Ranked wins");
template <class Structure>
class BindingStructBuilder : public BindingNativeTypeBuilder<BindingStructBuilder<Structure>> {
    using Base = BindingNativeTypeBuilder<BindingStructBuilder<Structure>>;
    using Base::builder_;

  public:
    using Base::Base;

    template <class Member>
    BindingStructBuilder& Field(std::string name, Member Structure::*member,
                                BindingFieldOption options = BindingFieldOption::None, std::string description = {}) {
        if (builder_.IsNew()) {
            const auto bits = static_cast<std::uint32_t>(options);
            const std::uint32_t flags = bits & (BindingFieldFlags::OmitWhenDefault | BindingFieldFlags::Required);
            const bool optional = (bits & static_cast<std::uint32_t>(BindingFieldOption::Optional)) != 0;
            builder_.AddField(std::move(name), std::move(description), OffsetOf(member), TypeIdentifierOf<Member>(),
                              flags, ConverterOf<Member>(), optional);
        }
        return *this;
    }

    // A field that Structure inherits from one of its bases, named as its own.
    template <class Member, class Owner>
    requires(std::is_base_of_v<Owner, Structure> && !std::is_same_v<Owner, Structure>) BindingStructBuilder& Field(
        std::string name, Member Owner::*member, BindingFieldOption options = BindingFieldOption::None,
        std::string description = {}) {
        return Field(std::move(name), static_cast<Member Structure::*>(member), options, std::move(description));
    }

  private:
    // Measured on a real object, which every conversion of the type needs anyway.
    template <class Member>
    static std::uint32_t OffsetOf(Member Structure::*member) {
        const Structure probe{};
        return static_cast<std::uint32_t>(reinterpret_cast<const unsigned char*>(&(probe.*member)) -
                                          reinterpret_cast<const unsigned char*>(&probe));
    }
};

// Describes a native enumeration by its enumerators:
//   registry.Enum<LeagueQueueType>(ns + "LeagueQueueType", tags)
//       .Value("SOLO5V5", LeagueQueueType::SOLO5V5);
template <class Enumeration>
class BindingEnumBuilder : public BindingNativeTypeBuilder<BindingEnumBuilder<Enumeration>> {
    using Base = BindingNativeTypeBuilder<BindingEnumBuilder<Enumeration>>;
    using Base::builder_;

  public:
    using Base::Base;

    BindingEnumBuilder& Value(std::string name, Enumeration value, std::string description = {}) {
        if (builder_.IsNew()) {
            builder_.AddEnumValue(std::move(name), static_cast<std::int32_t>(value), std::move(description));
        }
        return *this;
    }
};

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
