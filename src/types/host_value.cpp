#include "types/host_value.h"

#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>
#include <span>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

#include "binding/tree_builder.h"
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

// The items or members a container value holds; none where its data is null.
std::uint32_t ItemCount(const HostValue& container) {
    return container.payload.ref.data != nullptr ? container.payload.ref.length : 0;
}

// Turns a host value into the tree builder's events in document order: the
// builder sorts each structure's members once, keeping the last of equal
// names, and finds repeated names without hashing them.
class HostValueReader {
  public:
    explicit HostValueReader(BindingProperty& result) : builder_(result) {}

    // False for a tag without meaning or a container met before.
    bool Read(const HostValue& value) {
        if (!Put(value)) {
            return false;
        }
        while (!open_.empty()) {
            OpenContainer& container = open_.back();
            if (container.next == ItemCount(*container.value)) {
                open_.pop_back();
                builder_.Close();
                continue;
            }
            const std::uint32_t index = container.next++;
            const void* data = container.value->payload.ref.data;
            const HostValue* item = nullptr;
            if (container.value->tag == HostValueObject) {
                const HostObjectMember& member = static_cast<const HostObjectMember*>(data)[index];
                builder_.Key(member.name != nullptr ? std::string_view(member.name) : std::string_view());
                item = &member.value;
            } else {
                item = &static_cast<const HostValue*>(data)[index];
            }
            if (!Put(*item)) {
                return false;
            }
        }
        return true;
    }

  private:
    struct OpenContainer {
        const HostValue* value;
        std::uint32_t next;  // the item or member to read next
    };

    bool Put(const HostValue& from) {
        const void* data = from.payload.ref.data;
        const std::uint32_t length = from.payload.ref.length;
        switch (from.tag) {
            case HostValueNone:
                builder_.NextValue();
                return true;
            case HostValueBool:
                builder_.NextValue().SetBool(from.payload.boolean != 0);
                return true;
            case HostValueSigned:
                builder_.NextValue().SetSigned(from.payload.integer);
                return true;
            case HostValueUnsigned:
                builder_.NextValue().SetUnsigned(from.payload.natural);
                return true;
            case HostValueDouble:
                builder_.NextValue().SetFloat(from.payload.real);
                return true;
            case HostValueBorrowedString:
            case HostValueOwnedString:
                builder_.NextValue().SetString(static_cast<const char*>(data));
                return true;
            case HostValueBorrowedBytes:
            case HostValueOwnedBytes:
                builder_.NextValue().SetBlob(data != nullptr ? std::span(static_cast<const std::uint8_t*>(data), length)
                                                             : std::span<const std::uint8_t>());
                return true;
            case HostValueArray:
            case HostValueObject:
                return Open(from);
            default:
                return false;
        }
    }

    bool Open(const HostValue& container) {
        const std::uint32_t count = ItemCount(container);
        // More elements than a collection can hold are refused before any is read.
        if (count > std::numeric_limits<std::uint32_t>::max() / sizeof(BindingProperty)) {
            throw std::bad_alloc();
        }
        // Copied out first: the records are packed, and a reference may not bind to a field that is not aligned.
        const void* data = container.payload.ref.data;
        if (count != 0 && !containersSeen_.insert(data).second) {
            return false;
        }
        if (container.tag == HostValueArray) {
            builder_.OpenCollection();
        } else {
            builder_.OpenStructure();
        }
        open_.push_back({&container, 0});
        return true;
    }

    BindingTreeBuilder builder_;
    std::vector<OpenContainer> open_;
    std::unordered_set<const void*> containersSeen_;
};

}  // namespace

BindingProperty HostValueToBinding(const HostValue& value, std::string_view name) {
    BindingProperty result;
    try {
        HostValueReader reader(result);
        if (!reader.Read(value)) {
            result.SetError(FormatMessage(
                "Couldn't assign value to '%1' of type object because the input is of an incompatible type '%2'.",
                {name, ""}));
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
