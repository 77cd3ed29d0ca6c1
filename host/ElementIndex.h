// SPDX-License-Identifier: MIT
#pragma once

#include <larynth/Properties.h>

#include "host/ClientObject.h"

namespace larynth {

/// Tells an object which element of a one-dimensional array is meant.
class ElementIndex final : public ClientObject<IACLPropertyIndex> {
  public:
    explicit ElementIndex(int size) : size_(size) {}

    HRESULT LARYNTH_CALL SetDimensionCount(int nCount) noexcept override;
    HRESULT LARYNTH_CALL GetDimensionCount(int* pnCount) noexcept override;
    HRESULT LARYNTH_CALL SetSize(int nDimension, int nSize) noexcept override;
    HRESULT LARYNTH_CALL SetIndex(int nDimension, int nIndex) noexcept override;
    HRESULT LARYNTH_CALL SetName(int nDimension, LPCSTR sName) noexcept override;
    HRESULT LARYNTH_CALL GetSize(int nDimension, int* pnSize) noexcept override;
    HRESULT LARYNTH_CALL GetIndex(int nDimension, int* pnIndex) noexcept override;
    HRESULT LARYNTH_CALL GetNameLength(int nDimension, int* pnLength) noexcept override;
    HRESULT LARYNTH_CALL GetName(int nDimension, LPSTR sBuffer) noexcept override;

  private:
    static constexpr char kName[] = " , ";  // of a dimension without a name of its own

    int size_;
    int index_ = 0;
};

}  // namespace larynth
