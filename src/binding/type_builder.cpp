#include "binding/type_builder.h"

#include <mutex>
#include <utility>

#include "binding/fnv1a.h"
#include "binding/registry.h"

namespace wex {

BindingTypeBuilder& BindingTypeBuilder::AddField(std::string name, std::string description, std::uint32_t offset,
                                                 BindingTypeIdentifier type, std::uint32_t flags,
                                                 const BindingConverter& converter, bool optional) {
    if (isNew_) {
        std::lock_guard lock(registry_->mutex_);
        const std::uint32_t nameHash = Fnv1a32(name);
        type_->fields.push_back(
            {std::move(name), nameHash, std::move(description), offset, type, flags, &converter, optional});
    }
    return *this;
}

BindingTypeBuilder& BindingTypeBuilder::AddEnumValue(std::string name, std::int32_t value, std::string description) {
    if (isNew_) {
        std::lock_guard lock(registry_->mutex_);
        BindingEnumValueInfo& enumerator = type_->enumValues[name];
        enumerator = {std::move(name), value, std::move(description), type_};
    }
    return *this;
}

BindingTypeBuilder& BindingTypeBuilder::AddTags(const std::vector<std::string>& tags) {
    if (isNew_) {
        std::lock_guard lock(registry_->mutex_);
        type_->tags.insert(type_->tags.end(), tags.begin(), tags.end());
    }
    return *this;
}

BindingTypeBuilder& BindingTypeBuilder::SetNameSpace(std::string nameSpace) {
    if (isNew_) {
        std::lock_guard lock(registry_->mutex_);
        type_->nameSpace = std::move(nameSpace);
    }
    return *this;
}

BindingTypeBuilder& BindingTypeBuilder::SetDescription(std::string description) {
    if (isNew_) {
        std::lock_guard lock(registry_->mutex_);
        type_->description = std::move(description);
    }
    return *this;
}

}  // namespace wex
