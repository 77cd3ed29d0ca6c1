// SPDX-License-Identifier: MIT
#include "runtime/RegisteredClasses.h"

#include <optional>
#include <string>

#include <larynth/Runtime.h>

#include "runtime/ClassText.h"
#include "runtime/LastError.h"
#include "runtime/LoadedModules.h"
#include "runtime/RegistrationStore.h"
#include "runtime/StoreFile.h"

namespace larynth {

HRESULT GetRegisteredClassObject(REFCLSID rclsid, REFIID riid, void** ppv) {
    const std::string classText = ClassText(rclsid).text;
    const std::optional<std::string> path =
        RegistrationStore(StoreFile())
            .Value("HKEY_CLASSES_ROOT\\CLSID\\" + classText + "\\InprocServer32", "");
    if (!path) return CLASS_E_CLASSNOTAVAILABLE;
    // Held here too, so that nobody frees the module before it was asked.
    const LoadedModule module = LoadedModule::Load(path->c_str());
    if (const HRESULT hr = ModulesOfProcess().Load(path->c_str()); FAILED(hr)) {
        throw Failure(hr, "the registered module of class " + classText + ": " + LarynthLastError());
    }
    return ModulesOfProcess().GetClassObject(rclsid, riid, ppv);
}

}  // namespace larynth
