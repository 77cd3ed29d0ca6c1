// SPDX-License-Identifier: MIT
#pragma once

#include <utility>

#include <larynth/TypeLibrary.h>

#include "runtime/SharedObject.h"
#include "runtime/typelib/Contents.h"

namespace larynth {

/// A library that was read, as clients see it.
class TypeLibrary final : public SharedObject<ILarynthTypeLibrary> {
  public:
    explicit TypeLibrary(TypeLibraryContents contents) : contents_(std::move(contents)) {}

    HRESULT LARYNTH_CALL GetLibrary(LarynthLibraryInfo* pInfo) noexcept override;
    HRESULT LARYNTH_CALL GetType(int nType, LarynthTypeInfo* pInfo) noexcept override;
    HRESULT LARYNTH_CALL GetFunction(int nType, int nFunction, LarynthFunctionInfo* pInfo) noexcept override;
    HRESULT LARYNTH_CALL GetParameter(int nType, int nFunction, int nParameter,
                                      LarynthParameterInfo* pInfo) noexcept override;
    HRESULT LARYNTH_CALL GetImplemented(int nType, int nInterface,
                                        LarynthImplementedInfo* pInfo) noexcept override;

  private:
    /// Null for an index outside.
    const DescribedType* Type(int type) const noexcept;
    const DescribedFunction* Function(int type, int function) const noexcept;

    const TypeLibraryContents contents_;
};

}  // namespace larynth
