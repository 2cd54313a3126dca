#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <variant>

#include "diagnostics/format_named_message.h"
#include "diagnostics/format_message.h"

namespace wex {

// A message known at build time, kept by pointer rather than copied.
class ConstantText {
  public:
    template <std::size_t Size>
    consteval ConstantText(const char (&text)[Size]) : text_(text), length_(Size - 1) {}

    std::string_view View() const { return {text_, length_}; }

  private:
    const char* text_;
    std::size_t length_;
};

// The framework's error value: a code (0 for none; an HTTP-style status where
// there is one), a message, and named fields with more facts about the error.
class Failure {
  public:
    // Code 0 and an empty message.
    Failure() = default;
    // A code and a constant message, borrowed as it is; no fields.
    Failure(std::int32_t code, ConstantText message) : code_(code), message_(message) {}
    // Sets the code, with the field "errorCode_int" when it is not 0, then
    // fills the named placeholders of templateText ("{error}") with values in
    // order, each also stored as a field under its name.
    Failure(std::int32_t code, std::string_view templateText, std::initializer_list<FieldValue> values);

    std::int32_t Code() const { return code_; }
    std::string_view Message() const;
    const FieldMap& Fields() const { return fields_; }

    // A field already there keeps its place and takes the new value.
    void SetField(std::string name, FieldValue value);

    // The message alone, or "message (code)" when there is a code, for a failure
    // without fields (or with "errorFields_int" alone); otherwise a one-line
    // JSON object of "message" and then every field.
    std::string ToString() const;

  private:
    std::int32_t code_ = 0;
    std::variant<ConstantText, std::string> message_{std::string()};
    FieldMap fields_;
};

// A Failure as a FormatMessage argument prints its text form.
template <>
struct FormatText<Failure> {
    static std::string Text(const Failure& failure) { return failure.ToString(); }
};

// A failure whose message is text as it is: braces in it are not
// placeholders and it adds no fields beyond the code's.
Failure TextFailure(std::int32_t code, std::string_view text);

// The answer of a request handler that met an unexpected failure: status 500
// with the failure's message, or "Internal server error" when it has none.
Failure ErrorAnswer(std::string_view message);

}  // namespace wex
