#pragma once

#include "diagnostics/printf_format.h"

namespace wex {

// The trace channel: takes a printf-style line (its arguments checked by the
// compiler) and discards it.
void Trace(const char* format, ...) WEX_PRINTF_FORMAT(1, 2);

}  // namespace wex
