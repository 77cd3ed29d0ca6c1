// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <utility>

#include <larynth/TypeLibrary.h>

#include "runtime/TypeLibraryContents.h"

namespace larynth {

/// A library that was read, as clients see it. Counted atomically: it is shared by threads, unlike a
/// component. Born with one reference, its creator's.
class TypeLibrary final : public ILarynthTypeLibrary {
  public:
    explicit TypeLibrary(TypeLibraryContents contents) : contents_(std::move(contents)) {}

    HRESULT LARYNTH_CALL QueryInterface(REFIID riid, void** ppv) noexcept override;
    ULONG LARYNTH_CALL AddRef() noexcept override;
    ULONG LARYNTH_CALL Release() noexcept override;

    HRESULT LARYNTH_CALL GetLibrary(LarynthLibraryInfo* pInfo) noexcept override;
    HRESULT LARYNTH_CALL GetType(int nType, LarynthTypeInfo* pInfo) noexcept override;
    HRESULT LARYNTH_CALL GetFunction(int nType, int nFunction, LarynthFunctionInfo* pInfo) noexcept override;
    HRESULT LARYNTH_CALL GetParameter(int nType, int nFunction, int nParameter,
                                      LarynthParameterInfo* pInfo) noexcept override;
    HRESULT LARYNTH_CALL GetImplemented(int nType, int nInterface,
                                        LarynthImplementedInfo* pInfo) noexcept override;

  private:
    ~TypeLibrary() = default;

    /// Null for an index outside.
    const DescribedType* Type(int type) const noexcept;
    const DescribedFunction* Function(int type, int function) const noexcept;

    const TypeLibraryContents contents_;
    std::atomic<ULONG> count_{1};
};

}  // namespace larynth
