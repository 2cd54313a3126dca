#include "binding/failure.h"

#include <cmath>
#include <string>

#include "binding/rapidjson.h"
#include "diagnostics/format_message.h"
#include "diagnostics/format_named_message.h"

namespace wex {

namespace {

template <class... Visitors>
struct Overloaded : Visitors... {
    using Visitors::operator()...;
};
template <class... Visitors>
Overloaded(Visitors...) -> Overloaded<Visitors...>;

using JsonWriter = rapidjson::Writer<rapidjson::StringBuffer>;

void WriteText(JsonWriter& writer, std::string_view text) {
    writer.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
}

void WriteFieldValue(JsonWriter& writer, const FieldValue& value) {
    std::visit(Overloaded{
                   [&writer](bool flag) { writer.Bool(flag); },
                   [&writer](std::int64_t number) { writer.Int64(number); },
                   [&writer](std::uint64_t number) { writer.Uint64(number); },
                   // The writer refuses what JSON cannot hold; such a double is written as null.
                   [&writer](double number) { std::isfinite(number) ? writer.Double(number) : writer.Null(); },
                   [&writer](const std::string& text) { WriteText(writer, text); },
               },
               value);
}

}  // namespace

Failure::Failure(std::int32_t code, std::string_view templateText, std::initializer_list<FieldValue> values)
    : code_(code) {
    if (code != 0) {
        fields_.Set("errorCode_int", std::int64_t{code});
    }
    message_ = FormatNamedMessage(templateText, values, fields_);
}

std::string_view Failure::Message() const {
    return std::visit(Overloaded{
                          [](const ConstantText& text) { return text.View(); },
                          [](const std::string& text) { return std::string_view(text); },
                      },
                      message_);
}

void Failure::SetField(std::string name, FieldValue value) {
    fields_.Set(std::move(name), std::move(value));
}

std::string Failure::ToString() const {
    const bool plain = fields_.empty() || (fields_.size() == 1 && fields_.begin()->first == "errorFields_int");
    if (plain) {
        return code_ != 0 ? FormatMessage("%1 (%2)", {Message(), code_}) : std::string(Message());
    }
    rapidjson::StringBuffer buffer;
    JsonWriter writer(buffer);
    writer.StartObject();
    writer.Key("message");
    WriteText(writer, Message());
    for (const auto& [name, value] : fields_) {
        writer.Key(name.data(), static_cast<rapidjson::SizeType>(name.size()));
        WriteFieldValue(writer, value);
    }
    writer.EndObject();
    return std::string(buffer.GetString(), buffer.GetSize());
}

Failure TextFailure(std::int32_t code, std::string_view text) {
    // A printf placeholder takes the text without naming a field.
    return Failure(code, "%s", {std::string(text)});
}

Failure ErrorAnswer(std::string_view message) {
    return TextFailure(500, message.empty() ? std::string_view("Internal server error") : message);
}

}  // namespace wex
