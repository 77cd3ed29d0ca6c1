// SPDX-License-Identifier: MIT
/// A module's file in the process's memory, as the system's loader tells.
#pragma once

#include <larynth/Runtime.h>

#ifdef _WIN32

/// A registered one is found without being loaded.
inline bool LoadForClasses(const char* path) { return LoadLibraryA(path) != nullptr; }
inline bool InMemory(const char* path) { return GetModuleHandleA(path) != nullptr; }
inline void* EntryOf(const char* path, const char* name) {
    return reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA(path), name));
}

#else

#include <dlfcn.h>

inline bool LoadForClasses(const char* path) { return LarynthLoadModule(path) == S_OK; }
inline bool InMemory(const char* path) {
    void* const handle = dlopen(path, RTLD_NOW | RTLD_NOLOAD);
    return handle != nullptr && dlclose(handle) == 0;
}
/// An entry point of a loaded module, or null.
inline void* EntryOf(const char* path, const char* name) {
    void* const handle = dlopen(path, RTLD_NOW | RTLD_NOLOAD);
    void* const entry = dlsym(handle, name);
    dlclose(handle);  // the runtime holds it
    return entry;
}

#endif
