#include "host/plugin_base.h"

#include <vector>

#include "api/live_addresses.h"
#include "binding/type_identity.h"

namespace wex {

PluginBase::PluginBase() : lifeSerial_(LiveModules().Add(this)) {}

PluginBase::~PluginBase() {
    LiveModules().Remove(this);
}

void PluginBase::Connect(std::uint32_t hostContext, std::string name, std::string userAgent) {
    hostContext_ = hostContext;
    name_ = std::move(name);
    userAgent_ = std::move(userAgent);
}

void PluginBase::Finalize() {
    std::vector<std::string> names;
    for (const auto& entry : hostEventHandlers_) {
        names.push_back(entry.first);
    }
    for (const std::string& name : names) {
        UnsubscribeHostEvent(name.c_str(), hostContext_);
    }
    hostEventHandlers_.clear();
    lcdsHandlers_.clear();
    serviceProxy_.Clear();
    observers_.Clear();
}

void PluginBase::RegisterLcdsClassName(std::string typeName, const BindingTypeIdentity& type, std::string className) {
    lcdsClassNamesByType_.insert_or_assign(type.id, className);
    lcdsClassNamesByTypeName_.insert_or_assign(std::move(typeName), std::move(className));
}

std::string_view PluginBase::FindLcdsClassName(std::string_view typeName) const {
    const auto found = lcdsClassNamesByTypeName_.find(typeName);
    return found != lcdsClassNamesByTypeName_.end() ? std::string_view(found->second) : std::string_view();
}

std::string_view PluginBase::FindLcdsClassName(const BindingTypeIdentity& type) const {
    const auto found = lcdsClassNamesByType_.find(type.id);
    return found != lcdsClassNamesByType_.end() ? std::string_view(found->second) : std::string_view();
}

}  // namespace wex
