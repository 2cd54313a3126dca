#include "binding/conversion_failures.h"

#include <exception>
#include <new>

#include "binding/native_conversion.h"
#include "binding/property.h"
#include "diagnostics/format_message.h"

namespace wex {

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
