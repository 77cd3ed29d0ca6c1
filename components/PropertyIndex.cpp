// SPDX-License-Identifier: MIT
#include "components/PropertyIndex.h"

#include <cstring>

#include "com/Boundary.h"
#include "com/OutPointer.h"

namespace larynth {

HRESULT LARYNTH_CALL PropertyIndex::QueryInterface(REFIID riid, void** ppv) noexcept {
    if (!CanWrite(ppv)) return E_POINTER;
    const bool answered = riid == IID_IUnknown || riid == IID_IACLPropertyIndex;
    *ppv = answered ? static_cast<IACLPropertyIndex*>(this) : nullptr;
    return answered ? S_OK : E_FAIL;
}

HRESULT LARYNTH_CALL PropertyIndex::SetDimensionCount(int nCount) noexcept {
    if (nCount < 0 || nCount > kMostDimensions) return E_FAIL;
    return Guarded([&] { return dimensions_.resize(static_cast<std::size_t>(nCount)), S_OK; });
}

HRESULT LARYNTH_CALL PropertyIndex::GetDimensionCount(int* pnCount) noexcept {
    return Put(pnCount, static_cast<int>(dimensions_.size()));
}

HRESULT LARYNTH_CALL PropertyIndex::SetSize(int nDimension, int nSize) noexcept {
    return Store(nDimension, &Dimension::size, nSize);
}

HRESULT LARYNTH_CALL PropertyIndex::SetIndex(int nDimension, int nIndex) noexcept {
    return Store(nDimension, &Dimension::index, nIndex);
}

HRESULT LARYNTH_CALL PropertyIndex::SetName(int nDimension, LPCSTR sName) noexcept {
    Dimension* const dimension = Find(nDimension);
    if (dimension == nullptr) return E_FAIL;
    if (sName == nullptr) return E_POINTER;
    return Guarded([&] { return dimension->name = sName, S_OK; });
}

HRESULT LARYNTH_CALL PropertyIndex::GetSize(int nDimension, int* pnSize) noexcept {
    return Read(nDimension, &Dimension::size, pnSize);
}

HRESULT LARYNTH_CALL PropertyIndex::GetIndex(int nDimension, int* pnIndex) noexcept {
    return Read(nDimension, &Dimension::index, pnIndex);
}

HRESULT LARYNTH_CALL PropertyIndex::GetNameLength(int nDimension, int* pnLength) noexcept {
    if (!CanWrite(pnLength)) return E_POINTER;
    const Dimension* const dimension = Find(nDimension);
    return dimension != nullptr ? Put(pnLength, static_cast<int>(dimension->name.size())) : E_FAIL;
}

HRESULT LARYNTH_CALL PropertyIndex::GetName(int nDimension, LPSTR sBuffer) noexcept {
    const Dimension* const dimension = Find(nDimension);
    if (dimension == nullptr) return E_FAIL;
    const std::size_t size = dimension->name.size() + 1;
    if (!CanWriteBytes(sBuffer, size)) return E_POINTER;
    std::memcpy(sBuffer, dimension->name.c_str(), size);
    return S_OK;
}

PropertyIndex::Dimension* PropertyIndex::Find(int dimension) noexcept {
    const bool exists = dimension >= 0 && static_cast<std::size_t>(dimension) < dimensions_.size();
    return exists ? &dimensions_[static_cast<std::size_t>(dimension)] : nullptr;
}

HRESULT PropertyIndex::Store(int dimension, int Dimension::*field, int value) noexcept {
    Dimension* const found = Find(dimension);
    if (found == nullptr) return E_FAIL;
    found->*field = value;
    return S_OK;
}

HRESULT PropertyIndex::Read(int dimension, int Dimension::*field, int* target) noexcept {
    if (!CanWrite(target)) return E_POINTER;
    const Dimension* const found = Find(dimension);
    return found != nullptr ? Put(target, found->*field) : E_FAIL;
}

}  // namespace larynth
