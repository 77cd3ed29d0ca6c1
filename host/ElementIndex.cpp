// SPDX-License-Identifier: MIT
#include "host/ElementIndex.h"

#include <cstring>

namespace larynth {
namespace {

HRESULT Give(int dimension, int value, int* target) noexcept {
    if (target == nullptr) return E_POINTER;
    if (dimension != 0) return E_FAIL;
    *target = value;
    return S_OK;
}

HRESULT Take(int dimension, int value, int& target) noexcept {
    if (dimension != 0) return E_FAIL;
    target = value;
    return S_OK;
}

}  // namespace

HRESULT LARYNTH_CALL ElementIndex::SetDimensionCount(int nCount) noexcept {
    return nCount == 1 ? S_OK : E_FAIL;
}
HRESULT LARYNTH_CALL ElementIndex::GetDimensionCount(int* pnCount) noexcept { return Give(0, 1, pnCount); }
HRESULT LARYNTH_CALL ElementIndex::SetSize(int nDimension, int nSize) noexcept {
    return Take(nDimension, nSize, size_);
}
HRESULT LARYNTH_CALL ElementIndex::SetIndex(int nDimension, int nIndex) noexcept {
    return Take(nDimension, nIndex, index_);
}
HRESULT LARYNTH_CALL ElementIndex::SetName(int /*nDimension*/, LPCSTR /*sName*/) noexcept { return E_FAIL; }
HRESULT LARYNTH_CALL ElementIndex::GetSize(int nDimension, int* pnSize) noexcept {
    return Give(nDimension, size_, pnSize);
}
HRESULT LARYNTH_CALL ElementIndex::GetIndex(int nDimension, int* pnIndex) noexcept {
    return Give(nDimension, index_, pnIndex);
}
HRESULT LARYNTH_CALL ElementIndex::GetNameLength(int nDimension, int* pnLength) noexcept {
    return Give(nDimension, sizeof(kName) - 1, pnLength);
}
HRESULT LARYNTH_CALL ElementIndex::GetName(int nDimension, LPSTR sBuffer) noexcept {
    if (nDimension != 0) return E_FAIL;
    if (sBuffer == nullptr) return E_POINTER;
    std::memcpy(sBuffer, kName, sizeof(kName));
    return S_OK;
}

}  // namespace larynth
