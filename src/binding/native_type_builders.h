#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

#include "binding/native_kind.h"
#include "binding/type_builder.h"
#include "binding/typed_converter.h"

namespace wex {

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

}  // namespace wex
