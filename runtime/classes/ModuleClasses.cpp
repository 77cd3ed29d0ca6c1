// SPDX-License-Identifier: MIT
#include "runtime/classes/ModuleClasses.h"

#include <optional>
#include <string>

#include <larynth/Runtime.h>

#include "runtime/Failure.h"
#include "runtime/classes/ClassObjects.h"
#include "runtime/classes/LoadedModules.h"
#include "runtime/store/RegistrationStore.h"
#include "runtime/store/StoreFile.h"

namespace larynth {

namespace {

constinit NeverDestroyed<LoadedModules> modules;

/// The module of a class in the user's registration store or else in the system's.
std::optional<std::string> RegisteredModule(const std::string& classText) {
    const std::string key = "HKEY_CLASSES_ROOT\\CLSID\\" + classText + "\\InprocServer32";
    for (const std::string& file : {UsersStoreFile(), SystemStoreFile()}) {
        if (auto path = RegistrationStore(file).Value(key, "")) return path;
    }
    return std::nullopt;
}

/// The class object of a class that a registration store knows, from the module that the store
/// names: it is loaded, and from then on among the modules of the process. CLASS_E_CLASSNOTAVAILABLE when no
/// store knows the class. Raises Failure when a store cannot be read, with CO_E_DLLNOTFOUND when
/// the module cannot be loaded and CO_E_ERRORINDLL when it is no component module.
///
/// The stores are opened anew each time: this is the last place where a class is looked for.
HRESULT GetRegisteredClassObject(REFCLSID rclsid, REFIID riid, void** ppv) {
    const std::string classText = ClassText(rclsid);
    const std::optional<std::string> path = RegisteredModule(classText);
    if (!path) return CLASS_E_CLASSNOTAVAILABLE;
    if (!path->starts_with('/')) {
        throw Failure(CO_E_DLLNOTFOUND, "the registered module of class " + classText + ": " + *path +
                                            ": expected an absolute path");
    }
    // Held here too, so that nobody frees the module before it was asked.
    const LoadedModule module = LoadedModule::Load(path->c_str());
    if (const HRESULT hr = modules->Load(path->c_str()); FAILED(hr)) {
        throw Failure(hr, "the registered module of class " + classText + ": " + LarynthLastError());
    }
    return modules->GetClassObject(rclsid, riid, ppv);
}

}  // namespace

HRESULT GetModuleClassObject(REFCLSID rclsid, REFIID riid, void** ppv) {
    const HRESULT hr = modules->GetClassObject(rclsid, riid, ppv);
    return hr != CLASS_E_CLASSNOTAVAILABLE ? hr : GetRegisteredClassObject(rclsid, riid, ppv);
}

HRESULT LoadModule(LPCSTR path) { return modules->Load(ModuleFile(path, CO_E_DLLNOTFOUND).c_str()); }

void FreeUnusedModules() { modules->FreeUnused(); }

}  // namespace larynth
