#include "diagnostics/format_named_message.h"

#include <algorithm>
#include <array>
#include <vector>

#include "diagnostics/format_message.h"

namespace wex {

void FieldMap::Set(std::string name, FieldValue value) {
    auto found = std::find_if(entries_.begin(), entries_.end(), [&](const Entry& e) { return e.first == name; });
    if (found != entries_.end()) {
        found->second = std::move(value);
        return;
    }
    entries_.emplace_back(std::move(name), std::move(value));
}

const FieldValue* FieldMap::Find(std::string_view name) const {
    auto found = std::find_if(entries_.begin(), entries_.end(), [&](const Entry& e) { return e.first == name; });
    return found == entries_.end() ? nullptr : &found->second;
}

namespace {

bool EndsWith(std::string_view text, std::string_view suffix) {
    return text.size() >= suffix.size() && text.substr(text.size() - suffix.size()) == suffix;
}

std::string TypedFieldName(std::string_view name, const FieldValue& value) {
    constexpr std::array<std::string_view, 6> kKindSuffixes = {"_bool", "_int", "_long", "_float", "_str", "_time"};
    for (std::string_view suffix : kKindSuffixes) {
        if (EndsWith(name, suffix)) {
            return std::string(name);
        }
    }
    constexpr std::array<std::string_view, 5> kSuffixByIndex = {"_bool", "_int", "_int", "_float", "_str"};
    return std::string(name) + std::string(kSuffixByIndex[value.index()]);
}

FormatArgument ToFormatArgument(const FieldValue& value) {
    return std::visit(
        [](const auto& held) -> FormatArgument {
            if constexpr (std::is_same_v<std::decay_t<decltype(held)>, bool>) {
                return FormatArgument(held ? "true" : "false");
            } else {
                return FormatArgument(held);
            }
        },
        value);
}

bool IsLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

// Turns the template into a format of numbered placeholders, one per value in
// order, and stores the named values in the field map.
class TemplateTranslator {
  public:
    TemplateTranslator(std::span<const FieldValue> values, FieldMap& fields) : values_(values), fields_(fields) {}

    std::string Translate(std::string_view text) {
        format_.reserve(text.size() + 16);
        std::size_t i = 0;
        while (i < text.size()) {
            char c = text[i];
            char next = i + 1 < text.size() ? text[i + 1] : '\0';
            if (c == '{' && next == '{') {
                format_ += '{';
                i += 2;
            } else if (c == '{') {
                i = NamedPlaceholder(text, i);
            } else if (c == '}') {
                format_ += '}';
                i += next == '}' ? 2 : 1;
            } else if (c == '%' && next == '%') {
                format_ += "%%";
                i += 2;
            } else if (c == '%') {
                i = PrintfPlaceholder(text, i);
            } else {
                format_ += c;
                ++i;
            }
        }
        return std::move(format_);
    }

  private:
    // "%N$s" writes the value in its kind's default form: "s" is replaced by the
    // default conversion of every kind but text.
    void AppendValueReference() {
        format_ += '%';
        format_ += std::to_string(++count_);
        format_ += '$';
    }

    std::size_t NamedPlaceholder(std::string_view text, std::size_t open) {
        std::size_t close = text.find('}', open + 1);
        if (close == std::string_view::npos) {
            format_ += '{';
            return open + 1;
        }
        std::string_view name = text.substr(open + 1, close - open - 1);
        bool typed = !name.empty() && name.front() == '#';
        if (typed) {
            name.remove_prefix(1);
        }
        AppendValueReference();
        format_ += 's';
        if (count_ <= values_.size()) {
            const FieldValue& value = values_[count_ - 1];
            fields_.Set(typed ? TypedFieldName(name, value) : std::string(name), value);
        }
        return close + 1;
    }

    // Keeps the printf placeholder but pins it to the next value. It is copied up to its first letter: what
    // follows a length letter ("%lld", "%zu") is copied as plain text, and reads as the same placeholder again.
    std::size_t PrintfPlaceholder(std::string_view text, std::size_t percent) {
        AppendValueReference();
        std::size_t i = percent + 1;
        while (i < text.size()) {
            char c = text[i++];
            format_ += c;
            if (IsLetter(c)) {
                break;
            }
        }
        return i;
    }

    std::span<const FieldValue> values_;
    FieldMap& fields_;
    std::string format_;
    std::size_t count_ = 0;
};

}  // namespace

std::string FormatNamedMessage(std::string_view templateText, std::span<const FieldValue> values, FieldMap& fields) {
    std::string format = TemplateTranslator(values, fields).Translate(templateText);
    std::vector<FormatArgument> arguments;
    arguments.reserve(values.size());
    for (const FieldValue& value : values) {
        arguments.push_back(ToFormatArgument(value));
    }
    return FormatMessage(format, arguments);
}

std::string FormatNamedMessage(std::string_view templateText, std::initializer_list<FieldValue> values,
                               FieldMap& fields) {
    return FormatNamedMessage(templateText, std::span<const FieldValue>(values.begin(), values.size()), fields);
}

}  // namespace wex
