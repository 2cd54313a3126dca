#include <limits>

#include "binding/native_conversion.h"
#include "binding/number_text.h"
#include "binding/registry.h"
#include "diagnostics/format_message.h"

namespace wex {

void EnumFromBinding(BindingProperty& status, std::int32_t& out, const BindingProperty& input, std::string_view name,
                     const BindingTypeIdentity& type, const BindingTypeRegistry& registry) {
    if (!status.IsValid()) {
        return;
    }
    const BindingTypeInfo* info = registry.FindType(type.id);
    const std::string_view typeName = info != nullptr ? std::string_view(info->name) : type.DefaultName();
    const auto accept = [&](std::int64_t number) {
        if (info == nullptr || number < std::numeric_limits<std::int32_t>::min() ||
            number > std::numeric_limits<std::int32_t>::max() ||
            !BindingTypeRegistry::IsValidEnumValue(*info, static_cast<std::int32_t>(number))) {
            return false;
        }
        out = static_cast<std::int32_t>(number);
        return true;
    };
    const auto failNotValid = [&](const FormatArgument& value) {
        status.SetError(FormatMessage("%1 is not a valid %2 enumeration value for '%3'.", {value, typeName, name}));
    };
    switch (input.Kind()) {
        case BindingPropertyKind::Empty:
            FailRequired(status, name);
            return;
        case BindingPropertyKind::Signed:
            if (!accept(input.AsInt64())) {
                failNotValid(input.AsInt64());
            }
            return;
        case BindingPropertyKind::Unsigned:
            if (input.AsUnsigned() > std::numeric_limits<std::int32_t>::max() ||
                !accept(static_cast<std::int64_t>(input.AsUnsigned()))) {
                failNotValid(input.AsUnsigned());
            }
            return;
        case BindingPropertyKind::Enum:
            if (!accept(input.EnumValue())) {
                failNotValid(input.EnumValue());
            }
            return;
        case BindingPropertyKind::String: {
            const std::string_view text = input.AsString();
            if (info != nullptr) {
                const auto byName = info->enumValues.find(std::string(text));
                if (byName != info->enumValues.end()) {
                    out = byName->second.value;
                    return;
                }
            }
            std::int64_t number = 0;
            if (ParseSignedText(text, number) != NumberTextResult::Ok || !accept(number)) {
                failNotValid(text);
            }
            return;
        }
        default:
            status.SetError(
                FormatMessage("Couldn't assign value to '%1' of enum type because the input is of an invalid type %2.",
                              {name, BindingPropertyKindName(input.Kind())}));
            return;
    }
}

}  // namespace wex
