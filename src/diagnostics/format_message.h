#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>

namespace wex {

// Specialise for a type that prints as text in FormatMessage:
//   template <> struct FormatText<Failure> { static std::string Text(const Failure&); };
template <class T>
struct FormatText;

template <class T>
concept HasFormatText = requires(const T& value) {
    { FormatText<T>::Text(value) } -> std::convertible_to<std::string>;
};

// One argument of FormatMessage. Its kind decides which conversions it accepts.
// Texts given as views or pointers are borrowed: the argument lives only for
// the call it is made for.
class FormatArgument {
  public:
    enum class Kind : std::uint8_t { Signed32, Signed64, Unsigned64, Double, Text };

    template <std::integral T>
    FormatArgument(T value) {
        if constexpr (std::same_as<T, bool> || (std::signed_integral<T> && sizeof(T) <= 4)) {
            kind_ = Kind::Signed32;
            signed_ = static_cast<std::int32_t>(value);
        } else if constexpr (std::signed_integral<T>) {
            kind_ = Kind::Signed64;
            signed_ = value;
        } else {
            kind_ = Kind::Unsigned64;
            unsigned_ = value;
        }
    }
    template <std::floating_point T>
    FormatArgument(T value) : kind_(Kind::Double), double_(static_cast<double>(value)) {}
    FormatArgument(const char* text) : kind_(Kind::Text), text_(text == nullptr ? "" : text) {}
    FormatArgument(std::string_view text) : kind_(Kind::Text), text_(text) {}
    FormatArgument(const std::string& text) : kind_(Kind::Text), text_(text) {}
    template <HasFormatText T>
    FormatArgument(const T& value) : kind_(Kind::Text), owned_(FormatText<T>::Text(value)), ownsText_(true) {}

    Kind GetKind() const { return kind_; }
    std::int64_t Signed() const { return signed_; }
    std::uint64_t Unsigned() const { return unsigned_; }
    double Double() const { return double_; }
    std::string_view Text() const { return ownsText_ ? std::string_view(owned_) : text_; }

  private:
    Kind kind_;
    union {
        std::int64_t signed_ = 0;
        std::uint64_t unsigned_;
        double double_;
    };
    std::string_view text_;
    std::string owned_;
    bool ownsText_ = false;
};

// The longest text FormatMessage produces, in bytes.
inline constexpr std::size_t kMaxFormattedMessage = 4095;

// Formats with numbered placeholders ("%1", "%2$5s") and printf-style ones
// ("%s", "%*d"), each argument converted by the rules of its kind. Formatting
// ends at a placeholder whose argument is missing or that is longer than 60
// characters; what was written so far is the result.
std::string FormatMessage(std::string_view format, std::initializer_list<FormatArgument> arguments);
std::string FormatMessage(std::string_view format, std::span<const FormatArgument> arguments);

// The same into a caller's buffer: at most capacity - 1 bytes, always
// terminated (when capacity is not 0). Returns the length written.
std::size_t FormatMessageInto(char* buffer, std::size_t capacity, std::string_view format,
                              std::span<const FormatArgument> arguments);

}  // namespace wex
