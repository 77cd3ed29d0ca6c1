// SPDX-License-Identifier: MIT
#pragma once

#include <span>

#include <larynth/Interface.h>

namespace larynth {

/// Creates an object of one class, standing alone or as a part of `pUnkOuter`, and writes its `riid`
/// interface; CreateInstance<Class> has this form.
using CreateOperation = HRESULT (*)(IUnknown* pUnkOuter, REFIID riid, void** ppv) noexcept;

/// Creates the objects of one class.
///
/// It stands outside the object kit, because it is a part of the module like a function: it is there as long
/// as the module is and is never destroyed. Existing alone it must not hold the module; each reference that a
/// client has does, so references are counted as uses of the module and nowhere else. What AddRef and Release
/// return says no more than that. Factories, unlike objects, may be used by many threads at once, and no
/// thread's use slows another's down.
class ClassFactory final : public IClassFactory {
  public:
    constexpr ClassFactory(CreateOperation create) noexcept : create_(create) {}
    ClassFactory(const ClassFactory&) = delete;
    ClassFactory& operator=(const ClassFactory&) = delete;

    HRESULT LARYNTH_CALL QueryInterface(REFIID riid, void** ppv) noexcept override;
    ULONG LARYNTH_CALL AddRef() noexcept override;
    ULONG LARYNTH_CALL Release() noexcept override;

    HRESULT LARYNTH_CALL CreateInstance(IUnknown* pUnkOuter, REFIID riid, void** ppvObject) noexcept override;
    HRESULT LARYNTH_CALL LockServer(BOOL fLock) noexcept override;

  private:
    const CreateOperation create_;
};

/// A row of the class table.
struct ClassEntry {
    CLSID Id;
    LONG Script;  ///< Number of the registry script among the module's resources.
    ClassFactory Factory;
};

/// The creatable classes of this module; every module defines its own. The order of the rows is the order of
/// look-up and of registration.
std::span<ClassEntry> ClassTable() noexcept;

/// Whether registering the module registers a type library too; every module defines its own.
bool HasTypeLibrary() noexcept;

}  // namespace larynth
