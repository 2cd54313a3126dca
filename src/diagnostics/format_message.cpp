#include "diagnostics/format_message.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "diagnostics/bounded_text.h"

namespace wex {
namespace {

// A placeholder longer than this ends the formatting.
constexpr std::size_t kPlaceholderLimit = 60;
// Widths and precisions beyond what can ever show in the output are clamped.
constexpr int kFieldLimit = static_cast<int>(kMaxFormattedMessage);

struct Placeholder {
    const FormatArgument* argument = nullptr;
    bool numberOnly = false;
    bool leftAlign = false;
    bool plus = false;
    bool space = false;
    bool alternate = false;
    bool zeroPad = false;
    int width = -1;
    int precision = -1;
    char conversion = 0;
};

class PlaceholderParser {
  public:
    PlaceholderParser(std::string_view format, std::span<const FormatArgument> arguments, std::size_t& nextArgument)
        : format_(format), arguments_(arguments), next_(nextArgument) {}

    // Parses the placeholder whose "%" is at start. False ends the formatting.
    bool Parse(std::size_t start, Placeholder& placeholder, std::size_t& end) {
        start_ = start;
        position_ = start + 1;
        const FormatArgument* numbered = nullptr;
        if (std::size_t number = PeekArgumentNumber(); number != 0) {
            numbered = &arguments_[number - 1];
            if (Peek() != '$') {
                placeholder.argument = numbered;
                placeholder.numberOnly = true;
                end = position_;
                return end - start_ <= kPlaceholderLimit;
            }
            ++position_;
        }
        ParseFlags(placeholder);
        if (!ParseWidth(placeholder) || !ParsePrecision(placeholder)) {
            return false;
        }
        SkipLength();
        if (position_ >= format_.size()) {
            return false;
        }
        placeholder.conversion = format_[position_++];
        if (position_ - start_ > kPlaceholderLimit) {
            return false;
        }
        placeholder.argument = numbered != nullptr ? numbered : TakeNext();
        end = position_;
        return placeholder.argument != nullptr;
    }

  private:
    char Peek() const { return position_ < format_.size() ? format_[position_] : '\0'; }
    static bool IsDigit(char c) { return c >= '0' && c <= '9'; }

    // Reads decimal digits, saturating far above any useful value.
    int ReadNumber() {
        int value = 0;
        while (IsDigit(Peek())) {
            value = std::min(value * 10 + (format_[position_] - '0'), 100'000'000);
            ++position_;
        }
        return value;
    }

    // An argument number: digits 1 to 9 first, not above the argument count.
    // Anything else leaves the position where it was.
    std::size_t PeekArgumentNumber() {
        char first = Peek();
        if (first < '1' || first > '9') {
            return 0;
        }
        std::size_t saved = position_;
        auto number = static_cast<std::size_t>(ReadNumber());
        if (number > arguments_.size()) {
            position_ = saved;
            return 0;
        }
        return number;
    }

    const FormatArgument* TakeNext() { return next_ < arguments_.size() ? &arguments_[next_++] : nullptr; }

    void ParseFlags(Placeholder& placeholder) {
        for (;; ++position_) {
            switch (Peek()) {
                case '-':
                    placeholder.leftAlign = true;
                    break;
                case '+':
                    placeholder.plus = true;
                    break;
                case ' ':
                    placeholder.space = true;
                    break;
                case '#':
                    placeholder.alternate = true;
                    break;
                case '0':
                    placeholder.zeroPad = true;
                    break;
                default:
                    return;
            }
        }
    }

    // "*" takes the next argument in order, "*N$" argument N. Only integers
    // give a value; other kinds count as 0. Null when the argument is missing.
    const FormatArgument* TakeStarArgument() {
        ++position_;
        std::size_t saved = position_;
        if (IsDigit(Peek())) {
            auto number = static_cast<std::size_t>(ReadNumber());
            if (Peek() == '$') {
                ++position_;
                return number >= 1 && number <= arguments_.size() ? &arguments_[number - 1] : nullptr;
            }
            position_ = saved;
        }
        return TakeNext();
    }

    static int StarValue(const FormatArgument& argument) {
        switch (argument.GetKind()) {
            case FormatArgument::Kind::Signed32:
            case FormatArgument::Kind::Signed64:
                return static_cast<int>(std::clamp<std::int64_t>(argument.Signed(), -kFieldLimit, kFieldLimit));
            case FormatArgument::Kind::Unsigned64:
                return static_cast<int>(std::min<std::uint64_t>(argument.Unsigned(), kFieldLimit));
            default:
                return 0;
        }
    }

    // Digits or a "*" argument. False when the "*" argument is missing.
    bool ReadField(int& value, bool& given) {
        if (Peek() == '*') {
            const FormatArgument* argument = TakeStarArgument();
            if (argument == nullptr) {
                return false;
            }
            value = StarValue(*argument);
            given = true;
            return true;
        }
        given = IsDigit(Peek());
        value = std::min(ReadNumber(), kFieldLimit);
        return true;
    }

    // A negative "*" width aligns left.
    bool ParseWidth(Placeholder& placeholder) {
        int width = 0;
        bool given = false;
        if (!ReadField(width, given)) {
            return false;
        }
        if (given) {
            placeholder.leftAlign = placeholder.leftAlign || width < 0;
            placeholder.width = width < 0 ? -width : width;
        }
        return true;
    }

    // "." alone is precision 0; a negative "*" precision counts as none.
    bool ParsePrecision(Placeholder& placeholder) {
        if (Peek() != '.') {
            return true;
        }
        ++position_;
        int precision = 0;
        bool given = false;
        if (!ReadField(precision, given)) {
            return false;
        }
        placeholder.precision = precision < 0 ? -1 : precision;
        return true;
    }

    // The written length is dropped: every kind brings its own.
    void SkipLength() {
        char c = Peek();
        if (c == 'L' || c == 'j' || c == 't' || c == 'z') {
            ++position_;
        } else if (c == 'h' || c == 'l') {
            ++position_;
            if (Peek() == c) {
                ++position_;
            }
        }
    }

    std::string_view format_;
    std::span<const FormatArgument> arguments_;
    std::size_t& next_;
    std::size_t start_ = 0;
    std::size_t position_ = 0;
};

struct KindRules {
    std::string_view allowed;
    char fallback;
};

KindRules RulesOf(FormatArgument::Kind kind) {
    switch (kind) {
        case FormatArgument::Kind::Signed32:
        case FormatArgument::Kind::Signed64:
            return {"dciouxX", 'd'};
        case FormatArgument::Kind::Unsigned64:
            return {"ucdioxX", 'u'};
        case FormatArgument::Kind::Double:
            return {"gaefGAEF", 'g'};
        case FormatArgument::Kind::Text:
            break;
    }
    return {"s", 's'};
}

// "%", the flags, the width and the precision; the caller appends the length and conversion.
void BuildPrintfFormat(const Placeholder& placeholder, std::string_view lengthAndConversion, char (&printfFormat)[48]) {
    char* out = printfFormat;
    *out++ = '%';
    const std::pair<bool, char> flags[] = {{placeholder.leftAlign, '-'},
                                           {placeholder.plus, '+'},
                                           {placeholder.space, ' '},
                                           {placeholder.alternate, '#'},
                                           {placeholder.zeroPad, '0'}};
    for (auto [given, flag] : flags) {
        if (given) {
            *out++ = flag;
        }
    }
    if (placeholder.width >= 0) {
        out += std::snprintf(out, 8, "%d", placeholder.width);
    }
    if (placeholder.precision >= 0) {
        out += std::snprintf(out, 9, ".%d", placeholder.precision);
    }
    out = std::copy(lengthAndConversion.begin(), lengthAndConversion.end(), out);
    *out = '\0';
}

void WriteText(BoundedText& output, std::string_view text, const Placeholder& placeholder) {
    if (placeholder.precision >= 0) {
        text = text.substr(0, static_cast<std::size_t>(placeholder.precision));
    }
    std::size_t padding = placeholder.width > 0 && static_cast<std::size_t>(placeholder.width) > text.size()
                              ? static_cast<std::size_t>(placeholder.width) - text.size()
                              : 0;
    if (!placeholder.leftAlign) {
        output.AppendRepeated(' ', padding);
    }
    output.Append(text);
    if (placeholder.leftAlign) {
        output.AppendRepeated(' ', padding);
    }
}

bool IsUnsignedConversion(char conversion) {
    return conversion == 'o' || conversion == 'u' || conversion == 'x' || conversion == 'X';
}

void WriteInteger(BoundedText& output, const FormatArgument& argument, const Placeholder& placeholder,
                  char conversion) {
    char printfFormat[48];
    char lengthAndConversion[4] = {};
    bool wide = argument.GetKind() != FormatArgument::Kind::Signed32 && conversion != 'c';
    if (wide) {
        lengthAndConversion[0] = 'l';
        lengthAndConversion[1] = 'l';
        lengthAndConversion[2] = conversion;
    } else {
        lengthAndConversion[0] = conversion;
    }
    BuildPrintfFormat(placeholder, lengthAndConversion, printfFormat);
    // Signed and unsigned kinds share the bit pattern, as printf reads them.
    auto bits = argument.GetKind() == FormatArgument::Kind::Unsigned64 ? argument.Unsigned()
                                                                       : static_cast<std::uint64_t>(argument.Signed());
    if (conversion == 'c') {
        output.Print(printfFormat, static_cast<int>(static_cast<unsigned char>(bits)));
    } else if (!wide) {
        if (IsUnsignedConversion(conversion)) {
            output.Print(printfFormat, static_cast<unsigned>(bits));
        } else {
            output.Print(printfFormat, static_cast<int>(static_cast<std::int32_t>(bits)));
        }
    } else if (IsUnsignedConversion(conversion)) {
        output.Print(printfFormat, static_cast<unsigned long long>(bits));
    } else {
        output.Print(printfFormat, static_cast<long long>(bits));
    }
}

void WritePlaceholder(BoundedText& output, const Placeholder& placeholder) {
    // Writing through the argument ("%n") is never done.
    if (placeholder.conversion == 'n') {
        return;
    }
    const FormatArgument& argument = *placeholder.argument;
    KindRules rules = RulesOf(argument.GetKind());
    char conversion = placeholder.conversion;
    if (placeholder.numberOnly || rules.allowed.find(conversion) == std::string_view::npos) {
        conversion = rules.fallback;
    }
    switch (argument.GetKind()) {
        case FormatArgument::Kind::Text:
            WriteText(output, argument.Text(), placeholder);
            return;
        case FormatArgument::Kind::Double: {
            char printfFormat[48];
            char conversionText[2] = {conversion, '\0'};
            BuildPrintfFormat(placeholder, conversionText, printfFormat);
            output.Print(printfFormat, argument.Double());
            return;
        }
        default:
            WriteInteger(output, argument, placeholder, conversion);
    }
}

}  // namespace

std::size_t FormatMessageInto(char* buffer, std::size_t capacity, std::string_view format,
                              std::span<const FormatArgument> arguments) {
    if (capacity == 0) {
        return 0;
    }
    BoundedText output(buffer, capacity - 1);
    std::size_t nextArgument = 0;
    PlaceholderParser parser(format, arguments, nextArgument);
    std::size_t position = 0;
    while (position < format.size() && !output.Full()) {
        std::size_t percent = std::min(format.find('%', position), format.size());
        output.Append(format.substr(position, percent - position));
        position = percent;
        if (position == format.size()) {
            break;
        }
        if (position + 1 < format.size() && format[position + 1] == '%') {
            output.Append("%");
            position += 2;
            continue;
        }
        Placeholder placeholder;
        if (!parser.Parse(position, placeholder, position)) {
            break;
        }
        WritePlaceholder(output, placeholder);
    }
    return output.Terminate();
}

std::string FormatMessage(std::string_view format, std::span<const FormatArgument> arguments) {
    char buffer[kMaxFormattedMessage + 1];
    std::size_t length = FormatMessageInto(buffer, sizeof buffer, format, arguments);
    return std::string(buffer, length);
}

std::string FormatMessage(std::string_view format, std::initializer_list<FormatArgument> arguments) {
    return FormatMessage(format, std::span<const FormatArgument>(arguments.begin(), arguments.size()));
}

}  // namespace wex
