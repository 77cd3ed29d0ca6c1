// SPDX-License-Identifier: MIT
/// Sources of excitation: voicing, its filter, aspiration and frication noise. Each is one role of the
/// synthesizer and can be replaced by any object that answers the interface.
///
/// Common rules: SetParams takes one frame's packet, `riid` is not used; CalculateNext advances by one sample
/// and accepts a null out-pointer; GetOutputValue repeats the last sample without advancing: E_FAIL before
/// the first one, E_POINTER for a bad pointer.
#pragma once

#include <larynth/Interface.h>

/// Voiced excitation. Every voicing source speaks it.
struct LARYNTH_INTERFACE(ITTSVoicingSource, "2eb73728-2fea-475e-b536-5e1458294a90") : IUnknown {
    virtual HRESULT LARYNTH_CALL SetSampleFreq(double dValue /*in*/) = 0;  ///< Hz; no range check.
    virtual HRESULT LARYNTH_CALL SetF0(double dValue /*in*/) = 0;          ///< Hz; 0 is silence.
    virtual HRESULT LARYNTH_CALL SetVolume(double dValue /*in*/) = 0;      ///< Linear amplitude.
    virtual HRESULT LARYNTH_CALL Reset() = 0;  ///< Restarts the period, where there is one.
    virtual HRESULT LARYNTH_CALL CalculateNext(double* pdValue /*out*/) = 0;
    virtual HRESULT LARYNTH_CALL GetOutputValue(double* pdValue /*out*/) = 0;
    /// Reads the packet's voice values. E_FAIL, with nothing changed, for a packet that lacks an interface or
    /// fails.
    virtual HRESULT LARYNTH_CALL SetParams(IUnknown* pIParams /*in*/, REFIID riid /*in*/) = 0;
};

/// The standard glottal model.
struct LARYNTH_INTERFACE(ITTSVoicingSourceStd, "ac3e0b5b-c291-4709-8c1e-26038dabf68e") : IUnknown {
    virtual HRESULT LARYNTH_CALL SetOQ(double dValue /*in*/) = 0;  ///< Open quotient.
    virtual HRESULT LARYNTH_CALL
    SetFL(double dValue /*in*/) = 0;  ///< No effect; flutter is the filter's work.
    virtual HRESULT LARYNTH_CALL SetFLT(double dValue /*in*/) = 0;  ///< No effect, likewise.
    virtual HRESULT LARYNTH_CALL SetDI(double dValue /*in*/) = 0;   ///< Diplophonia, 0 to 1.
    virtual HRESULT LARYNTH_CALL SetTL(double dValue /*in*/) = 0;   ///< No effect; tilt is the filter's work.
};

/// A source by radial basis functions. Declared for sources that other modules bring; this system has none.
struct LARYNTH_INTERFACE(ITTSVoicingSourceRBF, "2f314fdb-43c4-4bc7-a4cc-dcf9ea5ee53c") : IUnknown {
    virtual HRESULT LARYNTH_CALL SetDefaultPitch(double dValue /*in*/) = 0;  ///< Hz.
    virtual HRESULT LARYNTH_CALL GetDefaultPitch(double* pDefaultPitch /*out*/) = 0;
    virtual HRESULT LARYNTH_CALL LoadFromRBF(LPSTR sFileName /*in*/) = 0;
    virtual HRESULT LARYNTH_CALL SetHPFilterParam(double dFreq /*in*/) = 0;  ///< Hz.
    virtual HRESULT LARYNTH_CALL GetHPFilterParam(double* pdFreq /*out*/) = 0;
    virtual HRESULT LARYNTH_CALL SetOQ(double dValue /*in*/) = 0;  ///< Open quotient.
    virtual HRESULT LARYNTH_CALL GetOQ(double* pdValue /*out*/) = 0;
};

/// A stored excitation period. The waveform arrives through IACLPersistProperties as the property "Wave".
struct LARYNTH_INTERFACE(ITTSVoicingSourceWave, "bafe9bd1-20c5-4152-9127-c47089bf36a2") : IUnknown {
    /// Tries to open the file, if it is a regular one, reads nothing from it and rebuilds the table. S_OK
    /// whatever the file, null too; E_FAIL when no table can be made for the sample frequency, E_POINTER for
    /// a name that cannot be read up to its terminating zero.
    virtual HRESULT LARYNTH_CALL LoadFromTxt(LPSTR sFileName /*in*/) = 0;
    virtual HRESULT LARYNTH_CALL SetDefaultPitch(double dValue /*in*/) = 0;  ///< Hz; no effect.
    /// S_OK; writes nothing.
    virtual HRESULT LARYNTH_CALL GetDefaultPitch(double* pDefaultPitch /*out*/) = 0;
    virtual HRESULT LARYNTH_CALL SetOQ(double dValue /*in*/) = 0;  ///< At most 0.95; rebuilds the table.
    virtual HRESULT LARYNTH_CALL GetOQ(double* pdValue /*out*/) = 0;
};

/// The stage behind the voicing source: spectral tilt, and flutter by moving the source's F0.
struct LARYNTH_INTERFACE(ITTSVoicingSourceFilter, "fe014372-9313-4adf-bba3-fec76ca387b5") : IUnknown {
    virtual HRESULT LARYNTH_CALL CalculateNext(double dInputValue /*in*/, double* pdValue /*out*/) = 0;
    virtual HRESULT LARYNTH_CALL GetOutputValue(double* pdValue /*out*/) = 0;
    /// E_POINTER for a null or unreadable packet; a packet without voice values is no error; a failing packet
    /// call's code otherwise.
    virtual HRESULT LARYNTH_CALL SetParams(IUnknown* pIParams /*in*/, REFIID riid /*in*/) = 0;
    /// The source whose F0 flutter moves; held with a reference. Null holds none. A failed query's code holds
    /// none.
    virtual HRESULT LARYNTH_CALL SetVoicingSource(IUnknown* pIVoicingSource /*in*/, REFIID riid /*out*/) = 0;
};

/// Aspiration noise, added to voicing in front of the cascade.
struct LARYNTH_INTERFACE(ITTSAspirationSource, "6a015b66-5e4a-429c-9be7-df00cba497dd") : IUnknown {
    virtual HRESULT LARYNTH_CALL CalculateNext(double* pdValue /*out*/) = 0;  ///< Draws one random value.
    virtual HRESULT LARYNTH_CALL GetOutputValue(double* pdValue /*out*/) = 0;
    /// E_FAIL for a packet without aspiration values.
    virtual HRESULT LARYNTH_CALL SetParams(IUnknown* pIParams /*in*/, REFIID riid /*in*/) = 0;
};

/// Frication noise, the input of the parallel tract.
struct LARYNTH_INTERFACE(ITTSFricationSource, "365bf63a-6659-4554-8410-3017ead492d2") : IUnknown {
    virtual HRESULT LARYNTH_CALL CalculateNext(double* pdValue /*out*/) = 0;  ///< Draws one random value.
    virtual HRESULT LARYNTH_CALL GetOutputValue(double* pdValue /*out*/) = 0;
    /// E_FAIL for a packet without frication values.
    virtual HRESULT LARYNTH_CALL SetParams(IUnknown* pIParams /*in*/, REFIID riid /*in*/) = 0;
};
