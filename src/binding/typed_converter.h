#pragma once

#include "binding/converter.h"
#include "binding/native_conversion.h"

namespace wex {

template <class T>
class TypedBindingConverter final : public BindingConverter {
  public:
    void FromBinding(BindingProperty& status, void* native, const BindingProperty& input, std::string_view name,
                     const BindingTypeRegistry& registry) const override {
        wex::FromBinding(status, *static_cast<T*>(native), input, name, registry);
    }
    void ToBinding(BindingProperty& result, const void* native, const BindingTypeRegistry& registry) const override {
        wex::ToBinding(result, *static_cast<const T*>(native), registry);
    }
};

// The one converter of T.
template <class T>
const BindingConverter& ConverterOf() {
    static const TypedBindingConverter<T> converter;
    return converter;
}

}  // namespace wex
