#pragma once

// Marks the one function a plug-in library exports to its host: a dllexport
// on Windows, where nothing else of the library is exported, and default
// visibility elsewhere, where everything else is hidden.
#ifdef _WIN32
#define TAV_LIBRARY_EXPORT __declspec(dllexport)
#else
#define TAV_LIBRARY_EXPORT __attribute__((visibility("default")))
#endif
