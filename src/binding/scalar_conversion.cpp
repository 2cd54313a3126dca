// Bool, integers, floating point, string, blob and object from binding values.
#include <cmath>
#include <limits>
#include <type_traits>
#include <utility>

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

namespace {

// Integer is std::int64_t or std::uint64_t, the bounds those of the native width.
template <class Integer>
void ConvertInteger(BindingProperty& status, Integer& out, const BindingProperty& input, std::string_view name,
                    BindingTypeKind kind, Integer min, Integer max) {
    if (!status.IsValid()) {
        return;
    }
    const std::string_view typeName = BindingTypeKindName(kind);
    const auto inBounds = [min, max](auto number) {
        return std::cmp_greater_equal(number, min) && std::cmp_less_equal(number, max);
    };
    Integer value = 0;
    bool inRange = false;
    switch (input.Kind()) {
        case BindingPropertyKind::Empty:
            FailRequired(status, name);
            return;
        case BindingPropertyKind::Signed:
            inRange = inBounds(input.AsInt64());
            value = static_cast<Integer>(input.AsInt64());
            break;
        case BindingPropertyKind::Unsigned:
            inRange = inBounds(input.AsUnsigned());
            value = static_cast<Integer>(input.AsUnsigned());
            break;
        case BindingPropertyKind::Enum:
            inRange = inBounds(input.EnumValue());
            value = static_cast<Integer>(input.EnumValue());
            break;
        case BindingPropertyKind::Float: {
            // The largest 64-bit bounds round up as doubles to 2^63 and 2^64, which
            // do not fit; a NaN fails every comparison.
            const double number = input.AsDouble();
            const double limit = std::ldexp(1.0, std::numeric_limits<Integer>::digits);
            inRange = number >= static_cast<double>(min) && number <= static_cast<double>(max) && number < limit;
            value = inRange ? static_cast<Integer>(number) : 0;
            break;
        }
        case BindingPropertyKind::String: {
            NumberTextResult result;
            if constexpr (std::is_signed_v<Integer>) {
                result = ParseSignedText(input.AsString(), value);
            } else {
                result = ParseUnsignedText(input.AsString(), value);
            }
            if (result == NumberTextResult::IncorrectFormat) {
                FailIncorrectFormat(status, input.AsString(), name, typeName);
                return;
            }
            inRange = result == NumberTextResult::Ok && inBounds(value);
            break;
        }
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

}  // namespace

void IntegerFromBinding(BindingProperty& status, std::int64_t& out, const BindingProperty& input, std::string_view name,
                        BindingTypeKind kind, std::int64_t min, std::int64_t max) {
    ConvertInteger(status, out, input, name, kind, min, max);
}

void IntegerFromBinding(BindingProperty& status, std::uint64_t& out, const BindingProperty& input,
                        std::string_view name, BindingTypeKind kind, std::uint64_t min, std::uint64_t max) {
    ConvertInteger(status, out, input, name, kind, min, max);
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
