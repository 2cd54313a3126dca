#include "codec/json_reader.h"

#include <cstdint>
#include <cstring>
#include <string_view>

#include "binding/rapidjson.h"
#include "binding/tree_builder.h"
#include "diagnostics/format_message.h"

namespace wex {

namespace {

// Hands the reader's events to the tree builder.
class TreeBuilder : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, TreeBuilder> {
  public:
    explicit TreeBuilder(BindingProperty& root) : builder_(root) {}

    bool Null() {
        // A value in its own right: a repeated key set to null drops its earlier value.
        builder_.NextValue();
        return true;
    }
    bool Bool(bool value) {
        builder_.NextValue().SetBool(value);
        return true;
    }
    // The reader reports non-negative integers as Uint or Uint64 and negative
    // ones as Int or Int64, which is the typing wanted.
    bool Int(int value) { return Int64(value); }
    bool Uint(unsigned value) { return Uint64(value); }
    bool Int64(std::int64_t value) {
        builder_.NextValue().SetSigned(value);
        return true;
    }
    bool Uint64(std::uint64_t value) {
        builder_.NextValue().SetUnsigned(value);
        return true;
    }
    bool Double(double value) {
        builder_.NextValue().SetFloat(value);
        return true;
    }
    bool String(const char* text, rapidjson::SizeType length, bool) {
        builder_.NextValue().SetString(UpToNul(text, length));
        return true;
    }
    bool StartObject() { return Open(true); }
    bool Key(const char* text, rapidjson::SizeType length, bool) {
        builder_.Key(UpToNul(text, length));
        return true;
    }
    bool EndObject(rapidjson::SizeType) { return Close(); }
    bool StartArray() { return Open(false); }
    bool EndArray(rapidjson::SizeType) { return Close(); }

  private:
    // Texts are taken as zero-terminated, so an escaped NUL ends them.
    static std::string_view UpToNul(const char* text, rapidjson::SizeType length) {
        if (!HasZeroByte(text, length)) {
            return {text, length};
        }
        return {text, static_cast<std::size_t>(static_cast<const char*>(std::memchr(text, '\0', length)) - text)};
    }

    // Short texts eight bytes at a time and inline: most texts are short, and
    // a library call for each cost a tenth of a read.
    static bool HasZeroByte(const char* text, std::size_t length) {
        if (length > 32) {
            return std::memchr(text, '\0', length) != nullptr;
        }
        constexpr std::uint64_t kOnes = 0x0101010101010101u;
        constexpr std::uint64_t kHighs = 0x8080808080808080u;
        std::size_t index = 0;
        for (; index + 8 <= length; index += 8) {
            std::uint64_t word;
            std::memcpy(&word, text + index, 8);
            if (((word - kOnes) & ~word & kHighs) != 0) {
                return true;
            }
        }
        for (; index < length; ++index) {
            if (text[index] == '\0') {
                return true;
            }
        }
        return false;
    }

    // Refusing a level stops the reader, which reports a handler error there.
    bool Open(bool isStructure) {
        if (builder_.Depth() == kMaxNestingDepth) {
            return false;
        }
        if (isStructure) {
            builder_.OpenStructure();
        } else {
            builder_.OpenCollection();
        }
        return true;
    }

    bool Close() {
        builder_.Close();
        return true;
    }

    BindingTreeBuilder builder_;
};

bool IsBlank(const char* text) {
    return text[std::strspn(text, " \n\r\t")] == '\0';
}

}  // namespace

BindingProperty ParseJson(const char* text) {
    BindingProperty result;
    if (text == nullptr || IsBlank(text)) {
        return result;
    }
    TreeBuilder builder(result);
    rapidjson::Reader reader;
    rapidjson::StringStream stream(text);
    const rapidjson::ParseResult outcome = reader.Parse<rapidjson::kParseDefaultFlags>(stream, builder);
    if (outcome.IsError()) {
        result.SetError(
            FormatMessage("Error: %s at offset %u.", {rapidjson::GetParseError_En(outcome.Code()), outcome.Offset()}));
    }
    return result;
}

}  // namespace wex
