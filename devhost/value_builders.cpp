#include "value_builders.h"

namespace tav::host {

wex::BindingProperty Structure(std::initializer_list<std::pair<const char*, wex::BindingProperty>> members) {
    wex::BindingProperty structure;
    structure.MakeStructure();
    for (const auto& [name, value] : members) {
        structure.Member(name) = value;
    }
    return structure;
}

wex::BindingProperty String(std::string_view text) {
    wex::BindingProperty value;
    value.SetString(text);
    return value;
}

wex::BindingProperty Unsigned(std::uint64_t number) {
    wex::BindingProperty value;
    value.SetUnsigned(number);
    return value;
}

wex::BindingProperty Signed(std::int64_t number) {
    wex::BindingProperty value;
    value.SetSigned(number);
    return value;
}

wex::BindingProperty Float(double number) {
    wex::BindingProperty value;
    value.SetFloat(number);
    return value;
}

wex::BindingProperty Bool(bool flag) {
    wex::BindingProperty value;
    value.SetBool(flag);
    return value;
}

wex::BindingProperty EmptyCollection() {
    wex::BindingProperty value;
    value.MakeCollection();
    return value;
}

std::optional<double> NumberOf(const wex::BindingProperty& value) {
    switch (value.Kind()) {
        case wex::BindingPropertyKind::Signed:
            return static_cast<double>(value.AsInt64());
        case wex::BindingPropertyKind::Unsigned:
            return static_cast<double>(value.AsUInt64());
        case wex::BindingPropertyKind::Float:
            return value.AsDouble();
        default:
            return std::nullopt;
    }
}

}  // namespace tav::host
