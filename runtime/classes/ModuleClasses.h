// SPDX-License-Identifier: MIT
/// The classes that modules offer. runtime/classes/ModuleClasses.cpp looks for modules in the process and in
/// the registration stores; runtime/embedded/ModuleClasses.cpp has those that are linked into the program.
#pragma once

#include <larynth/Base.h>

namespace larynth {

/// Holds an object for the process's whole life: ready before any code runs and never destroyed, so that it
/// can be used while any library is loaded or unloaded.
template <class Object>
class NeverDestroyed {
  public:
    constexpr NeverDestroyed() : object_() {}
    ~NeverDestroyed() {}  // NOLINT(modernize-use-equals-default): it would end what the union holds
    NeverDestroyed(const NeverDestroyed&) = delete;
    NeverDestroyed& operator=(const NeverDestroyed&) = delete;

    Object* operator->() noexcept { return &object_; }  // NOLINT(*-pro-type-union-access): its only member

  private:
    union {
        Object object_;
    };
};

/// The class object of a module's class; CLASS_E_CLASSNOTAVAILABLE when no module offers it. Raises Failure,
/// std::bad_alloc.
HRESULT GetModuleClassObject(REFCLSID rclsid, REFIID riid, void** ppv);

/// What LarynthLoadModule does; raises Failure, std::bad_alloc.
HRESULT LoadModule(LPCSTR path);

/// What CoFreeUnusedLibraries does; raises std::bad_alloc.
void FreeUnusedModules();

}  // namespace larynth
