// SPDX-License-Identifier: MIT
#include "companion/TTSVoice.h"

#include "companion/AttachedObject.h"

namespace larynth {

HRESULT TTSVoice::GetVoicingSource(REFIID riid, IUnknown** ppSource) noexcept {
    return HandOut(source_, riid, ppSource);
}

HRESULT TTSVoice::GetPreEmphasis(double* pdValue) noexcept { return Put(pdValue, preEmphasis_); }
HRESULT TTSVoice::GetOpenQuotient(double* pdValue) noexcept { return Put(pdValue, openQuotient_); }

HRESULT TTSVoice::GetLowF(double* pdValue) noexcept { return Put(pdValue, low_.F); }
HRESULT TTSVoice::GetLowP3(double* pdValue) noexcept { return Put(pdValue, low_.P3); }
HRESULT TTSVoice::GetLowP4(double* pdValue) noexcept { return Put(pdValue, low_.P4); }
HRESULT TTSVoice::GetLowG(double* pdValue) noexcept { return Put(pdValue, low_.G); }
HRESULT TTSVoice::GetHighF(double* pdValue) noexcept { return Put(pdValue, high_.F); }
HRESULT TTSVoice::GetHighP3(double* pdValue) noexcept { return Put(pdValue, high_.P3); }
HRESULT TTSVoice::GetHighP4(double* pdValue) noexcept { return Put(pdValue, high_.P4); }
HRESULT TTSVoice::GetHighG(double* pdValue) noexcept { return Put(pdValue, high_.G); }

HRESULT TTSVoice::SetVoicingSource(IUnknown* pSource) noexcept {
    return GuardedAlive([&]() -> HRESULT {
        ComPtr<ITTSVoicingSource> source;
        if (pSource != nullptr && !source.TryQuery(pSource)) return E_NOINTERFACE;
        source_ = ComPtr<IUnknown>::Adopt(source.Detach());
        return S_OK;
    });
}

HRESULT TTSVoice::SetPreEmphasis(double dValue) noexcept {
    preEmphasis_ = dValue;
    return S_OK;
}

HRESULT TTSVoice::SetOpenQuotient(double dValue) noexcept {
    openQuotient_ = dValue;
    return S_OK;
}

HRESULT TTSVoice::SetLowFilter(double dF, double dG, double dP3, double dP4) noexcept {
    low_ = {dF, dG, dP3, dP4};
    return S_OK;
}

HRESULT TTSVoice::SetHighFilter(double dF, double dG, double dP3, double dP4) noexcept {
    high_ = {dF, dG, dP3, dP4};
    return S_OK;
}

}  // namespace larynth
