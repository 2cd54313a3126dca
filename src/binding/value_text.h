#pragma once

// The text forms of scalar values: numbers read from text with the runtime's
// parsers, and bytes written as base64.

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace wex {

enum class NumberTextResult { Ok, IncorrectFormat, OutOfRange };

// Each reads the whole text as one number with the runtime's parser: leading
// white space and a sign are allowed, and characters left after the number
// make the text incorrect. Integers take their base from the text: "0x" or
// "0X" hexadecimal, a leading "0" octal, otherwise decimal. The value is only
// written when the answer is Ok.

// A number beyond 64 bits is out of range.
NumberTextResult ParseSignedText(std::string_view text, std::int64_t& value);
// So is a text that begins with "-" after its white space.
NumberTextResult ParseUnsignedText(std::string_view text, std::uint64_t& value);
// Hexadecimal floating point and the spellings of infinity and NaN are read
// too; the empty text reads as 0; an overflow is out of range.
NumberTextResult ParseDoubleText(std::string_view text, double& value);

// Standard alphabet, padded with "=".
std::string EncodeBase64(std::span<const std::uint8_t> bytes);

}  // namespace wex
