// SPDX-License-Identifier: MIT
/// The vocal tract: cascade in its two forms, and parallel branch. The rules of Sources.h hold here as well.
#pragma once

#include <larynth/Interface.h>

/// The cascade tract, whatever its form.
struct LARYNTH_INTERFACE(ITTSVocalTract, "9280ba2e-1534-43fd-b357-71b237d047c9") : IUnknown {
    /// E_FAIL for a packet without the form's values. The resonator form stops at a failing packet call and
    /// returns its code; sections set before keep their new coefficients.
    virtual HRESULT LARYNTH_CALL SetParams(IUnknown* pIParams /*in*/, REFIID riid /*in*/) = 0;
    /// Advances by one sample, whose input is given; null is allowed.
    virtual HRESULT LARYNTH_CALL CalculateNext(double dInputValue /*in*/, double* pdValue /*out*/) = 0;
    /// The last sample again, without advancing.
    virtual HRESULT LARYNTH_CALL GetOutputValue(double* pdValue /*out*/) = 0;
};

/// The resonator form: coefficients set directly hold until the next SetParams.
struct LARYNTH_INTERFACE(ITTSVocalTractR, "6800e67e-527f-4da6-96ec-4c60da8f3fe2") : IUnknown {
    virtual HRESULT LARYNTH_CALL GetResonatorsCount(int* pnCount /*out*/) = 0;      ///< 6.
    virtual HRESULT LARYNTH_CALL GetAntiResonatorsCount(int* pnCount /*out*/) = 0;  ///< 1.
    /// y[n] = A·x[n] + B·y[n−1] + C·y[n−2]; E_FAIL for an index outside.
    virtual HRESULT LARYNTH_CALL SetResonator(int nIndex /*in*/, double A /*in*/, double B /*in*/,
                                              double C /*in*/) = 0;
    /// y[n] = A·x[n] + B·x[n−1] + C·x[n−2]; E_FAIL for an index outside.
    virtual HRESULT LARYNTH_CALL SetAntiResonator(int nIndex /*in*/, double A /*in*/, double B /*in*/,
                                                  double C /*in*/) = 0;
};

/// Marks the filter form; has no methods.
struct LARYNTH_INTERFACE(ITTSVocalTractF, "98daa4bf-7559-4f89-b3fb-95ee22432045") : IUnknown {};

/// The parallel branch.
struct LARYNTH_INTERFACE(ITTSParallelTract, "b6d9f6f4-5cdc-48b9-9a64-00c790010259") : IUnknown {
    /// E_FAIL for a packet without parallel values; a failing resonator call's code otherwise.
    virtual HRESULT LARYNTH_CALL SetParams(IUnknown* pIParams /*in*/, REFIID riid /*in*/) = 0;
    /// Advances by one sample, whose input is given; null is allowed.
    virtual HRESULT LARYNTH_CALL CalculateNext(double dInputValue /*in*/, double* pdValue /*out*/) = 0;
    /// The last sample again, without advancing.
    virtual HRESULT LARYNTH_CALL GetOutputValue(double* pdValue /*out*/) = 0;
};
