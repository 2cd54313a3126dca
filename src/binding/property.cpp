#include "binding/property.h"

#include <array>
#include <cstdint>
#include <cmath>
#include <cstdio>
#include <new>
#include <utility>

#include "binding/containers.h"
#include "binding/document.h"
#include "binding/value_text.h"

namespace wex {

BindingProperty::BindingProperty(const BindingProperty& other) {
    AssignFrom(other);
}

BindingProperty::BindingProperty(BindingProperty&& other) {
    if (other.ownsDocument_) {
        std::swap(payload_, other.payload_);
        std::swap(document_, other.document_);
        std::swap(kind_, other.kind_);
        std::swap(valid_, other.valid_);
    } else {
        AssignFrom(other);
        other.Reset();
    }
}

BindingProperty& BindingProperty::operator=(const BindingProperty& other) {
    if (this == &other) {
        return *this;
    }
    if (document_ != nullptr && document_ == other.document_) {
        // other lies in this tree, perhaps below this node: take it out first.
        BindingProperty detached(other);
        return *this = std::move(detached);
    }
    Reset();
    AssignFrom(other);
    return *this;
}

BindingProperty& BindingProperty::operator=(BindingProperty&& other) {
    if (this == &other) {
        return *this;
    }
    if (ownsDocument_ && other.ownsDocument_) {
        std::swap(payload_, other.payload_);
        std::swap(document_, other.document_);
        std::swap(kind_, other.kind_);
        std::swap(valid_, other.valid_);
        other.Reset();
        return *this;
    }
    if (document_ != nullptr && document_ == other.document_) {
        // other lies in this tree: reset it before this node changes the tree.
        BindingProperty detached(other);
        other.Reset();
        return *this = std::move(detached);
    }
    *this = other;
    other.Reset();
    return *this;
}

BindingProperty::~BindingProperty() {
    if (ownsDocument_) {
        delete document_;
    }
}

const BindingProperty& BindingProperty::EmptyNode() {
    static constinit const BindingProperty kEmpty;
    return kEmpty;
}

void BindingProperty::AssignFrom(const BindingProperty& other) {
    try {
        PropertyTree::Copy(other, *this);
    } catch (const std::bad_alloc&) {
        Reset();
        throw;
    }
}

BindingDocument& BindingProperty::Document() {
    if (document_ == nullptr) {
        document_ = new BindingDocument();
    }
    return *document_;
}

// An empty node has nothing to free, and a root keeps a document it has made
// for the value it is about to take.
void BindingProperty::ReleasePayload() noexcept {
    if (ownsDocument_) {
        // The root takes the whole tree with its document, in one sweep.
        delete document_;
        document_ = nullptr;
    } else if (PropertyTree::HasHeapPart(*this)) {
        PropertyTree::Release(*document_, *this);
    }
    kind_ = BindingPropertyKind::Empty;
    payload_.unsignedValue = 0;
}

void BindingProperty::SetString(std::string_view text) {
    // The text may lie in this very tree, so it is interned before the old
    // payload goes, and the document is kept.
    StringEntry* entry = text.empty() ? StringEntry::Empty() : Document().Strings().Intern(text);
    if (PropertyTree::HasHeapPart(*this)) {
        PropertyTree::Release(*document_, *this);
    }
    payload_.string = entry;
    kind_ = BindingPropertyKind::String;
}

void BindingProperty::SetString(const char* text) {
    SetString(text != nullptr ? std::string_view(text) : std::string_view());
}

void BindingProperty::SetBlob(std::span<const std::uint8_t> bytes) {
    // Copied before the reset, as the bytes may lie in this very tree.
    SetBlob(std::vector<std::uint8_t>(bytes.begin(), bytes.end()));
}

void BindingProperty::SetBlob(std::vector<std::uint8_t>&& bytes) {
    Reset();
    payload_.blob = Document().NewBlob(std::move(bytes));
    kind_ = BindingPropertyKind::Blob;
}

std::size_t BindingProperty::Size() const {
    switch (kind_) {
        case BindingPropertyKind::Empty:
            return 0;
        case BindingPropertyKind::String:
            return payload_.string->length;
        case BindingPropertyKind::Blob:
            return payload_.blob->bytes.size();
        case BindingPropertyKind::Collection:
            return payload_.collection->size;
        case BindingPropertyKind::Structure:
            return payload_.structure->size;
        default:
            return 1;
    }
}

const BindingProperty& BindingProperty::At(std::size_t index) const {
    if (kind_ != BindingPropertyKind::Collection || index >= payload_.collection->size) {
        return EmptyNode();
    }
    return payload_.collection->items[index];
}

BindingProperty& BindingProperty::At(std::size_t index) {
    MakeCollection();
    CollectionRecord& elements = *payload_.collection;
    if (index >= elements.size) {
        if (index == SIZE_MAX) {
            throw std::bad_alloc();  // index + 1 elements are more than memory holds, and the count wraps
        }
        elements.Reserve(*document_, index + 1);
        while (elements.size <= index) {
            elements.Append(*document_);
        }
    }
    return elements.items[index];
}

BindingProperty& BindingProperty::Append() {
    MakeCollection();
    return payload_.collection->Append(*document_);
}

const BindingProperty& BindingProperty::Member(std::string_view name) const {
    const BindingProperty* member = kind_ == BindingPropertyKind::Structure ? payload_.structure->Find(name) : nullptr;
    return member != nullptr ? *member : EmptyNode();
}

BindingProperty& BindingProperty::Member(std::string_view name) {
    MakeStructure();
    return payload_.structure->FindOrAdd(*document_, name);
}

BindingProperty& BindingProperty::Member(std::string_view name, std::uint32_t nameHash) {
    MakeStructure();
    return payload_.structure->FindOrAdd(*document_, name, nameHash);
}

BindingMemberSeeker::BindingMemberSeeker(const BindingProperty& structure) {
    const BindingMemberRange members = structure.Members();
    next_ = members.begin();
    end_ = members.end();
}

const BindingProperty* BindingMemberSeeker::Seek(std::string_view name) {
    const std::uint64_t prefix = TextPrefix(name);
    for (; next_ != end_; ++next_) {
        const StringEntry& entry = next_.NameEntry();
        if (entry.prefix != prefix) {
            if (entry.prefix > prefix) {
                return nullptr;
            }
            continue;
        }
        const int order = CompareTiedTexts(entry.View(), name);
        if (order >= 0) {
            // Stays on the member: a field may be asked for twice.
            return order == 0 ? &(*next_).value : nullptr;
        }
    }
    return nullptr;
}

bool BindingProperty::HasMember(std::string_view name) const {
    return kind_ == BindingPropertyKind::Structure && payload_.structure->Find(name) != nullptr;
}

bool BindingProperty::RemoveMember(std::string_view name) {
    return kind_ == BindingPropertyKind::Structure && payload_.structure->Remove(*document_, name);
}

void BindingProperty::BecomeCollection() {
    Reset();
    payload_.collection = CollectionRecord::Create(Document());
    kind_ = BindingPropertyKind::Collection;
}

void BindingProperty::BecomeStructure() {
    Reset();
    payload_.structure = StructureRecord::Create(Document());
    kind_ = BindingPropertyKind::Structure;
}

void BindingProperty::Reserve(std::size_t count) {
    if (kind_ == BindingPropertyKind::Collection) {
        payload_.collection->Reserve(*document_, count);
    }
}

std::span<const BindingProperty> BindingProperty::Elements() const {
    if (kind_ != BindingPropertyKind::Collection) {
        return {};
    }
    return {payload_.collection->items, payload_.collection->size};
}

BindingMemberRange BindingProperty::Members() const {
    if (kind_ != BindingPropertyKind::Structure) {
        return {};
    }
    return {payload_.structure->begin(), payload_.structure->end()};
}

std::int64_t BindingProperty::AsInt64(std::int64_t otherwise) const {
    switch (kind_) {
        case BindingPropertyKind::Signed:
        case BindingPropertyKind::Unsigned:
            return payload_.signedValue;
        case BindingPropertyKind::Float:
            // Out of range, the conversion has no defined result; the bounds keep it defined.
            if (!(std::fabs(payload_.floatValue) < 0x1p63)) {
                return payload_.floatValue > 0 ? INT64_MAX : INT64_MIN;
            }
            return static_cast<std::int64_t>(payload_.floatValue);
        default:
            return otherwise;
    }
}

std::uint64_t BindingProperty::AsUInt64(std::uint64_t otherwise) const {
    if (kind_ == BindingPropertyKind::Float && payload_.floatValue >= 0x1p63) {
        return payload_.floatValue < 0x1p64 ? static_cast<std::uint64_t>(payload_.floatValue) : UINT64_MAX;
    }
    return static_cast<std::uint64_t>(AsInt64(static_cast<std::int64_t>(otherwise)));
}

std::span<const std::uint8_t> BindingProperty::AsBlob() const {
    if (kind_ != BindingPropertyKind::Blob) {
        return {};
    }
    return payload_.blob->bytes;
}

bool BindingProperty::ToBool() const {
    switch (kind_) {
        case BindingPropertyKind::Bool:
            return payload_.boolean;
        case BindingPropertyKind::Signed:
        case BindingPropertyKind::Unsigned:
            return payload_.unsignedValue != 0;
        case BindingPropertyKind::Float:
            return payload_.floatValue != 0.0;
        case BindingPropertyKind::String:
            return AsString() == "true" || AsString() == "1";
        case BindingPropertyKind::Enum:
            return payload_.enumeration.value != 0;
        case BindingPropertyKind::Empty:
            return false;
        default:
            return Size() != 0;
    }
}

std::string BindingProperty::ToString() const {
    switch (kind_) {
        case BindingPropertyKind::Bool:
            return payload_.boolean ? "true" : "false";
        case BindingPropertyKind::Signed:
            return std::to_string(payload_.signedValue);
        case BindingPropertyKind::Unsigned:
            return std::to_string(payload_.unsignedValue);
        case BindingPropertyKind::Float: {
            // "%f" of the largest double takes 316 characters.
            char text[400];
            std::snprintf(text, sizeof text, "%f", payload_.floatValue);
            return text;
        }
        case BindingPropertyKind::String:
            return std::string(AsString());
        case BindingPropertyKind::Blob:
            return EncodeBase64(AsBlob());
        case BindingPropertyKind::Enum:
            return std::to_string(payload_.enumeration.value);
        default:
            return {};
    }
}

void BindingProperty::SetError(std::string_view message) noexcept {
    try {
        // The message may lie in this very tree, which the reset releases.
        std::string text(message);
        Reset();
        if (ownsDocument_) {
            // Even an empty root drops its document: a reader that failed
            // half-way may have left parts of a tree in it.
            delete document_;
            document_ = nullptr;
        }
        valid_ = false;
        Member("error").SetString(text);
    } catch (const std::bad_alloc&) {
        Reset();
        valid_ = false;
    }
}

std::string_view BindingProperty::GetError() const {
    return valid_ ? std::string_view() : Member("error").AsString();
}

std::string_view BindingPropertyKindName(BindingPropertyKind kind) {
    static constexpr std::array<std::string_view, 10> kNames = {"empty",  "bool", "signed", "unsigned",   "float",
                                                                "string", "blob", "enum",   "collection", "structure"};
    const auto index = static_cast<std::size_t>(kind);
    return index < kNames.size() ? kNames[index] : std::string_view();
}

}  // namespace wex
