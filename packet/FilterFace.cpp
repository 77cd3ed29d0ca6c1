// SPDX-License-Identifier: MIT
#include "packet/FilterFace.h"

#include <span>

#include "packet/FilterForm.h"

namespace larynth {

namespace {

/// The coefficient, or null for an index outside.
double* At(std::span<double> coefficients, int nIndex) noexcept {
    if (nIndex < 0 || nIndex >= static_cast<int>(coefficients.size())) return nullptr;
    return &coefficients[static_cast<std::size_t>(nIndex)];
}

HRESULT StoreIn(KlattPacketData& packet, std::span<double> coefficients, int nIndex, double dValue) noexcept {
    double* coefficient = At(coefficients, nIndex);
    if (coefficient == nullptr) return E_FAIL;
    *coefficient = dValue;
    packet.validity = KlattPacketData::kFilterDataValid;
    return S_OK;
}

HRESULT ReadFrom(std::span<double> coefficients, int nIndex, double* pdValue) noexcept {
    if (!CanWrite(pdValue)) return E_POINTER;
    const double* coefficient = At(coefficients, nIndex);
    if (coefficient == nullptr) return E_FAIL;
    *pdValue = *coefficient;
    return S_OK;
}

}  // namespace

HRESULT FilterFace::GetAlphaDegree(int* pnDegree) noexcept {
    return Put(pnDegree, static_cast<int>(KlattPacketData::kAlphaCount));
}

HRESULT FilterFace::GetBetaDegree(int* pnDegree) noexcept {
    return Put(pnDegree, static_cast<int>(KlattPacketData::kBetaCount));
}

HRESULT FilterFace::SetAlpha(int nIndex, double dValue) noexcept {
    return StoreIn(Data(), Data().alpha, nIndex, dValue);
}

HRESULT FilterFace::GetAlpha(int nIndex, double* pdValue) noexcept {
    return ReadFrom(Data().alpha, nIndex, pdValue);
}

HRESULT FilterFace::SetBeta(int nIndex, double dValue) noexcept {
    return StoreIn(Data(), Data().beta, nIndex, dValue);
}

HRESULT FilterFace::GetBeta(int nIndex, double* pdValue) noexcept {
    return ReadFrom(Data().beta, nIndex, pdValue);
}

HRESULT FilterFace::ConvertToFilter() noexcept {
    ConvertToFilterForm(Data());
    return S_OK;
}

// The bit as it stands in the word: 2, not 1.
HRESULT FilterFace::IsFilterDataValid(LONG* pbValid) noexcept {
    return Put(pbValid, Data().validity & KlattPacketData::kFilterDataValid);
}

}  // namespace larynth
