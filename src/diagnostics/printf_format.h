#pragma once

// Lets the compiler check printf-style arguments against their format.
#if defined(__GNUC__) || defined(__clang__)
#define WEX_PRINTF_FORMAT(formatIndex, firstArgument) __attribute__((format(printf, formatIndex, firstArgument)))
#else
#define WEX_PRINTF_FORMAT(formatIndex, firstArgument)
#endif
