#pragma once

#include <string>
#include <string_view>

#include "plugin/app_module.h"
#include "types/registry.h"

namespace Orvel::Client::Leagues {

// Registers the module's own types: each is named by the module's type
// namespace followed by its base name and carries the module's API tags.
class ModuleTypes {
  public:
    ModuleTypes(const wex::AppModule& module, wex::BindingTypeRegistry& registry)
        : module_(module), registry_(registry) {}

    template <class Structure>
    wex::BindingStructBuilder<Structure> Struct(std::string_view baseName) const {
        return registry_.Struct<Structure>(NameOf(baseName), module_.ApiTags());
    }

    template <class Enumeration>
    wex::BindingEnumBuilder<Enumeration> Enum(std::string_view baseName) const {
        return registry_.Enum<Enumeration>(NameOf(baseName), module_.ApiTags());
    }

  private:
    std::string NameOf(std::string_view baseName) const {
        std::string name = module_.TypeNamespace();
        name += baseName;
        return name;
    }

    const wex::AppModule& module_;
    wex::BindingTypeRegistry& registry_;
};

}  // namespace Orvel::Client::Leagues
