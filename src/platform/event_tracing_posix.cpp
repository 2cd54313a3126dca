#include "platform/event_tracing.h"

namespace wex::platform {

// POSIX systems have no event tracing of this kind: the load announcement is skipped.
void RegisterEventTracing() {}
void UnregisterEventTracing() {}

}  // namespace wex::platform
