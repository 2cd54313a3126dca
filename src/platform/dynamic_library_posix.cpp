#include <dlfcn.h>

#include "platform/dynamic_library.h"

namespace wex::platform {

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
