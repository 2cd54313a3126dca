#include "types/native_conversion.h"

#include <cmath>
#include <exception>
#include <limits>
#include <new>
#include <type_traits>
#include <utility>

#include "binding/property.h"
#include "binding/value_text.h"
#include "diagnostics/format_message.h"
#include "types/registry.h"

namespace wex {

// Bool, integers, floating point, string, blob and object from binding values.
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

void FailRequired(BindingProperty& status, std::string_view name) {
    status.SetError(FormatMessage("A value for '%1' is required.", {name}));
}

void FailWithCurrentException(BindingProperty& status) noexcept {
    try {
        throw;
    } catch (const std::bad_alloc&) {
        status.SetError("Out of memory");
    } catch (const std::exception& error) {
        status.SetError(error.what());
    } catch (...) {
        status.SetError("Unknown error");
    }
}

void FailInvalidType(BindingProperty& status, std::string_view name, std::string_view typeName,
                     const BindingProperty& input) {
    status.SetError(
        FormatMessage("Couldn't assign value to '%1' of type %2 because the input is of an invalid type %3.",
                      {name, typeName, BindingPropertyKindName(input.Kind())}));
}

void FailOutOfRange(BindingProperty& status, const FormatArgument& value, std::string_view name,
                    std::string_view typeName) {
    status.SetError(FormatMessage("Value %1 for '%2' of type %3 is out of range", {value, name, typeName}));
}

void FailIncorrectFormat(BindingProperty& status, const FormatArgument& value, std::string_view name,
                         std::string_view typeName) {
    status.SetError(FormatMessage("Value %1 for '%2' of type %3 is in an incorrect format", {value, name, typeName}));
}

FormatArgument InputValueArgument(const BindingProperty& input) {
    switch (input.Kind()) {
        case BindingPropertyKind::Signed:
            return input.AsInt64();
        case BindingPropertyKind::Unsigned:
            return input.AsUnsigned();
        case BindingPropertyKind::Float:
            return input.AsDouble();
        case BindingPropertyKind::Enum:
            return input.EnumValue();
        default:
            return input.AsString();
    }
}

namespace {

bool CheckContainerInput(BindingProperty& status, const BindingProperty& input, std::string_view name,
                         BindingPropertyKind kind, std::string_view message) {
    if (!status.IsValid()) {
        return false;
    }
    if (input.Kind() != kind) {
        status.SetError(FormatMessage(message, {name}));
        return false;
    }
    return true;
}

}  // namespace

bool CheckCollectionInput(BindingProperty& status, const BindingProperty& input, std::string_view name) {
    return CheckContainerInput(status, input, name, BindingPropertyKind::Collection,
                               "Couldn't assign value to '%1' of type vector because the input not a collection.");
}

bool CheckMapInput(BindingProperty& status, const BindingProperty& input, std::string_view name) {
    return CheckContainerInput(status, input, name, BindingPropertyKind::Structure,
                               "Couldn't assign value to '%1' of type map because the input not a structure.");
}

}  // namespace wex
