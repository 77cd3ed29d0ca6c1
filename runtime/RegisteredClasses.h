// SPDX-License-Identifier: MIT
#pragma once

#include <larynth/Base.h>

namespace larynth {

/// The class object of a class that the user's registration store knows, from the module that the store
/// names: it is loaded, and from then on among the modules of the process. CLASS_E_CLASSNOTAVAILABLE when the
/// store does not know the class. Raises Failure when the store cannot be read, with CO_E_DLLNOTFOUND when
/// the module cannot be loaded and CO_E_ERRORINDLL when it is no component module; and std::bad_alloc.
///
/// The store is opened anew each time: this is the last place where a class is looked for.
HRESULT GetRegisteredClassObject(REFCLSID rclsid, REFIID riid, void** ppv);

}  // namespace larynth
