#include "host/plugin_base.h"

namespace wex {

PluginBase::~PluginBase() = default;

void PluginBase::Finalize() {}

void PluginBase::Connect(std::uint32_t hostContext, std::string name, std::string userAgent) {
    hostContext_ = hostContext;
    name_ = std::move(name);
    userAgent_ = std::move(userAgent);
}

}  // namespace wex
