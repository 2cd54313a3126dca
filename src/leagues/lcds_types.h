#pragma once

#include <string>

#include "plugin/app_module.h"
#include "types/registry.h"

namespace Orvel::Client::Leagues {

// Registers the server's records under their fixed local names and enters
// each in the module's class-name tables with the server's class name.
class LcdsTypes {
  public:
    LcdsTypes(wex::AppModule& module, wex::BindingTypeRegistry& registry) : module_(module), registry_(registry) {}

    template <class Structure>
    wex::BindingStructBuilder<Structure> Struct(std::string localName, std::string className) const {
        module_.RegisterLcdsClassName(localName, wex::BindingTypeIdentity::Of<Structure>(), std::move(className));
        return registry_.Struct<Structure>(std::move(localName));
    }

    template <class Enumeration>
    wex::BindingEnumBuilder<Enumeration> Enum(std::string localName, std::string className) const {
        module_.RegisterLcdsClassName(localName, wex::BindingTypeIdentity::Of<Enumeration>(), std::move(className));
        return registry_.Enum<Enumeration>(std::move(localName));
    }

  private:
    wex::AppModule& module_;
    wex::BindingTypeRegistry& registry_;
};

// A member of a base record named as a member of the record that extends it,
// so the extension's description can list the inherited fields.
template <class Derived, class Base, class Member>
constexpr Member Derived::*Inherited(Member Base::*member) {
    return member;
}

}  // namespace Orvel::Client::Leagues
