#include "codec/json_writer.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <span>
#include <string_view>
#include <vector>

#include "binding/rapidjson.h"
#include "binding/value_text.h"
#include "types/registry.h"

namespace wex {

namespace {

// The escape of each byte, as rapidjson's writer has them: a letter after the
// backslash, 'u' for \u00XX, or zero for a byte written as it is.
constexpr std::array<char, 256> kEscapes = [] {
    std::array<char, 256> escapes{};
    for (std::size_t byte = 0; byte < 0x20; ++byte) {
        escapes[byte] = 'u';
    }
    escapes['\b'] = 'b';
    escapes['\t'] = 't';
    escapes['\n'] = 'n';
    escapes['\f'] = 'f';
    escapes['\r'] = 'r';
    escapes['"'] = '"';
    escapes['\\'] = '\\';
    return escapes;
}();

// Compact JSON straight into the buffer, in rapidjson's number forms and
// escapes. rapidjson's writer keeps a stack of levels to place its commas and
// reloads its buffer's end after every byte of a string; here one flag places
// the commas and texts are written through a local pointer.
class CompactWriter {
  public:
    explicit CompactWriter(rapidjson::StringBuffer& out) : out_(out) {}

    void Null() { Literal("null"); }
    void Bool(bool value) { Literal(value ? std::string_view("true") : std::string_view("false")); }
    void Int(int value) {
        Number<11>([value](char* buffer) { return rapidjson::internal::i32toa(value, buffer); });
    }
    void Uint(unsigned value) {
        Number<10>([value](char* buffer) { return rapidjson::internal::u32toa(value, buffer); });
    }
    void Int64(std::int64_t value) {
        Number<21>([value](char* buffer) { return rapidjson::internal::i64toa(value, buffer); });
    }
    void Uint64(std::uint64_t value) {
        Number<20>([value](char* buffer) { return rapidjson::internal::u64toa(value, buffer); });
    }
    // Finite values only, as rapidjson's writer takes them.
    void Double(double value) {
        Number<25>([value](char* buffer) { return rapidjson::internal::dtoa(value, buffer); });
    }
    void String(const char* text, rapidjson::SizeType length) {
        Separate();
        WriteText(text, length);
        afterValue_ = true;
    }
    void Key(const char* text, rapidjson::SizeType length) {
        Separate();
        WriteText(text, length);
        out_.Put(':');
        afterValue_ = false;
    }
    void StartObject() { Open('{'); }
    void EndObject() { Close('}'); }
    void StartArray() { Open('['); }
    void EndArray() { Close(']'); }

  private:
    void Separate() {
        if (afterValue_) {
            out_.Put(',');
        }
    }
    void Literal(std::string_view text) {
        Separate();
        std::memcpy(out_.Push(text.size()), text.data(), text.size());
        afterValue_ = true;
    }
    template <std::size_t kMaxLength, class Format>
    void Number(Format format) {
        Separate();
        char* const start = out_.Push(kMaxLength);
        out_.Pop(kMaxLength - static_cast<std::size_t>(format(start) - start));
        afterValue_ = true;
    }
    void Open(char bracket) {
        Separate();
        out_.Put(bracket);
        afterValue_ = false;
    }
    void Close(char bracket) {
        out_.Put(bracket);
        afterValue_ = true;
    }

    void WriteText(const char* text, std::size_t length) {
        static constexpr char kHexDigits[] = "0123456789ABCDEF";
        const std::size_t reserved = 2 + length * 6;  // every byte could take six
        char* const start = out_.Push(reserved);
        char* out = start;
        *out++ = '"';
        for (const char* end = text + length; text != end; ++text) {
            const auto byte = static_cast<unsigned char>(*text);
            const char escape = kEscapes[byte];
            if (escape == 0) {
                *out++ = *text;
                continue;
            }
            *out++ = '\\';
            *out++ = escape;
            if (escape == 'u') {
                *out++ = '0';
                *out++ = '0';
                *out++ = kHexDigits[byte >> 4];
                *out++ = kHexDigits[byte & 0xF];
            }
        }
        *out++ = '"';
        out_.Pop(reserved - static_cast<std::size_t>(out - start));
    }

    rapidjson::StringBuffer& out_;
    bool afterValue_ = false;  // a comma goes before whatever comes next
};

// Walks the tree depth first with its own stack, one writer call per node.
template <class Writer>
class TreeWriter {
  public:
    TreeWriter(Writer& writer, const BindingTypeRegistry* registry) : writer_(writer), registry_(registry) {}

    void Write(const BindingProperty& root) {
        WriteNode(root);
        while (!open_.empty()) {
            // WriteNode may push, so the frame is not held across it.
            Frame& frame = open_.back();
            if (frame.isStructure) {
                if (frame.nextMember == frame.endMember) {
                    writer_.EndObject();
                    open_.pop_back();
                    continue;
                }
                const BindingMember member = *frame.nextMember++;
                PrefetchNameAfter(frame.nextMember, frame.endMember);
                writer_.Key(member.name.data(), static_cast<rapidjson::SizeType>(member.name.size()));
                WriteNode(member.value);
            } else {
                if (frame.nextElement == frame.endElement) {
                    writer_.EndArray();
                    open_.pop_back();
                    continue;
                }
                WriteNode(*frame.nextElement++);
            }
        }
    }

  private:
    struct Frame {
        bool isStructure;
        const BindingProperty* nextElement;
        const BindingProperty* endElement;
        BindingMemberIterator nextMember;
        BindingMemberIterator endMember;
    };

    // Names lie apart from their members; fetching the one after next while
    // this member is written hides most of the wait for it.
    static void PrefetchNameAfter(BindingMemberIterator next, BindingMemberIterator end) {
        if (next != end && ++next != end) {
            __builtin_prefetch(&next.NameEntry());
        }
    }

    void WriteString(std::string_view text) {
        writer_.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
    }

    // The 32-bit forms write the same digits, faster.
    void WriteSigned(std::int64_t number) {
        if (number >= std::numeric_limits<int>::min() && number <= std::numeric_limits<int>::max()) {
            writer_.Int(static_cast<int>(number));
        } else {
            writer_.Int64(number);
        }
    }
    void WriteUnsigned(std::uint64_t number) {
        if (number <= std::numeric_limits<unsigned>::max()) {
            writer_.Uint(static_cast<unsigned>(number));
        } else {
            writer_.Uint64(number);
        }
    }

    void WriteEnum(const BindingProperty& node) {
        if (registry_ != nullptr) {
            if (const auto name = registry_->EnumValueName(node.EnumTypeId(), node.EnumValue())) {
                WriteString(*name);
                return;
            }
        }
        writer_.Int(node.EnumValue());
    }

    void WriteNode(const BindingProperty& node) {
        switch (node.Kind()) {
            case BindingPropertyKind::Bool:
                writer_.Bool(node.ToBool());
                break;
            case BindingPropertyKind::Signed:
                WriteSigned(node.AsInt64());
                break;
            case BindingPropertyKind::Unsigned:
                WriteUnsigned(node.AsUnsigned());
                break;
            case BindingPropertyKind::Float:
                // The writer refuses NaN and infinity.
                if (std::isfinite(node.AsDouble())) {
                    writer_.Double(node.AsDouble());
                } else {
                    writer_.Null();
                }
                break;
            case BindingPropertyKind::String:
                WriteString(node.AsString());
                break;
            case BindingPropertyKind::Blob:
                WriteString(EncodeBase64(node.AsBlob()));
                break;
            case BindingPropertyKind::Enum:
                WriteEnum(node);
                break;
            case BindingPropertyKind::Collection: {
                writer_.StartArray();
                const std::span<const BindingProperty> elements = node.Elements();
                open_.push_back({false, elements.data(), elements.data() + elements.size(), {}, {}});
                break;
            }
            case BindingPropertyKind::Structure: {
                writer_.StartObject();
                const BindingMemberRange members = node.Members();
                open_.push_back({true, nullptr, nullptr, members.begin(), members.end()});
                break;
            }
            default:
                writer_.Null();
                break;
        }
    }

    Writer& writer_;
    const BindingTypeRegistry* registry_;
    std::vector<Frame> open_;
};

template <class Writer>
void WriteTree(const BindingProperty& value, const BindingTypeRegistry* registry, Writer& writer) {
    TreeWriter<Writer>(writer, registry).Write(value);
}

void ReplaceLineFeeds(std::string& text, std::string_view lineBreak) {
    std::string replaced;
    replaced.reserve(text.size() + text.size() / 8 * (lineBreak.size() - 1));
    for (const char character : text) {
        if (character == '\n') {
            replaced += lineBreak;
        } else {
            replaced += character;
        }
    }
    text.swap(replaced);
}

}  // namespace

std::string WriteJson(const BindingProperty& value, const BindingTypeRegistry* registry, std::string_view lineBreak) {
    if (value.IsEmpty()) {
        return {};
    }
    rapidjson::StringBuffer buffer;
    if (lineBreak.empty()) {
        CompactWriter writer(buffer);
        WriteTree(value, registry, writer);
    } else {
        rapidjson::PrettyWriter<rapidjson::StringBuffer> writer(buffer);
        writer.SetIndent(' ', 4);
        WriteTree(value, registry, writer);
    }
    std::string text(buffer.GetString(), buffer.GetSize());
    if (!lineBreak.empty() && lineBreak != "\n") {
        ReplaceLineFeeds(text, lineBreak);
    }
    return text;
}

}  // namespace wex
