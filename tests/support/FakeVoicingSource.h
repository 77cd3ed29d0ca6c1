// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include <larynth/Sources.h>

namespace larynth {

/// A voicing source that makes no sound: it notes each F0 that is set on it and counts references. It lives
/// where the test puts it.
class FakeVoicingSource final : public ITTSVoicingSource {
  public:
    virtual ~FakeVoicingSource() = default;

    /// Every F0 so far, in order.
    std::vector<double> frequencies;
    /// What queries for ITTSVoicingSource return.
    HRESULT queryCode = S_OK;
    /// What SetF0 returns.
    HRESULT setCode = S_OK;
    int references = 0;

    HRESULT LARYNTH_CALL QueryInterface(REFIID riid, void** ppv) noexcept override {
        const bool known = riid == IID_IUnknown || riid == IID_ITTSVoicingSource;
        const HRESULT code = known ? queryCode : E_NOINTERFACE;
        *ppv = SUCCEEDED(code) ? this : nullptr;
        if (SUCCEEDED(code)) AddRef();
        return code;
    }
    ULONG LARYNTH_CALL AddRef() noexcept override { return static_cast<ULONG>(++references); }
    ULONG LARYNTH_CALL Release() noexcept override { return static_cast<ULONG>(--references); }

    HRESULT LARYNTH_CALL SetSampleFreq(double) noexcept override { return S_OK; }
    HRESULT LARYNTH_CALL SetF0(double dValue) noexcept override {
        frequencies.push_back(dValue);
        return setCode;
    }
    HRESULT LARYNTH_CALL SetVolume(double) noexcept override { return S_OK; }
    HRESULT LARYNTH_CALL Reset() noexcept override { return S_OK; }
    HRESULT LARYNTH_CALL CalculateNext(double* pdValue) noexcept override {
        if (pdValue != nullptr) *pdValue = 0.0;
        return S_OK;
    }
    HRESULT LARYNTH_CALL GetOutputValue(double*) noexcept override { return E_FAIL; }
    HRESULT LARYNTH_CALL SetParams(IUnknown*, REFIID) noexcept override { return S_OK; }
};

}  // namespace larynth
