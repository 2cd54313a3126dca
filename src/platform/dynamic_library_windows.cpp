#include <windows.h>

#include <string>

#include "platform/dynamic_library.h"

namespace wex::platform {
namespace {

// The system's text for an error code, without its line end.
std::string ErrorText(DWORD code) {
    char* text = nullptr;
    DWORD length = FormatMessageA(
        FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, code,
        0, reinterpret_cast<char*>(&text), 0, nullptr);
    std::string result = length != 0 ? std::string(text, length) : "error " + std::to_string(code);
    LocalFree(text);
    while (!result.empty() && (result.back() == '\n' || result.back() == '\r' || result.back() == ' ')) {
        result.pop_back();
    }
    return result;
}

}  // namespace

// Paths arrive in UTF-8 and may use forward slashes; the system wants UTF-16
// and backslashes.
void* OpenDynamicLibrary(const std::string& path, bool /*keepMapped*/, std::string& error) {
    std::wstring widePath;
    if (!path.empty()) {
        int length = MultiByteToWideChar(CP_UTF8, 0, path.data(), static_cast<int>(path.size()), nullptr, 0);
        widePath.resize(static_cast<std::size_t>(length));
        MultiByteToWideChar(CP_UTF8, 0, path.data(), static_cast<int>(path.size()), widePath.data(), length);
    }
    for (wchar_t& c : widePath) {
        if (c == L'/') {
            c = L'\\';
        }
    }
    HMODULE library = LoadLibraryW(widePath.c_str());
    if (library == nullptr) {
        error = ErrorText(GetLastError());
    }
    return library;
}

LibraryFunction FindLibraryFunction(void* library, const char* name) {
    return reinterpret_cast<LibraryFunction>(GetProcAddress(static_cast<HMODULE>(library), name));
}

void CloseDynamicLibrary(void* library) {
    FreeLibrary(static_cast<HMODULE>(library));
}

}  // namespace wex::platform
