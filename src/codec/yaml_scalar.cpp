#include "codec/yaml_scalar.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <optional>

#include "binding/value_text.h"
#include "diagnostics/format_message.h"
#include "types/native_conversion.h"

namespace wex {

namespace {

constexpr std::string_view kStringTag = "tag:yaml.org,2002:str";
constexpr std::string_view kIntTag = "tag:yaml.org,2002:int";
constexpr std::string_view kFloatTag = "tag:yaml.org,2002:float";
constexpr std::string_view kBoolTag = "tag:yaml.org,2002:bool";
constexpr std::string_view kName = "yaml";

std::optional<bool> BoolWord(std::string_view text) {
    if (text == "true" || text == "True" || text == "TRUE") {
        return true;
    }
    if (text == "false" || text == "False" || text == "FALSE") {
        return false;
    }
    return std::nullopt;
}

bool IsNullWord(std::string_view text) {
    return text.empty() || text == "~" || text == "null" || text == "Null" || text == "NULL";
}

// Only these can begin a finite number for the runtime's conversion, which
// also skips leading white space; the test spares the conversion for words.
bool MayBeNumber(char first) {
    return (first >= '0' && first <= '9') || first == '+' || first == '-' || first == '.' || first == ' ' ||
           (first >= '\t' && first <= '\r');
}

// Whether the runtime's string-to-double conversion reads the whole text.
// Plain decimal spellings go through from_chars, which rounds the same and is
// several times faster; the rest (a plus sign, hexadecimal, white space, out
// of range) through strtod itself.
bool ReadsWholeAsDouble(std::string_view text, double& value) {
    const char* last = text.data() + text.size();
    const auto [end, error] = std::from_chars(text.data(), last, value);
    if (error == std::errc() && end == last) {
        return true;
    }
    char* strtodEnd = nullptr;
    value = std::strtod(text.data(), &strtodEnd);
    return strtodEnd == last;
}

bool SetPlainNumber(BindingProperty& slot, std::string_view text) {
    double value = 0.0;
    if (!MayBeNumber(text.front()) || !ReadsWholeAsDouble(text, value) || !std::isfinite(value)) {
        return false;
    }
    if (value != std::trunc(value)) {
        slot.SetFloat(value);
    } else if (value < 0 && value >= -0x1p63) {
        slot.SetSigned(static_cast<std::int64_t>(value));
    } else if (value >= 0 && value < 0x1p64) {
        slot.SetUnsigned(static_cast<std::uint64_t>(value));
    } else {
        slot.SetFloat(value);
    }
    return true;
}

void SetPlain(BindingProperty& slot, std::string_view text) {
    if (IsNullWord(text) || SetPlainNumber(slot, text)) {
        return;  // a null word leaves the new slot empty
    }
    if (const std::optional<bool> word = BoolWord(text)) {
        slot.SetBool(*word);
    } else {
        slot.SetString(text);
    }
}

// A number failure as the conversions of request values report it.
bool CheckNumber(BindingProperty& status, NumberTextResult result, std::string_view text, std::string_view type) {
    switch (result) {
        case NumberTextResult::IncorrectFormat:
            FailIncorrectFormat(status, text, kName, type);
            return false;
        case NumberTextResult::OutOfRange:
            FailOutOfRange(status, text, kName, type);
            return false;
        case NumberTextResult::Ok:
            return true;
    }
    return false;
}

void SetTaggedInteger(BindingProperty& status, BindingProperty& slot, std::string_view text) {
    if (!text.empty() && text.front() == '-') {
        std::int64_t value = 0;
        if (CheckNumber(status, ParseSignedText(text, value), text, "int64_t")) {
            slot.SetSigned(value);
        }
    } else {
        std::uint64_t value = 0;
        if (CheckNumber(status, ParseUnsignedText(text, value), text, "uint64_t")) {
            slot.SetUnsigned(value);
        }
    }
}

void SetTaggedFloat(BindingProperty& status, BindingProperty& slot, std::string_view text) {
    double value = 0.0;
    if (!CheckNumber(status, ParseDoubleText(text, value), text, "double")) {
        return;
    }
    // Infinity is beyond the bounds of double; a NaN passes.
    if (std::isinf(value)) {
        FailOutOfRange(status, text, kName, "double");
        return;
    }
    slot.SetFloat(value);
}

}  // namespace

void SetYamlScalar(BindingProperty& status, BindingProperty& slot, std::string_view tag, std::string_view text,
                   bool quoted) {
    if (tag.empty()) {
        if (quoted) {
            slot.SetString(text);
        } else {
            SetPlain(slot, text);
        }
    } else if (tag == kStringTag) {
        slot.SetString(text);
    } else if (tag == kIntTag) {
        SetTaggedInteger(status, slot, text);
    } else if (tag == kFloatTag) {
        SetTaggedFloat(status, slot, text);
    } else if (tag == kBoolTag) {
        if (const std::optional<bool> word = BoolWord(text)) {
            slot.SetBool(*word);
        }
    } else {
        status.SetError(FormatMessage("Unsupported YAML tag '%1'.", {tag}));
    }
}

}  // namespace wex
