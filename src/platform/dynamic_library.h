#pragma once

#include <string>

namespace wex::platform {

using LibraryFunction = void (*)();

// Opens the shared library at path as the platform's core process opens a
// plug-in: resolved at once, its symbols kept to itself. keepMapped leaves it
// mapped after CloseDynamicLibrary (where the system allows). Null, with the
// system's reason in error, when it cannot be opened.
void* OpenDynamicLibrary(const std::string& path, bool keepMapped, std::string& error);

// The exported function of that name; null when the library has none.
LibraryFunction FindLibraryFunction(void* library, const char* name);

void CloseDynamicLibrary(void* library);

}  // namespace wex::platform

// Marks the one function a plug-in library exports to its host: a dllexport
// on Windows, where nothing else of the library is exported, and default
// visibility elsewhere, where everything else is hidden.
#ifdef _WIN32
#define TAV_LIBRARY_EXPORT __declspec(dllexport)
#else
#define TAV_LIBRARY_EXPORT __attribute__((visibility("default")))
#endif
