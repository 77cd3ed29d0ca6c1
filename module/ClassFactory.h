// SPDX-License-Identifier: MIT
#pragma once

#include <mutex>

#include "module/ClassTable.h"

namespace larynth {

/// Creates the objects of one class. Born with one reference, the class table's.
///
/// It stands outside the object kit, because a factory must not hold the module by merely existing: the class
/// table's own reference does not count, every further one does. The count and the module's lock count move
/// together, so the count is guarded by a lock, and factories, unlike objects, may be used by many threads at
/// once.
class ClassFactory final : public IClassFactory {
  public:
    explicit ClassFactory(CreateOperation create) noexcept : create_(create) {}
    ClassFactory(const ClassFactory&) = delete;
    ClassFactory& operator=(const ClassFactory&) = delete;

    HRESULT LARYNTH_CALL QueryInterface(REFIID riid, void** ppv) noexcept override;
    ULONG LARYNTH_CALL AddRef() noexcept override;
    ULONG LARYNTH_CALL Release() noexcept override;

    HRESULT LARYNTH_CALL CreateInstance(IUnknown* pUnkOuter, REFIID riid, void** ppvObject) noexcept override;
    HRESULT LARYNTH_CALL LockServer(BOOL fLock) noexcept override;

  private:
    ~ClassFactory() = default;
    ULONG RemoveReference() noexcept;

    CreateOperation create_;
    std::mutex countLock_;
    ULONG count_ = 1;
};

}  // namespace larynth
