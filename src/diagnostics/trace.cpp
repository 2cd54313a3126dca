#include "diagnostics/trace.h"

namespace wex {

void Trace(const char*, ...) {}

}  // namespace wex
