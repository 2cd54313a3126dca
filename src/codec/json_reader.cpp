#include "codec/json_reader.h"

#include <cstring>
#include <string_view>
#include <vector>

#include "codec/nesting_limit.h"
#include "codec/rapidjson.h"
#include "diagnostics/format_message.h"

namespace wex {

namespace {

// Builds the value tree straight from the reader's events. Open containers
// wait on a stack; a member slot is made when its key arrives and filled by
// the value that follows.
class TreeBuilder : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, TreeBuilder> {
  public:
    explicit TreeBuilder(BindingProperty& root) : root_(root) { open_.reserve(32); }

    bool Null() {
        // A repeated key set to null drops its earlier value.
        Slot().Reset();
        return true;
    }
    bool Bool(bool value) {
        Slot().SetBool(value);
        return true;
    }
    // The reader reports non-negative integers as Uint or Uint64 and negative
    // ones as Int or Int64, which is the typing wanted.
    bool Int(int value) { return Int64(value); }
    bool Uint(unsigned value) { return Uint64(value); }
    bool Int64(std::int64_t value) {
        Slot().SetSigned(value);
        return true;
    }
    bool Uint64(std::uint64_t value) {
        Slot().SetUnsigned(value);
        return true;
    }
    bool Double(double value) {
        Slot().SetFloat(value);
        return true;
    }
    bool String(const char* text, rapidjson::SizeType length, bool) {
        Slot().SetString(UpToNul(text, length));
        return true;
    }
    bool StartObject() { return Open(BindingPropertyKind::Structure); }
    bool Key(const char* text, rapidjson::SizeType length, bool) {
        pendingMember_ = &open_.back()->Member(UpToNul(text, length));
        return true;
    }
    bool EndObject(rapidjson::SizeType) { return Close(); }
    bool StartArray() { return Open(BindingPropertyKind::Collection); }
    bool EndArray(rapidjson::SizeType) { return Close(); }

  private:
    // Texts are taken as zero-terminated, so an escaped NUL ends them.
    static std::string_view UpToNul(const char* text, rapidjson::SizeType length) {
        const void* nul = std::memchr(text, '\0', length);
        return {text, nul != nullptr ? static_cast<std::size_t>(static_cast<const char*>(nul) - text) : length};
    }

    BindingProperty& Slot() {
        if (open_.empty()) {
            return root_;
        }
        BindingProperty& container = *open_.back();
        return container.Kind() == BindingPropertyKind::Collection ? container.Append() : *pendingMember_;
    }

    // Refusing a level stops the reader, which reports a handler error there.
    bool Open(BindingPropertyKind kind) {
        if (open_.size() == kMaxNestingDepth) {
            return false;
        }
        BindingProperty& slot = Slot();
        slot.Reset();  // a repeated key gets a fresh container
        if (kind == BindingPropertyKind::Collection) {
            slot.MakeCollection();
        } else {
            slot.MakeStructure();
        }
        open_.push_back(&slot);
        return true;
    }

    bool Close() {
        open_.pop_back();
        return true;
    }

    BindingProperty& root_;
    std::vector<BindingProperty*> open_;
    BindingProperty* pendingMember_ = nullptr;
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
        result.SetError(FormatMessage("Error: %s at offset %u.",
                                      {rapidjson::GetParseError_En(outcome.Code()), outcome.Offset()}));
    }
    return result;
}

}  // namespace wex
