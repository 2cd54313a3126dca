#include "codec/json_writer.h"

#include <cmath>
#include <span>
#include <vector>

#include "binding/rapidjson.h"
#include "binding/value_text.h"
#include "types/registry.h"

namespace wex {

namespace {

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

    void WriteString(std::string_view text) {
        writer_.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
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
                writer_.Int64(node.AsInt64());
                break;
            case BindingPropertyKind::Unsigned:
                writer_.Uint64(node.AsUnsigned());
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
        rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
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
