// The platform layer on Windows, except page memory and event tracing, which
// have files of their own, and the allocation wrappers, which only the shared
// library links.
#include <malloc.h>
#include <windows.h>
#include <array>
#include <cstdint>
#include <string>

#include "platform/debugger_output.h"
#include "platform/dynamic_library.h"
#include "platform/event_tracing.h"
#include "platform/memory_accounting.h"
#include "platform/page_memory.h"
#include "platform/process_info.h"

namespace wex::platform {

const void* CurrentThreadId() {
    return reinterpret_cast<const void*>(static_cast<std::uintptr_t>(GetCurrentThreadId()));
}

std::string ExecutableName() {
    std::array<char, MAX_PATH + 1> path;
    DWORD length = GetModuleFileNameA(nullptr, path.data(), static_cast<DWORD>(path.size()));
    // A path that fills the buffer has been cut.
    if (length == 0 || length >= path.size()) {
        return {};
    }
    return std::string(path.data(), length);
}

LocalTime CurrentLocalTime() {
    SYSTEMTIME now;
    GetLocalTime(&now);
    return LocalTime{now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond, now.wMilliseconds};
}

void WriteToPlatformDebugger(const char* text) {
    OutputDebugStringA(text);
}

std::size_t AllocatedSize(void* block) noexcept {
    return block != nullptr ? _msize(block) : 0;
}

namespace {

// The system's text for an error code, without its line end.
std::string ErrorText(DWORD code) {
    char* text = nullptr;
    DWORD length =
        FormatMessageA(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                       nullptr, code, 0, reinterpret_cast<char*>(&text), 0, nullptr);
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
