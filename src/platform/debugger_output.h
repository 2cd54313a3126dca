#pragma once

namespace wex::platform {

// Receives every text written to the debugger output, instead of the platform's
// debugger. Called on the writing thread, one call at a time, with the context
// given with it; it must not write to the debugger output itself.
using DebuggerSink = void (*)(const char* text, void* context);

// Writes a zero-terminated text to the debugger output: the attached debugger on
// Windows; elsewhere the installed sink, or nowhere when none is installed.
void OutputDebugText(const char* text);

// Installs a sink (null removes it); tests use it to capture the debugger output.
// Returns the previous sink and its context through the out-parameters when given.
void SetDebuggerSink(DebuggerSink sink, void* context, DebuggerSink* previous = nullptr,
                     void** previousContext = nullptr);

// Writes to the platform's own debugger output; does nothing where there is none.
void WriteToPlatformDebugger(const char* text);

}  // namespace wex::platform
