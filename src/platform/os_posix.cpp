// The platform layer on POSIX systems: everything that its headers declare,
// except the allocation wrappers, which only the shared library links.
#include <dlfcn.h>
#include <malloc.h>
#include <pthread.h>
#include <sys/mman.h>
#include <time.h>
#include <unistd.h>
#include <array>
#include <cstdint>
#include <string_view>

#include "platform/debugger_output.h"
#include "platform/dynamic_library.h"
#include "platform/event_tracing.h"
#include "platform/memory_accounting.h"
#include "platform/page_memory.h"
#include "platform/process_info.h"

namespace wex::platform {

const void* CurrentThreadId() {
#ifdef __linux__
    // The kernel's id, the one that debuggers and process tools show.
    return reinterpret_cast<const void*>(static_cast<std::uintptr_t>(gettid()));
#else
    return reinterpret_cast<const void*>(pthread_self());
#endif
}

std::string ExecutableName() {
    std::array<char, 4096> path;
    ssize_t length = readlink("/proc/self/exe", path.data(), path.size());
    if (length <= 0 || static_cast<std::size_t>(length) >= path.size()) {
        return {};
    }
    std::string_view full(path.data(), static_cast<std::size_t>(length));
    std::size_t slash = full.rfind('/');
    return std::string(slash == std::string_view::npos ? full : full.substr(slash + 1));
}

LocalTime CurrentLocalTime() {
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    tm parts{};
    localtime_r(&now.tv_sec, &parts);
    return LocalTime{parts.tm_year + 1900,
                     parts.tm_mon + 1,
                     parts.tm_mday,
                     parts.tm_hour,
                     parts.tm_min,
                     parts.tm_sec,
                     static_cast<std::int32_t>(now.tv_nsec / 1'000'000)};
}

// There is no debugger output channel on POSIX systems; without a sink the text is dropped.
void WriteToPlatformDebugger(const char*) {}

// POSIX systems have no event tracing of this kind: the load announcement is skipped.
void RegisterEventTracing() {}
void UnregisterEventTracing() {}

std::size_t AllocatedSize(void* block) noexcept {
    return block != nullptr ? malloc_usable_size(block) : 0;
}

void* AllocatePages(std::size_t size) noexcept {
    void* pages = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    return pages == MAP_FAILED ? nullptr : pages;
}

void FreePages(void* pages, std::size_t size) noexcept {
    munmap(pages, size);
}

void* OpenDynamicLibrary(const std::string& path, bool keepMapped, std::string& error) {
    void* library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL | (keepMapped ? RTLD_NODELETE : 0));
    if (library == nullptr) {
        const char* reason = dlerror();
        error = reason != nullptr ? reason : "unknown error";
    }
    return library;
}

LibraryFunction FindLibraryFunction(void* library, const char* name) {
    return reinterpret_cast<LibraryFunction>(dlsym(library, name));
}

void CloseDynamicLibrary(void* library) {
    dlclose(library);
}

}  // namespace wex::platform
