// SPDX-License-Identifier: MIT
#pragma once

#include "components/TractObject.h"
#include "engine/CascadeTract.h"

namespace larynth {

/// The cascade tract as a chain of sections: nasal zero, nasal pole, F1 … F5.
class TTSVocalTractR final : public TractObject<CascadeTract, ITTSVocalTract, ITTSVocalTractR> {
  public:
    using TractObject::TractObject;

    /// E_FAIL for a packet without cascade values; else the first failing call's code, sections before it
    /// keep their new coefficients. The result is the last GetC's. Poles are read before the zero.
    HRESULT LARYNTH_CALL SetParams(IUnknown* pIParams, REFIID riid) noexcept override;

    HRESULT LARYNTH_CALL GetResonatorsCount(int* pnCount) noexcept override {
        return Put(pnCount, static_cast<int>(Frame::kCascadePoles));
    }
    HRESULT LARYNTH_CALL GetAntiResonatorsCount(int* pnCount) noexcept override {
        return Put(pnCount, static_cast<int>(Frame::kCascadeZeros));
    }
    HRESULT LARYNTH_CALL SetResonator(int nIndex, double A, double B, double C) noexcept override {
        if (nIndex < 0 || nIndex >= static_cast<int>(Frame::kCascadePoles)) return E_FAIL;
        core_.Poles().Set(static_cast<std::size_t>(nIndex), {A, B, C});
        return S_OK;
    }
    HRESULT LARYNTH_CALL SetAntiResonator(int nIndex, double A, double B, double C) noexcept override {
        if (nIndex != 0) return E_FAIL;
        core_.Zero().SetABC(A, B, C);
        return S_OK;
    }
};

}  // namespace larynth
