// SPDX-License-Identifier: MIT
/// A voice: what it may supply to a synthesizer, and how a host fills the one that this system ships. Slots
/// that the synthesizer does not call are named Reserved<slot>; this system's voice answers them with
/// E_NOTIMPL.
#pragma once

#include <larynth/Interface.h>

/// A voice, and the source that it may bring. Reserved methods are not called by this system.
struct LARYNTH_INTERFACE(ITTSVoice, "27f82f94-6709-4347-bf02-83a32bc318aa") : IUnknown {
    virtual HRESULT LARYNTH_CALL Reserved3() = 0;
    virtual HRESULT LARYNTH_CALL Reserved4() = 0;
    virtual HRESULT LARYNTH_CALL Reserved5() = 0;
    virtual HRESULT LARYNTH_CALL Reserved6() = 0;
    virtual HRESULT LARYNTH_CALL Reserved7() = 0;
    virtual HRESULT LARYNTH_CALL Reserved8() = 0;
    virtual HRESULT LARYNTH_CALL Reserved9() = 0;
    /// The voice's own voicing source as `riid`, with a reference for the caller; null and S_OK when it has
    /// none.
    virtual HRESULT LARYNTH_CALL GetVoicingSource(REFIID riid /*in*/, IUnknown** ppSource /*out*/) = 0;
};

/// What a voice changes about source and output. Reserved methods are not called by this system.
struct LARYNTH_INTERFACE(ITTSVoiceSourceParams, "90237de7-232a-49de-bed4-32292ed99a49") : IUnknown {
    virtual HRESULT LARYNTH_CALL Reserved3() = 0;
    virtual HRESULT LARYNTH_CALL Reserved4() = 0;
    virtual HRESULT LARYNTH_CALL Reserved5() = 0;
    virtual HRESULT LARYNTH_CALL Reserved6() = 0;
    virtual HRESULT LARYNTH_CALL Reserved7() = 0;
    virtual HRESULT LARYNTH_CALL Reserved8() = 0;
    virtual HRESULT LARYNTH_CALL Reserved9() = 0;
    /// Coefficient a of the output stage y[n] − a·y[n−1]; 0 turns it off.
    virtual HRESULT LARYNTH_CALL GetPreEmphasis(double* pdValue /*out*/) = 0;
    virtual HRESULT LARYNTH_CALL Reserved11() = 0;
    /// Open quotient for a wave-table source.
    virtual HRESULT LARYNTH_CALL GetOpenQuotient(double* pdValue /*out*/) = 0;
};

/// The two output shelf filters: F is a corner frequency in Hz, G a linear gain (a filter runs only while G >
/// 1), P3 and P4 shape the curve.
struct LARYNTH_INTERFACE(ITTSVoiceFilterParams, "521b55ad-a989-48e5-9645-f8997a98714f") : IUnknown {
    virtual HRESULT LARYNTH_CALL Reserved3() = 0;
    virtual HRESULT LARYNTH_CALL Reserved4() = 0;
    virtual HRESULT LARYNTH_CALL Reserved5() = 0;
    virtual HRESULT LARYNTH_CALL Reserved6() = 0;
    virtual HRESULT LARYNTH_CALL GetLowF(double* pdValue /*out*/) = 0;
    virtual HRESULT LARYNTH_CALL GetLowP3(double* pdValue /*out*/) = 0;
    virtual HRESULT LARYNTH_CALL GetLowP4(double* pdValue /*out*/) = 0;
    virtual HRESULT LARYNTH_CALL GetLowG(double* pdValue /*out*/) = 0;
    virtual HRESULT LARYNTH_CALL Reserved11() = 0;
    virtual HRESULT LARYNTH_CALL Reserved12() = 0;
    virtual HRESULT LARYNTH_CALL Reserved13() = 0;
    virtual HRESULT LARYNTH_CALL Reserved14() = 0;
    virtual HRESULT LARYNTH_CALL GetHighF(double* pdValue /*out*/) = 0;
    virtual HRESULT LARYNTH_CALL GetHighP3(double* pdValue /*out*/) = 0;
    virtual HRESULT LARYNTH_CALL GetHighP4(double* pdValue /*out*/) = 0;
    virtual HRESULT LARYNTH_CALL GetHighG(double* pdValue /*out*/) = 0;
};

/// Fills this system's voice. A new voice has no source, pre-emphasis 0, open quotient 0.5 and both filters
/// off (G = 1, other values 0). Values are taken as they are; a synthesizer reads them when the voice is set
/// on it.
struct LARYNTH_INTERFACE(ITTSVoiceSettings, "9e450909-a8d1-4dea-9ddf-c65e144b2080") : IUnknown {
    /// Held with a reference; null removes it. E_NOINTERFACE, nothing changed, when it is no
    /// ITTSVoicingSource.
    virtual HRESULT LARYNTH_CALL SetVoicingSource(IUnknown* pSource /*in*/) = 0;
    /// Coefficient a of y[n] − a·y[n−1]; 0 turns it off.
    virtual HRESULT LARYNTH_CALL SetPreEmphasis(double dValue /*in*/) = 0;
    /// Open quotient for a wave-table source.
    virtual HRESULT LARYNTH_CALL SetOpenQuotient(double dValue /*in*/) = 0;
    /// The filter that raises low frequencies, as ITTSVoiceFilterParams has it.
    virtual HRESULT LARYNTH_CALL SetLowFilter(double dF /*in*/, double dG /*in*/, double dP3 /*in*/,
                                              double dP4 /*in*/) = 0;
    /// The filter that raises high frequencies, as ITTSVoiceFilterParams has it.
    virtual HRESULT LARYNTH_CALL SetHighFilter(double dF /*in*/, double dG /*in*/, double dP3 /*in*/,
                                               double dP4 /*in*/) = 0;
};
