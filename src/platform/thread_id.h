#pragma once

namespace wex::platform {

// The calling thread's id as the operating system knows it, in a pointer-sized
// value so that log lines can print it with "%p".
const void* CurrentThreadId();

}  // namespace wex::platform
