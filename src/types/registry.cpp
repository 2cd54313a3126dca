#include "types/registry.h"

#include <algorithm>
#include <array>
#include <mutex>
#include <utility>

#include "binding/fnv1a.h"
#include "types/type_info.h"

namespace wex {

namespace {

template <class Map, class Record>
std::pair<Record*, bool> InsertFirst(Map& map, Record record) {
    std::string name = record.name;
    auto [at, inserted] = map.try_emplace(std::move(name), nullptr);
    if (inserted) {
        at->second = std::make_unique<Record>(std::move(record));
    }
    return {at->second.get(), inserted};
}

template <class Record>
using RecordsByName = std::map<std::string, std::unique_ptr<Record>, std::less<>>;

template <class Record>
const Record* Find(const RecordsByName<Record>& map, std::string_view name) {
    const auto at = map.find(name);
    return at != map.end() ? at->second.get() : nullptr;
}

template <class Record>
std::vector<const Record*> Snapshot(const RecordsByName<Record>& map) {
    std::vector<const Record*> records;
    records.reserve(map.size());
    for (const auto& [name, record] : map) {
        records.push_back(record.get());
    }
    return records;
}

}  // namespace

BindingTypeBuilder BindingTypeRegistry::BeginType(std::uint32_t size, std::string name,
                                                  const BindingTypeIdentity& identity, bool isEnum) {
    std::lock_guard lock(mutex_);
    auto [at, inserted] = types_.try_emplace(name, nullptr);
    if (!inserted) {
        return BindingTypeBuilder(*this, *at->second, false);
    }
    auto type = std::make_unique<BindingTypeInfo>();
    type->size = size;
    type->isEnum = isEnum;
    type->name = std::move(name);
    type->identity = &identity;
    type->registry = this;
    if (!identity.IsReserved()) {
        typesById_.try_emplace(identity.id, type.get());
    }
    at->second = std::move(type);
    return BindingTypeBuilder(*this, *at->second, true);
}

std::pair<BindingFunctionInfo*, bool> BindingTypeRegistry::AddFunction(BindingFunctionInfo function) {
    std::lock_guard lock(mutex_);
    return InsertFirst(functions_, std::move(function));
}

std::pair<const BindingEventInfo*, bool> BindingTypeRegistry::AddEvent(BindingEventInfo event) {
    std::lock_guard lock(mutex_);
    return InsertFirst(events_, std::move(event));
}

const BindingTypeInfo* BindingTypeRegistry::FindType(std::uint32_t identifier) const {
    std::lock_guard lock(mutex_);
    const auto at = typesById_.find(identifier);
    return at != typesById_.end() ? at->second : nullptr;
}

const BindingTypeInfo* BindingTypeRegistry::FindType(std::string_view name) const {
    std::lock_guard lock(mutex_);
    return Find(types_, name);
}

const BindingFunctionInfo* BindingTypeRegistry::FindFunction(std::string_view name) const {
    std::lock_guard lock(mutex_);
    return Find(functions_, name);
}

const BindingEventInfo* BindingTypeRegistry::FindEvent(std::string_view name) const {
    std::lock_guard lock(mutex_);
    return Find(events_, name);
}

std::vector<const BindingTypeInfo*> BindingTypeRegistry::Types() const {
    std::lock_guard lock(mutex_);
    return Snapshot(types_);
}

std::vector<const BindingFunctionInfo*> BindingTypeRegistry::Functions() const {
    std::lock_guard lock(mutex_);
    return Snapshot(functions_);
}

std::vector<const BindingEventInfo*> BindingTypeRegistry::Events() const {
    std::lock_guard lock(mutex_);
    return Snapshot(events_);
}

bool BindingTypeRegistry::IsValidEnumValue(const BindingTypeInfo& type, std::int32_t value) {
    return std::any_of(type.enumValues.begin(), type.enumValues.end(),
                       [value](const auto& entry) { return entry.second.value == value; });
}

std::optional<std::string_view> BindingTypeRegistry::EnumValueName(std::uint32_t identifier, std::int32_t value) const {
    const BindingTypeInfo* type = FindType(identifier);
    if (type == nullptr) {
        return std::nullopt;
    }
    for (const auto& [name, enumerator] : type->enumValues) {
        if (enumerator.value == value) {
            return std::string_view(name);
        }
    }
    return std::nullopt;
}

BindingTypeBuilder& BindingTypeBuilder::AddField(std::string name, std::string description, std::uint32_t offset,
                                                 BindingTypeIdentifier type, std::uint32_t flags,
                                                 const BindingConverter& converter, bool optional) {
    if (isNew_) {
        std::lock_guard lock(registry_->mutex_);
        const std::uint32_t nameHash = Fnv1a32(name);
        const auto index = static_cast<std::uint32_t>(type_->fields.size());
        type_->fields.push_back(
            {std::move(name), nameHash, std::move(description), offset, type, flags, &converter, optional});
        std::vector<std::uint32_t>& byName = type_->fieldsByName;
        const std::string& added = type_->fields.back().name;
        byName.insert(std::upper_bound(byName.begin(), byName.end(), index,
                                       [this, &added](std::uint32_t, std::uint32_t other) {
                                           return added < type_->fields[other].name;
                                       }),
                      index);
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
