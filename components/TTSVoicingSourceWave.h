// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include <larynth/Packet.h>
#include <larynth/Properties.h>
#include <larynth/Sources.h>

#include "com/ComObject.h"
#include "components/ElementOutput.h"
#include "engine/WaveTablePlayer.h"

namespace larynth {

/// The wave-table source: plays a stored excitation waveform, which arrives as the property "Wave".
///
/// The table is built from the waveform by SetOQ, LoadFromTxt and LoadProperties, for the sample frequency of
/// that moment. They give E_FAIL, with open quotient and table unchanged, when no table can be built: for a
/// frequency that is negative, not a number or above 800 MHz, and for an open quotient that is no number.
class TTSVoicingSourceWave final
    : public ComObject<IACLClone, ITTSVoicingSource, ITTSVoicingSourceWave, IACLPersistProperties> {
  public:
    using RecognisedBy = ITTSVoicingSource;
    using ComObject::ComObject;

    /// E_FAIL: a wave source cannot be overwritten.
    HRESULT LARYNTH_CALL Copy(IUnknown* pSource) noexcept override;
    /// The clone has frequencies, amplitude, default pitch and the last output, but no waveform, no table and
    /// an open quotient of its own: it is silent until it gets them.
    HRESULT LARYNTH_CALL Clone(REFIID Id, IUnknown** ppClone) noexcept override;

    HRESULT LARYNTH_CALL SetSampleFreq(double dValue) noexcept override {
        return player_.SetSampleFreq(dValue), S_OK;
    }
    HRESULT LARYNTH_CALL SetF0(double dValue) noexcept override { return player_.SetF0(dValue), S_OK; }
    HRESULT LARYNTH_CALL SetVolume(double dValue) noexcept override {
        return player_.SetAmplitude(dValue), S_OK;
    }
    /// No effect: the phase runs on.
    HRESULT LARYNTH_CALL Reset() noexcept override { return S_OK; }
    /// With F0 = 0 nothing happens and nothing is written.
    HRESULT LARYNTH_CALL CalculateNext(double* pdValue) noexcept override {
        return player_.IsSounding() ? WriteSample(player_.Evaluate(), pdValue) : S_OK;
    }
    HRESULT LARYNTH_CALL GetOutputValue(double* pdValue) noexcept override {
        return PutOutput(player_, pdValue);
    }
    /// E_FAIL, with nothing changed, when the packet lacks an interface or a getter gives anything but S_OK.
    /// The result is the success code of the query for ILarynthParams. AV is taken as a linear amplitude.
    HRESULT LARYNTH_CALL SetParams(IUnknown* pIParams, REFIID riid) noexcept override;

    HRESULT LARYNTH_CALL LoadFromTxt(LPSTR sFileName) noexcept override;
    HRESULT LARYNTH_CALL SetDefaultPitch(double /*dValue*/) noexcept override { return S_OK; }
    HRESULT LARYNTH_CALL GetDefaultPitch(double* pDefaultPitch) noexcept override;
    HRESULT LARYNTH_CALL SetOQ(double dValue) noexcept override;
    HRESULT LARYNTH_CALL GetOQ(double* pdValue) noexcept override { return Put(pdValue, player_.OQ()); }

    HRESULT LARYNTH_CALL DescribeProperties(IACLPropertySink* pSink) noexcept override;
    HRESULT LARYNTH_CALL LoadProperties(IACLPropertySource* pSource) noexcept override;
    HRESULT LARYNTH_CALL SetPropertyValue(IUnknown* pReserved1, LPCSTR sName, LONG nReserved3,
                                          const void* pValue, LONG nType, LONG nReserved6, LONG nReserved7,
                                          IUnknown* pIndex) noexcept override;
    HRESULT LARYNTH_CALL GetPropertyValue(IACLValueHolder* pHolder, LPCSTR sName, LONG nReserved3,
                                          IUnknown* pIndex) noexcept override;
    HRESULT LARYNTH_CALL GetClassID(CLSID* pClassID) noexcept override;
    HRESULT LARYNTH_CALL GetProgID(LPCSTR* psProgID) noexcept override;

    /// The element inside, for whoever recognised the object as this module's own.
    WaveTablePlayer& Element() noexcept { return player_; }

  private:
    void StoreElement(int index, int size, double value);

    WaveTablePlayer player_;
    std::vector<double> wave_;
};

}  // namespace larynth
