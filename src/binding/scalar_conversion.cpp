// Bool, integers, floating point, string, blob and object from binding values.
#include <cmath>

#include "binding/conversion_failures.h"
#include "binding/native_conversion.h"
#include "binding/number_text.h"
#include "binding/registry.h"
#include "diagnostics/format_message.h"

namespace wex {

void BoolFromBinding(BindingProperty& status, bool& out, const BindingProperty& input, std::string_view name) {
    if (!status.IsValid()) {
        return;
    }
    switch (input.Kind()) {
        case BindingPropertyKind::Empty:
            FailRequired(status, name);
            return;
        case BindingPropertyKind::Bool:
            out = input.ToBool();
            return;
        case BindingPropertyKind::String: {
            const std::string_view text = input.AsString();
            if (text == "1" || text == "true") {
                out = true;
            } else if (text == "0" || text == "false") {
                out = false;
            } else {
                status.SetError(
                    FormatMessage("Value %1 for '%2' of type bool is in an incorrect format. Options are \"true\", "
                                  "\"false\", \"1\", \"0\".",
                                  {text, name}));
            }
            return;
        }
        default:
            FailInvalidType(status, name, "bool", input);
            return;
    }
}

void SignedFromBinding(BindingProperty& status, std::int64_t& out, const BindingProperty& input, std::string_view name,
                       BindingTypeKind kind, std::int64_t min, std::int64_t max) {
    if (!status.IsValid()) {
        return;
    }
    const std::string_view typeName = BindingTypeKindName(kind);
    std::int64_t value = 0;
    bool inRange = false;
    switch (input.Kind()) {
        case BindingPropertyKind::Empty:
            FailRequired(status, name);
            return;
        case BindingPropertyKind::Signed:
        case BindingPropertyKind::Enum:
            value = input.Kind() == BindingPropertyKind::Enum ? input.EnumValue() : input.AsInt64();
            inRange = value >= min && value <= max;
            break;
        case BindingPropertyKind::Unsigned:
            inRange = input.AsUnsigned() <= static_cast<std::uint64_t>(max);
            value = static_cast<std::int64_t>(input.AsUnsigned());
            break;
        case BindingPropertyKind::Float: {
            // 2^63 itself passes a comparison with the largest int64 as a double, but does not fit.
            const double number = input.AsDouble();
            inRange = number >= static_cast<double>(min) && number <= static_cast<double>(max) && number < 0x1p63;
            value = inRange ? static_cast<std::int64_t>(number) : 0;
            break;
        }
        case BindingPropertyKind::String:
            switch (ParseSignedText(input.AsString(), value)) {
                case NumberTextResult::IncorrectFormat:
                    FailIncorrectFormat(status, input.AsString(), name, typeName);
                    return;
                case NumberTextResult::OutOfRange:
                    break;
                case NumberTextResult::Ok:
                    inRange = value >= min && value <= max;
                    break;
            }
            break;
        default:
            FailInvalidType(status, name, typeName, input);
            return;
    }
    if (!inRange) {
        FailOutOfRange(status, InputValueArgument(input), name, typeName);
        return;
    }
    out = value;
}

void UnsignedFromBinding(BindingProperty& status, std::uint64_t& out, const BindingProperty& input,
                         std::string_view name, BindingTypeKind kind, std::uint64_t max) {
    if (!status.IsValid()) {
        return;
    }
    const std::string_view typeName = BindingTypeKindName(kind);
    std::uint64_t value = 0;
    bool inRange = false;
    switch (input.Kind()) {
        case BindingPropertyKind::Empty:
            FailRequired(status, name);
            return;
        case BindingPropertyKind::Signed:
        case BindingPropertyKind::Enum: {
            const std::int64_t number = input.Kind() == BindingPropertyKind::Enum ? input.EnumValue() : input.AsInt64();
            inRange = number >= 0 && static_cast<std::uint64_t>(number) <= max;
            value = static_cast<std::uint64_t>(number);
            break;
        }
        case BindingPropertyKind::Unsigned:
            value = input.AsUnsigned();
            inRange = value <= max;
            break;
        case BindingPropertyKind::Float: {
            // A NaN is neither negative nor above the bound, yet has no value.
            const double number = input.AsDouble();
            inRange = number >= 0.0 && number <= static_cast<double>(max) && number < 0x1p64;
            value = inRange ? static_cast<std::uint64_t>(number) : 0;
            break;
        }
        case BindingPropertyKind::String:
            switch (ParseUnsignedText(input.AsString(), value)) {
                case NumberTextResult::IncorrectFormat:
                    FailIncorrectFormat(status, input.AsString(), name, typeName);
                    return;
                case NumberTextResult::OutOfRange:
                    break;
                case NumberTextResult::Ok:
                    inRange = value <= max;
                    break;
            }
            break;
        default:
            FailInvalidType(status, name, typeName, input);
            return;
    }
    if (!inRange) {
        FailOutOfRange(status, InputValueArgument(input), name, typeName);
        return;
    }
    out = value;
}

void FloatingFromBinding(BindingProperty& status, double& out, const BindingProperty& input, std::string_view name,
                         BindingTypeKind kind, double largest) {
    if (!status.IsValid()) {
        return;
    }
    const std::string_view typeName = BindingTypeKindName(kind);
    double value = 0.0;
    switch (input.Kind()) {
        case BindingPropertyKind::Empty:
            FailRequired(status, name);
            return;
        case BindingPropertyKind::Signed:
        case BindingPropertyKind::Enum:
            value =
                static_cast<double>(input.Kind() == BindingPropertyKind::Enum ? input.EnumValue() : input.AsInt64());
            break;
        case BindingPropertyKind::Unsigned:
            value = static_cast<double>(input.AsUnsigned());
            break;
        case BindingPropertyKind::Float:
            value = input.AsDouble();
            break;
        case BindingPropertyKind::String:
            switch (ParseDoubleText(input.AsString(), value)) {
                case NumberTextResult::IncorrectFormat:
                    FailIncorrectFormat(status, input.AsString(), name, typeName);
                    return;
                case NumberTextResult::OutOfRange:
                    FailOutOfRange(status, input.AsString(), name, typeName);
                    return;
                case NumberTextResult::Ok:
                    break;
            }
            break;
        default:
            FailInvalidType(status, name, typeName, input);
            return;
    }
    // A NaN is let through.
    if (value < -largest || value > largest) {
        FailOutOfRange(status, InputValueArgument(input), name, typeName);
        return;
    }
    out = value;
}

void StringFromBinding(BindingProperty& status, std::string& out, const BindingProperty& input, std::string_view name,
                       const BindingTypeRegistry& registry) {
    if (!status.IsValid()) {
        return;
    }
    switch (input.Kind()) {
        case BindingPropertyKind::Empty:
            FailRequired(status, name);
            return;
        case BindingPropertyKind::String:
            out = input.AsString();
            return;
        case BindingPropertyKind::Enum:
            if (const auto enumerator = registry.EnumValueName(input.EnumTypeId(), input.EnumValue())) {
                out = *enumerator;
            } else {
                status.SetError(
                    FormatMessage("%1 is not a valid enumeration value for '%2'.", {input.EnumValue(), name}));
            }
            return;
        default:
            status.SetError(FormatMessage("Couldn't assign value to '%1' because the input is not a string.", {name}));
            return;
    }
}

void BlobFromBinding(BindingProperty& status, std::vector<std::uint8_t>& out, const BindingProperty& input,
                     std::string_view name) {
    if (!status.IsValid()) {
        return;
    }
    switch (input.Kind()) {
        case BindingPropertyKind::Empty:
            FailRequired(status, name);
            return;
        case BindingPropertyKind::Blob:
            out.assign(input.AsBlob().begin(), input.AsBlob().end());
            return;
        default:
            FailInvalidType(status, name, "blob", input);
            return;
    }
}

void ObjectFromBinding(BindingProperty& status, BindingProperty& out, const BindingProperty& input) {
    if (status.IsValid()) {
        out = input;
    }
}

}  // namespace wex
