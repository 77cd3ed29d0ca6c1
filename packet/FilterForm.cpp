// SPDX-License-Identifier: MIT
#include "packet/FilterForm.h"

#include <span>

namespace larynth {

namespace {

/// Computes alpha and beta, the numerators and denominators of all sections multiplied.
void Convert(KlattPacketData& packet) noexcept {
    packet.Converted(Frame::Sections::Cascade);
    Frame& frame = packet.frame;
    double gain = 1.0;  // the A of all sections, gathered into beta

    // A resonator is A / (1 − B·z^−1 − C·z^−2).
    std::array<double, Frame::kCascadePoles> poleB, poleC;
    for (std::size_t i = 0; i < poleB.size(); ++i) {
        const auto [A, B, C] = frame.sections.At(Frame::kFirstCascadePole + i);
        gain *= A;
        poleB[i] = -B;
        poleC[i] = -C;
    }

    // An antiresonator is A·(1 + (B/A)·z^−1 + (C/A)·z^−2).
    std::array<double, Frame::kCascadeZeros> zeroB, zeroC;
    for (std::size_t i = 0; i < zeroB.size(); ++i) {
        const auto [A, B, C] = frame.sections.At(Frame::kFirstCascadeZero + i);
        gain *= A;
        zeroB[i] = B / A;
        zeroC[i] = C / A;
    }

    const auto den = MultiplyQuadratics(poleB, poleC);
    const auto num = MultiplyQuadratics(zeroB, zeroC);
    for (std::size_t k = 0; k < frame.alpha.size(); ++k) frame.alpha[k] = -den[k + 1];
    frame.beta[0] = gain;
    for (std::size_t k = 1; k < frame.beta.size(); ++k) frame.beta[k] = gain * num[k];
    packet.validity |= KlattPacketData::kFilterDataValid;
}

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
    return Put(pnDegree, static_cast<int>(Frame::kFeedbackCount));
}

HRESULT FilterFace::GetBetaDegree(int* pnDegree) noexcept {
    return Put(pnDegree, static_cast<int>(Frame::kFeedForwardCount));
}

HRESULT FilterFace::SetAlpha(int nIndex, double dValue) noexcept {
    return StoreIn(Data(), Data().frame.alpha, nIndex, dValue);
}

HRESULT FilterFace::GetAlpha(int nIndex, double* pdValue) noexcept {
    return ReadFrom(Data().frame.alpha, nIndex, pdValue);
}

HRESULT FilterFace::SetBeta(int nIndex, double dValue) noexcept {
    return StoreIn(Data(), Data().frame.beta, nIndex, dValue);
}

HRESULT FilterFace::GetBeta(int nIndex, double* pdValue) noexcept {
    return ReadFrom(Data().frame.beta, nIndex, pdValue);
}

HRESULT FilterFace::ConvertToFilter() noexcept {
    Convert(Data());
    return S_OK;
}

// The bit as it stands in the word: 2, not 1.
HRESULT FilterFace::IsFilterDataValid(LONG* pbValid) noexcept {
    return Put(pbValid, Data().validity & KlattPacketData::kFilterDataValid);
}

}  // namespace larynth
