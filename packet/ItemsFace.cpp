// SPDX-License-Identifier: MIT
#include "packet/ItemsFace.h"

namespace larynth {

namespace {

constexpr std::string_view kDescription = "No description available !";

HRESULT PutIndex(int* pnIndex, std::optional<int> index) noexcept {
    if (!index) return E_FAIL;
    *pnIndex = *index;
    return S_OK;
}

}  // namespace

HRESULT ItemsFace::GetItemsCount(int* pnCount) noexcept { return Put(pnCount, kItemCount); }

HRESULT ItemsFace::GetIDFromIndex(int nIndex, int* pnID) noexcept {
    if (!CanWrite(pnID)) return E_POINTER;
    if (!IsItem(nIndex)) return E_FAIL;
    *pnID = Item(nIndex).id;
    return S_OK;
}

HRESULT ItemsFace::GetIndexFromID(int nID, int* pnIndex) noexcept {
    if (!CanWrite(pnIndex)) return E_POINTER;
    return PutIndex(pnIndex, IndexFromID(nID));
}

HRESULT ItemsFace::GetIndexFromName(LPSTR sName, int* pnIndex) noexcept {
    if (!CanWrite(pnIndex) || IsBadReadPtr(sName, 1) != FALSE) return E_POINTER;
    return PutIndex(pnIndex, IndexFromName(sName));
}

HRESULT ItemsFace::GetItemName(int nIndex, LPSTR pcBuffer, int nLen) noexcept {
    if (!CanFill(pcBuffer, nLen)) return E_POINTER;
    if (!IsItem(nIndex)) return E_FAIL;
    return PutText(pcBuffer, nLen, Item(nIndex).name);
}

HRESULT ItemsFace::GetItemDescription(int, LPSTR pcBuffer, int nLen, int) noexcept {
    if (!CanFill(pcBuffer, nLen)) return E_POINTER;
    return PutText(pcBuffer, nLen, kDescription);
}

HRESULT ItemsFace::GetItemValue(int nIndex, double* pdValue) noexcept {
    if (!CanWrite(pdValue)) return E_POINTER;
    if (!IsItem(nIndex)) return E_FAIL;
    *pdValue = Data().Item(nIndex);
    return S_OK;
}

HRESULT ItemsFace::SetItemValue(int nIndex, double dValue) noexcept {
    if (!IsItem(nIndex)) return E_FAIL;
    Data().Item(nIndex) = dValue;
    return S_OK;
}

}  // namespace larynth
