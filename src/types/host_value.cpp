#include "types/host_value.h"

#include <cstdlib>
#include <cstring>
#include <new>
#include <unordered_set>
#include <utility>
#include <vector>

#include "diagnostics/format_message.h"
#include "types/native_conversion.h"
#include "types/registry.h"

namespace wex {

namespace {

// Each array of items or members that BindingToHostValue allocates starts with
// this header, hidden before the first item, so that releasing a value of any
// depth chains the arrays still to free through the arrays themselves.
struct alignas(16) HostArrayHeader {
    HostArrayHeader* pendingNext;
    std::uint32_t tag;
    std::uint32_t count;
};

HostArrayHeader* HeaderOf(const void* items) {
    return static_cast<HostArrayHeader*>(const_cast<void*>(items)) - 1;
}

// Zeroed items after a header; null when memory runs out.
void* AllocateItems(std::uint32_t tag, std::uint32_t count, std::size_t itemSize) {
    void* memory = std::calloc(1, sizeof(HostArrayHeader) + std::size_t{count} * itemSize);
    if (memory == nullptr) {
        return nullptr;
    }
    auto* header = new (memory) HostArrayHeader{nullptr, tag, count};
    return header + 1;
}

// A copy with a zero byte after it; null when memory runs out.
char* CopyBytes(const void* bytes, std::size_t size) {
    auto* copy = static_cast<char*>(std::malloc(size + 1));
    if (copy != nullptr) {
        if (size != 0) {
            std::memcpy(copy, bytes, size);
        }
        copy[size] = '\0';
    }
    return copy;
}

void SetReference(HostValue& value, std::uint32_t tag, const void* data, std::size_t length) {
    value.tag = tag;
    value.payload.ref.data = data;
    value.payload.ref.length = static_cast<std::uint32_t>(length);
}

using HostTargets = std::vector<std::pair<const BindingProperty*, HostValue*>>;

// Fills to from from; containers get their items allocated, zeroed, and queued
// to be filled. False when memory runs out, leaving to releasable.
bool FillHostValue(const BindingProperty& from, HostValue& to, const BindingTypeRegistry* registry,
                   HostTargets& pending) {
    switch (from.Kind()) {
        case BindingPropertyKind::Empty:
            to.tag = HostValueNone;
            return true;
        case BindingPropertyKind::Bool:
            to.tag = HostValueBool;
            to.payload.boolean = from.ToBool() ? 1 : 0;
            return true;
        case BindingPropertyKind::Signed:
            to.tag = HostValueSigned;
            to.payload.integer = from.AsInt64();
            return true;
        case BindingPropertyKind::Unsigned:
            to.tag = HostValueUnsigned;
            to.payload.natural = from.AsUnsigned();
            return true;
        case BindingPropertyKind::Float:
            to.tag = HostValueDouble;
            to.payload.real = from.AsDouble();
            return true;
        case BindingPropertyKind::String:
        case BindingPropertyKind::Blob: {
            const bool isString = from.Kind() == BindingPropertyKind::String;
            const void* bytes = isString ? static_cast<const void*>(from.AsString().data()) : from.AsBlob().data();
            char* copy = CopyBytes(bytes, from.Size());
            if (copy == nullptr) {
                return false;
            }
            SetReference(to, isString ? HostValueOwnedString : HostValueOwnedBytes, copy, from.Size());
            return true;
        }
        case BindingPropertyKind::Enum: {
            const auto name =
                registry != nullptr ? registry->EnumValueName(from.EnumTypeId(), from.EnumValue()) : std::nullopt;
            if (!name) {
                to.tag = HostValueSigned;
                to.payload.integer = from.EnumValue();
                return true;
            }
            char* copy = CopyBytes(name->data(), name->size());
            if (copy == nullptr) {
                return false;
            }
            SetReference(to, HostValueOwnedString, copy, name->size());
            return true;
        }
        case BindingPropertyKind::Collection: {
            const auto elements = from.Elements();
            const auto count = static_cast<std::uint32_t>(elements.size());
            auto* items = static_cast<HostValue*>(AllocateItems(HostValueArray, count, sizeof(HostValue)));
            if (items == nullptr) {
                return false;
            }
            SetReference(to, HostValueArray, items, count);
            for (std::uint32_t index = 0; index < count; ++index) {
                pending.emplace_back(&elements[index], &items[index]);
            }
            return true;
        }
        case BindingPropertyKind::Structure: {
            const auto count = static_cast<std::uint32_t>(from.Size());
            auto* members =
                static_cast<HostObjectMember*>(AllocateItems(HostValueObject, count, sizeof(HostObjectMember)));
            if (members == nullptr) {
                return false;
            }
            SetReference(to, HostValueObject, members, count);
            HostObjectMember* member = members;
            for (const BindingMember source : from.Members()) {
                char* name = CopyBytes(source.name.data(), source.name.size());
                if (name == nullptr) {
                    return false;
                }
                member->name = name;
                member->ownsName = 1;
                pending.emplace_back(&source.value, &member->value);
                ++member;
            }
            return true;
        }
    }
    return true;
}

using BindingTargets = std::vector<std::pair<const HostValue*, BindingProperty*>>;

// Fills to, an empty node, from from; containers get empty children, queued
// to be filled. False for a tag without meaning or a container met before.
bool FillBinding(const HostValue& from, BindingProperty& to, std::unordered_set<const void*>& containersSeen,
                 BindingTargets& pending) {
    const void* data = from.payload.ref.data;
    const std::uint32_t length = from.payload.ref.length;
    switch (from.tag) {
        case HostValueNone:
            return true;
        case HostValueBool:
            to.SetBool(from.payload.boolean != 0);
            return true;
        case HostValueSigned:
            to.SetSigned(from.payload.integer);
            return true;
        case HostValueUnsigned:
            to.SetUnsigned(from.payload.natural);
            return true;
        case HostValueDouble:
            to.SetFloat(from.payload.real);
            return true;
        case HostValueBorrowedString:
        case HostValueOwnedString:
            to.SetString(static_cast<const char*>(data));
            return true;
        case HostValueBorrowedBytes:
        case HostValueOwnedBytes:
            to.SetBlob(data != nullptr ? std::span(static_cast<const std::uint8_t*>(data), length)
                                       : std::span<const std::uint8_t>());
            return true;
        case HostValueArray: {
            to.MakeCollection();
            const auto* items = static_cast<const HostValue*>(data);
            const std::uint32_t count = items != nullptr ? length : 0;
            if (count == 0) {
                return true;
            }
            if (!containersSeen.insert(data).second) {
                return false;
            }
            to.At(count - 1);
            for (std::uint32_t index = 0; index < count; ++index) {
                pending.emplace_back(&items[index], &to.At(index));
            }
            return true;
        }
        case HostValueObject: {
            to.MakeStructure();
            const auto* members = static_cast<const HostObjectMember*>(data);
            const std::uint32_t count = members != nullptr ? length : 0;
            if (count == 0) {
                return true;
            }
            if (!containersSeen.insert(data).second) {
                return false;
            }
            const auto nameOf = [members](std::uint32_t index) {
                return members[index].name != nullptr ? std::string_view(members[index].name) : std::string_view();
            };
            // All names go in first: later insertions would move the members already queued.
            bool ascending = true;
            for (std::uint32_t index = 0; index < count; ++index) {
                to.Member(nameOf(index));
                ascending = ascending && (index == 0 || nameOf(index - 1) < nameOf(index));
            }
            if (ascending) {
                // As a plug-in's own structures come: the members line up with
                // the values, so no name is looked up again.
                std::uint32_t index = 0;
                for (const BindingMember member : to.Members()) {
                    pending.emplace_back(&members[index++].value, &const_cast<BindingProperty&>(member.value));
                }
                return true;
            }
            // Queued backwards, so a repeated name is filled last from its last value.
            for (std::uint32_t index = count; index-- > 0;) {
                pending.emplace_back(&members[index].value, &to.Member(nameOf(index)));
            }
            return true;
        }
        default:
            return false;
    }
}

}  // namespace

BindingProperty HostValueToBinding(const HostValue& value, std::string_view name) {
    BindingProperty result;
    try {
        BindingTargets pending{{&value, &result}};
        std::unordered_set<const void*> containersSeen;
        while (!pending.empty()) {
            const auto [from, to] = pending.back();
            pending.pop_back();
            // A repeated member name fills its node again.
            to->Reset();
            if (!FillBinding(*from, *to, containersSeen, pending)) {
                result.SetError(FormatMessage(
                    "Couldn't assign value to '%1' of type object because the input is of an incompatible type '%2'.",
                    {name, ""}));
                break;
            }
        }
    } catch (...) {
        FailWithCurrentException(result);
    }
    return result;
}

bool BindingToHostValue(const BindingProperty& value, HostValue& out, const BindingTypeRegistry* registry) {
    out = HostValue{};
    try {
        HostTargets pending{{&value, &out}};
        while (!pending.empty()) {
            const auto [from, to] = pending.back();
            pending.pop_back();
            if (!FillHostValue(*from, *to, registry, pending)) {
                ReleaseHostValue(out);
                return false;
            }
        }
        return true;
    } catch (...) {
        ReleaseHostValue(out);
        return false;
    }
}

void ReleaseHostValue(HostValue& value) noexcept {
    HostArrayHeader* pending = nullptr;
    const auto releaseOrQueue = [&pending](const HostValue& item) {
        const void* data = item.payload.ref.data;
        switch (item.tag) {
            case HostValueOwnedString:
            case HostValueOwnedBytes:
                std::free(const_cast<void*>(data));
                break;
            case HostValueArray:
            case HostValueObject:
                if (data != nullptr) {
                    HostArrayHeader* header = HeaderOf(data);
                    header->pendingNext = pending;
                    pending = header;
                }
                break;
            default:
                break;
        }
    };
    releaseOrQueue(value);
    while (pending != nullptr) {
        HostArrayHeader* header = pending;
        pending = header->pendingNext;
        if (header->tag == HostValueArray) {
            const auto* items = reinterpret_cast<const HostValue*>(header + 1);
            for (std::uint32_t index = 0; index < header->count; ++index) {
                releaseOrQueue(items[index]);
            }
        } else {
            const auto* members = reinterpret_cast<const HostObjectMember*>(header + 1);
            for (std::uint32_t index = 0; index < header->count; ++index) {
                if (members[index].ownsName != 0) {
                    std::free(const_cast<char*>(members[index].name));
                }
                releaseOrQueue(members[index].value);
            }
        }
        std::free(header);
    }
    value = HostValue{};
}

}  // namespace wex
