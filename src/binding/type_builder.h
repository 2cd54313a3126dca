#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "binding/type_info.h"

namespace wex {

class BindingConverter;
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

}  // namespace wex
