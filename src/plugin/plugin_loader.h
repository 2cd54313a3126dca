#pragma once

#include <memory>

#include "boundary/boundary.h"

namespace wex {

// The body of a plug-in's exported entry: builds the module and runs its load
// sequence. A missing load record or any failure while loading gives null.
template <class Module>
void* LoadPlugin(PluginLoadInfo* info) noexcept {
    if (info == nullptr) {
        return nullptr;
    }
    try {
        auto module = std::make_unique<Module>();
        module->Load(*info);
        return module.release();
    } catch (...) {
        return nullptr;
    }
}

}  // namespace wex
