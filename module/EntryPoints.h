// SPDX-License-Identifier: MIT
/// What a component module exports. The component runtime finds these functions by name.
#pragma once

#include <larynth/Interface.h>

#ifdef _WIN32
#define LARYNTH_MODULE_API extern "C"
#else
#define LARYNTH_MODULE_API extern "C" __attribute__((visibility("default")))
#endif

/// The class object of `rclsid` as `riid` (IUnknown or IClassFactory), with a reference for the caller.
/// E_POINTER, CLASS_E_CLASSNOTAVAILABLE, E_OUTOFMEMORY, E_NOINTERFACE.
LARYNTH_MODULE_API HRESULT LARYNTH_CALL DllGetClassObject(REFCLSID rclsid, REFIID riid, void** ppv);

/// Writes the module's classes, then its type library if it has one, into the user's registration store; the
/// code of the first failure. DISP_E_EXCEPTION for a class that cannot be written: LarynthLastError() says
/// why.
LARYNTH_MODULE_API HRESULT LARYNTH_CALL DllRegisterServer();

/// Takes the classes out again, passing over failures; the type library stays. Always S_OK.
LARYNTH_MODULE_API HRESULT LARYNTH_CALL DllUnregisterServer();

/// S_OK when nothing holds the module in memory, else S_FALSE.
LARYNTH_MODULE_API HRESULT LARYNTH_CALL DllCanUnloadNow();
