#pragma once

#include "diagnostics/log_target.h"
#include "boundary/boundary.h"

namespace wex {

// Forwards the plug-in's log to the host's Log function once the module has
// started: each record becomes one line in the target's pattern.
class PluginLogTarget : public LogTarget {
public:
    explicit PluginLogTarget(const CoreApi* api) : api_(api) {}

    const char* TypeName() const override { return "PluginLogTarget"; }
    bool Write(const LogRecord& record) override;

private:
    const CoreApi* api_;  // owned by the host, valid until Stop
};

}  // namespace wex
