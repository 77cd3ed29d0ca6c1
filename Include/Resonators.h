// SPDX-License-Identifier: MIT
/// Views of one resonator or antiresonator of a packet, in its two forms: frequency, bandwidth and gain, or
/// the three coefficients of the difference equation. Either form is converted on demand with the packet's
/// sample time.
///
/// A view that no packet handed out is bound to nothing: all its methods give E_FAIL.
#pragma once

#include <larynth/Interface.h>

/// Frequency form of a resonator.
struct LARYNTH_INTERFACE(ITTSResonatorFBParams, "99356597-6fba-4662-b6a7-30b7b12e9eed") : IUnknown {
    /// A number for the client; no meaning here.
    virtual HRESULT LARYNTH_CALL SetState(int nState /*in*/) = 0;
    virtual HRESULT LARYNTH_CALL GetState(int* pnState /*out*/) = 0;
    virtual HRESULT LARYNTH_CALL SetFreq(double dValue /*in*/) = 0;  ///< Centre frequency, Hz.
    virtual HRESULT LARYNTH_CALL SetBW(double dValue /*in*/) = 0;    ///< Bandwidth, Hz.
    virtual HRESULT LARYNTH_CALL SetGain(double dValue /*in*/) = 0;  ///< Linear gain at 0 Hz.
    virtual HRESULT LARYNTH_CALL GetFreq(double* pdValue /*out*/) = 0;
    virtual HRESULT LARYNTH_CALL GetBW(double* pdValue /*out*/) = 0;
    virtual HRESULT LARYNTH_CALL GetGain(double* pdValue /*out*/) = 0;
    virtual HRESULT LARYNTH_CALL GetIDFreq(int* pnID /*out*/) = 0;  ///< Item ID, see ITTSDoublePacket.
    virtual HRESULT LARYNTH_CALL GetIDBW(int* pnID /*out*/) = 0;
    virtual HRESULT LARYNTH_CALL GetIDGain(int* pnID /*out*/) = 0;
};

/// Coefficient form of a resonator: y[n] = A·x[n] + B·y[n−1] + C·y[n−2].
struct LARYNTH_INTERFACE(ITTSResonatorABCParams, "8df08078-a22e-4180-85c2-c2af3977a654") : IUnknown {
    virtual HRESULT LARYNTH_CALL SetState(int nState /*in*/) = 0;  ///< The same number as in frequency form.
    virtual HRESULT LARYNTH_CALL GetState(int* pnState /*out*/) = 0;
    virtual HRESULT LARYNTH_CALL SetA(double dValue /*in*/) = 0;
    virtual HRESULT LARYNTH_CALL SetB(double dValue /*in*/) = 0;
    virtual HRESULT LARYNTH_CALL SetC(double dValue /*in*/) = 0;
    virtual HRESULT LARYNTH_CALL GetA(double* pdValue /*out*/) = 0;
    virtual HRESULT LARYNTH_CALL GetB(double* pdValue /*out*/) = 0;
    virtual HRESULT LARYNTH_CALL GetC(double* pdValue /*out*/) = 0;
    virtual HRESULT LARYNTH_CALL GetIDA(int* pnID /*out*/) = 0;  ///< E_FAIL: coefficients are no items.
    virtual HRESULT LARYNTH_CALL GetIDB(int* pnID /*out*/) = 0;  ///< E_FAIL.
    virtual HRESULT LARYNTH_CALL GetIDC(int* pnID /*out*/) = 0;  ///< E_FAIL.
};

/// Where a resonator lives.
struct LARYNTH_INTERFACE(ITTSResonatorStructInfo, "f3194a3b-381e-43e7-952c-466e473a1797") : IUnknown {
    /// The owning packet's QueryInterface and its result.
    virtual HRESULT LARYNTH_CALL QueryPacketInterface(REFIID riid /*in*/, IUnknown** ppIPacket /*out*/) = 0;
    /// Unit 0 is the cascade, 1 the parallel tract; the index counts from 0. Either pointer may be null.
    virtual HRESULT LARYNTH_CALL GetLocation(int* pnUnit /*out*/, int* pnIndex /*out*/) = 0;
};

/// Frequency form of an antiresonator.
struct LARYNTH_INTERFACE(ITTSAntiResonatorFBParams, "c498b6e7-3648-445e-9afa-3a387f006745") : IUnknown {
    /// A number for the client; no meaning here.
    virtual HRESULT LARYNTH_CALL SetState(int nState /*in*/) = 0;
    virtual HRESULT LARYNTH_CALL GetState(int* pnState /*out*/) = 0;
    virtual HRESULT LARYNTH_CALL SetFreq(double dValue /*in*/) = 0;  ///< Centre frequency, Hz.
    virtual HRESULT LARYNTH_CALL SetBW(double dValue /*in*/) = 0;    ///< Bandwidth, Hz.
    virtual HRESULT LARYNTH_CALL SetGain(double dValue /*in*/) = 0;  ///< Linear gain at 0 Hz.
    virtual HRESULT LARYNTH_CALL GetFreq(double* pdValue /*out*/) = 0;
    virtual HRESULT LARYNTH_CALL GetBW(double* pdValue /*out*/) = 0;
    virtual HRESULT LARYNTH_CALL GetGain(double* pdValue /*out*/) = 0;
    virtual HRESULT LARYNTH_CALL GetIDFreq(int* pnID /*out*/) = 0;  ///< Item ID, see ITTSDoublePacket.
    virtual HRESULT LARYNTH_CALL GetIDBW(int* pnID /*out*/) = 0;
    virtual HRESULT LARYNTH_CALL GetIDGain(int* pnID /*out*/) = 0;
};

/// Coefficient form of an antiresonator: y[n] = A·x[n] + B·x[n−1] + C·x[n−2].
struct LARYNTH_INTERFACE(ITTSAntiResonatorABCParams, "ab57f985-4332-43da-a75a-2e199b58ba8d") : IUnknown {
    virtual HRESULT LARYNTH_CALL SetState(int nState /*in*/) = 0;  ///< The same number as in frequency form.
    virtual HRESULT LARYNTH_CALL GetState(int* pnState /*out*/) = 0;
    virtual HRESULT LARYNTH_CALL SetA(double dValue /*in*/) = 0;
    virtual HRESULT LARYNTH_CALL SetB(double dValue /*in*/) = 0;
    virtual HRESULT LARYNTH_CALL SetC(double dValue /*in*/) = 0;
    virtual HRESULT LARYNTH_CALL GetA(double* pdValue /*out*/) = 0;
    virtual HRESULT LARYNTH_CALL GetB(double* pdValue /*out*/) = 0;
    virtual HRESULT LARYNTH_CALL GetC(double* pdValue /*out*/) = 0;
    virtual HRESULT LARYNTH_CALL GetIDA(int* pnID /*out*/) = 0;  ///< E_FAIL: coefficients are no items.
    virtual HRESULT LARYNTH_CALL GetIDB(int* pnID /*out*/) = 0;  ///< E_FAIL.
    virtual HRESULT LARYNTH_CALL GetIDC(int* pnID /*out*/) = 0;  ///< E_FAIL.
};

/// Where an antiresonator lives.
struct LARYNTH_INTERFACE(ITTSAntiResonatorStructInfo, "c1b87f1a-7323-491b-99f9-cbef0f69a4d0") : IUnknown {
    /// The owning packet's QueryInterface and its result.
    virtual HRESULT LARYNTH_CALL QueryPacketInterface(REFIID riid /*in*/, IUnknown** ppIPacket /*out*/) = 0;
    /// Unit 0 is the cascade; the index counts from 0. Either pointer may be null.
    virtual HRESULT LARYNTH_CALL GetLocation(int* pnUnit /*out*/, int* pnIndex /*out*/) = 0;
};
