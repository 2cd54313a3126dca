#pragma once

namespace tav::host {

// gcc defines a macro for instrumented builds; clang answers a feature test.
#if defined(__SANITIZE_ADDRESS__)
inline constexpr bool kUnderAddressSanitizer = true;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
inline constexpr bool kUnderAddressSanitizer = true;
#else
inline constexpr bool kUnderAddressSanitizer = false;
#endif
#else
inline constexpr bool kUnderAddressSanitizer = false;
#endif

}  // namespace tav::host
