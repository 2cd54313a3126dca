#include <array>
#include <vector>

#include "diagnostics/format_message.h"
#include "types/native_conversion.h"
#include "types/registry.h"

namespace wex {

namespace {

const BindingTypeInfo* FindStructure(const BindingTypeIdentity& type, const BindingTypeRegistry& registry) {
    const BindingTypeInfo* info = registry.FindType(type.id);
    return info != nullptr && !info->isEnum ? info : nullptr;
}

// What a field marked omit-when-default needs to hold to be written.
bool HoldsSomething(const BindingProperty& value) {
    switch (value.Kind()) {
        case BindingPropertyKind::Empty:
            return false;
        case BindingPropertyKind::Bool:
        case BindingPropertyKind::Signed:
        case BindingPropertyKind::Unsigned:
        case BindingPropertyKind::Float:
        case BindingPropertyKind::Enum:
            return value.ToBool();
        default:
            return value.Size() != 0;
    }
}

// The member that each field of a structure reads, found in one walk over
// both in name order; the fields are then read in their own order, which
// decides which of several failures is reported.
class FieldMembers {
  public:
    FieldMembers(const BindingTypeInfo& info, const BindingProperty& input) {
        const std::size_t count = info.fields.size();
        if (count > inline_.size()) {
            spilled_.resize(count);
            found_ = spilled_.data();
        }
        BindingMemberSeeker seeker(input);
        for (const std::uint32_t index : info.fieldsByName) {
            found_[index] = seeker.Seek(info.fields[index].name);
        }
    }
    FieldMembers(const FieldMembers&) = delete;
    FieldMembers& operator=(const FieldMembers&) = delete;

    const BindingProperty& operator[](std::size_t index) const {
        return found_[index] != nullptr ? *found_[index] : BindingProperty::EmptyNode();
    }

  private:
    std::array<const BindingProperty*, 32> inline_;
    std::vector<const BindingProperty*> spilled_;
    const BindingProperty** found_ = inline_.data();
};

}  // namespace

void StructureFromBinding(BindingProperty& status, void* out, const BindingProperty& input, std::string_view name,
                          const BindingTypeIdentity& type, const BindingTypeRegistry& registry) {
    if (!status.IsValid()) {
        return;
    }
    const BindingTypeInfo* info = FindStructure(type, registry);
    if (info == nullptr) {
        status.SetError(FormatMessage(
            "Couldn't assign value to '%1' because the input is an unregistered structure or not a structure at all.",
            {name}));
        return;
    }
    if (input.Kind() != BindingPropertyKind::Structure) {
        status.SetError(FormatMessage("Couldn't assign value to '%1' of type %2 because the input not a structure.",
                                      {name, info->name}));
        return;
    }
    const FieldMembers members(*info, input);
    auto* base = static_cast<unsigned char*>(out);
    for (std::size_t index = 0; index < info->fields.size(); ++index) {
        if (!status.IsValid()) {
            return;
        }
        const BindingFieldInfo& field = info->fields[index];
        const BindingProperty& member = members[index];
        if (!member.IsEmpty()) {
            field.converter->FromBinding(status, base + field.offset, member, field.name, registry);
        } else if ((field.flags & BindingFieldFlags::Required) != 0) {
            status.SetError(
                FormatMessage("Couldn't assign value to '%1' of type %2 because the input structure "
                              "doesn't have required field '%3'.",
                              {name, info->name, field.name}));
        }
    }
}

void StructureToBinding(BindingProperty& result, const void* value, const BindingTypeIdentity& type,
                        const BindingTypeRegistry& registry) {
    const BindingTypeInfo* info = FindStructure(type, registry);
    if (info == nullptr) {
        result.SetError("Couldn't convert native value because it's an unregistered structure.");
        return;
    }
    result.Reset();
    result.MarkValid();
    result.MakeStructure();
    const auto* base = static_cast<const unsigned char*>(value);
    for (const BindingFieldInfo& field : info->fields) {
        // Converted in place: the member is its own temporary.
        BindingProperty& member = result.Member(field.name, field.nameHash);
        field.converter->ToBinding(member, base + field.offset, registry);
        if (!member.IsValid()) {
            result.SetError(member.GetError());
            return;
        }
        if ((field.flags & BindingFieldFlags::OmitWhenDefault) != 0 && !HoldsSomething(member)) {
            result.RemoveMember(field.name);
        }
    }
}

}  // namespace wex
