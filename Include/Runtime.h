// SPDX-License-Identifier: MIT
/// The component runtime: finding classes, creating objects, the memory probes behind the out-pointer rule,
/// and the noise generator that all modules of a process share.
///
/// A class is looked up among the class objects that the process registered, then among the modules that are
/// loaded in the process, then in the registration store.
///
/// On Windows the system's own runtime and registry do that, and what is declared here is what they do not
/// have.
#pragma once

#include <larynth/Interface.h>

#ifdef _WIN32

#define LARYNTH_RUNTIME_API extern "C"

#else

#define LARYNTH_RUNTIME_API extern "C" __attribute__((visibility("default")))

inline constexpr DWORD CLSCTX_INPROC_SERVER = 1;  ///< The one context that there is.
inline constexpr DWORD REGCLS_MULTIPLEUSE = 1;    ///< One class object serves any number of creations.

/// Creates an object of class `rclsid` and writes its `riid` interface; the caller owns the reference. With
/// an outer object only IUnknown may be asked for. REGDB_E_CLASSNOTREG for a class that nobody offers,
/// CO_E_DLLNOTFOUND for a registered module that cannot be loaded or whose path is not absolute,
/// REGDB_E_READREGDB for a registration store that cannot be read or is not to be trusted, E_POINTER,
/// E_INVALIDARG for another context, or the class factory's code.
LARYNTH_RUNTIME_API HRESULT LARYNTH_CALL CoCreateInstance(REFCLSID rclsid, IUnknown* pUnkOuter,
                                                          DWORD dwClsContext, REFIID riid, void** ppv);

/// The class object (usually IClassFactory) of a class; codes as for CoCreateInstance. `pvReserved` is null.
LARYNTH_RUNTIME_API HRESULT LARYNTH_CALL CoGetClassObject(REFCLSID rclsid, DWORD dwClsContext,
                                                          void* pvReserved, REFIID riid, void** ppv);

/// Offers a class object of the process's own; held with a reference until CoRevokeClassObject. The one
/// registered last is found first. E_POINTER, E_INVALIDARG for another context or flag, E_OUTOFMEMORY.
LARYNTH_RUNTIME_API HRESULT LARYNTH_CALL CoRegisterClassObject(REFCLSID rclsid, IUnknown* pUnk,
                                                               DWORD dwClsContext, DWORD flags,
                                                               DWORD* lpdwRegister);

/// Withdraws a class object by the number that its registration gave; CO_E_OBJNOTREG for another number.
LARYNTH_RUNTIME_API HRESULT LARYNTH_CALL CoRevokeClassObject(DWORD dwRegister);

/// Unloads the modules that say they can be unloaded; not while a look-up is going on. As a module cannot
/// tell when its own last release has returned, no other thread may be inside one.
LARYNTH_RUNTIME_API void LARYNTH_CALL CoFreeUnusedLibraries();

/// True when any of the `nBytes` bytes at `pMemory` cannot be read. Exact, and nothing is changed.
/// Zero bytes are always accessible.
LARYNTH_RUNTIME_API BOOL LARYNTH_CALL IsBadReadPtr(const void* pMemory, std::size_t nBytes);
/// The same for bytes that cannot be written.
LARYNTH_RUNTIME_API BOOL LARYNTH_CALL IsBadWritePtr(void* pMemory, std::size_t nBytes);

#endif

/// Loads a module so that its classes are found in this process. A relative path is taken from the working
/// folder, and refused in a process that runs with more rights than its caller; nothing is looked for along
/// the loader's path. CO_E_DLLNOTFOUND when it cannot be loaded, CO_E_ERRORINDLL when it is no component
/// module; LarynthLastError() then says why. On Windows the classes that its registry scripts name are found
/// in the calling thread's apartment or, where it has none, in that of all threads that have none.
LARYNTH_RUNTIME_API HRESULT LARYNTH_CALL LarynthLoadModule(LPCSTR sPath);

/// What the calling thread's last failed runtime call had to say, for a person; never null, valid until its
/// next failure.
LARYNTH_RUNTIME_API LPCSTR LARYNTH_CALL LarynthLastError();

/// Sets the state of the noise generator (1 at start). Nothing in the system does it by itself.
LARYNTH_RUNTIME_API void LARYNTH_CALL LarynthSeedNoise(unsigned nSeed);
