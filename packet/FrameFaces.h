// SPDX-License-Identifier: MIT
/// The faces of a packet that are plain values: timing, voice and noise amplitudes.
#pragma once

#include <larynth/Packet.h>

#include "packet/KlattPacketData.h"

namespace larynth {

class TimingFace : public PacketFace<ILarynthParams> {
  public:
    HRESULT LARYNTH_CALL SetSampleFreq(double dValue) noexcept override;
    HRESULT LARYNTH_CALL GetSampleFreq(double* pdValue) noexcept override;
    HRESULT LARYNTH_CALL SetFrameLen(int nValue) noexcept override;
    HRESULT LARYNTH_CALL GetFrameLen(int* pnValue) noexcept override;
};

class VoiceFace : public PacketFace<ILarynthVoiceParams> {
  public:
    HRESULT LARYNTH_CALL SetAV(double dValue) noexcept override { return Store(ScalarItem::AV, dValue); }
    HRESULT LARYNTH_CALL GetAV(double* pdValue) noexcept override { return Read(ScalarItem::AV, pdValue); }
    HRESULT LARYNTH_CALL GetIDAV(int* pnID) noexcept override { return ReadID(ScalarItem::AV, pnID); }
    HRESULT LARYNTH_CALL SetF0(double dValue) noexcept override { return Store(ScalarItem::F0, dValue); }
    HRESULT LARYNTH_CALL GetF0(double* pdValue) noexcept override { return Read(ScalarItem::F0, pdValue); }
    HRESULT LARYNTH_CALL GetIDF0(int* pnID) noexcept override { return ReadID(ScalarItem::F0, pnID); }
    HRESULT LARYNTH_CALL SetOQ(double dValue) noexcept override { return Store(ScalarItem::OQ, dValue); }
    HRESULT LARYNTH_CALL GetOQ(double* pdValue) noexcept override { return Read(ScalarItem::OQ, pdValue); }
    HRESULT LARYNTH_CALL GetIDOQ(int* pnID) noexcept override { return ReadID(ScalarItem::OQ, pnID); }
    HRESULT LARYNTH_CALL SetFL(double dValue) noexcept override { return Store(ScalarItem::FL, dValue); }
    HRESULT LARYNTH_CALL GetFL(double* pdValue) noexcept override { return Read(ScalarItem::FL, pdValue); }
    HRESULT LARYNTH_CALL GetIDFL(int* pnID) noexcept override { return ReadID(ScalarItem::FL, pnID); }
    HRESULT LARYNTH_CALL SetFLT(double dValue) noexcept override { return Store(ScalarItem::FLT, dValue); }
    HRESULT LARYNTH_CALL GetFLT(double* pdValue) noexcept override { return Read(ScalarItem::FLT, pdValue); }
    HRESULT LARYNTH_CALL GetIDFLT(int* pnID) noexcept override { return ReadID(ScalarItem::FLT, pnID); }
    HRESULT LARYNTH_CALL SetDI(double dValue) noexcept override { return Store(ScalarItem::DI, dValue); }
    HRESULT LARYNTH_CALL GetDI(double* pdValue) noexcept override { return Read(ScalarItem::DI, pdValue); }
    HRESULT LARYNTH_CALL GetIDDI(int* pnID) noexcept override { return ReadID(ScalarItem::DI, pnID); }
    HRESULT LARYNTH_CALL SetTL(double dValue) noexcept override { return Store(ScalarItem::TL, dValue); }
    HRESULT LARYNTH_CALL GetTL(double* pdValue) noexcept override { return Read(ScalarItem::TL, pdValue); }
    HRESULT LARYNTH_CALL GetIDTL(int* pnID) noexcept override { return ReadID(ScalarItem::TL, pnID); }
};

class AspirationFace : public PacketFace<ILarynthAspirationParams> {
  public:
    HRESULT LARYNTH_CALL SetAH(double dValue) noexcept override { return Store(ScalarItem::AH, dValue); }
    HRESULT LARYNTH_CALL GetAH(double* pdValue) noexcept override { return Read(ScalarItem::AH, pdValue); }
    HRESULT LARYNTH_CALL GetIDAH(int* pnID) noexcept override { return ReadID(ScalarItem::AH, pnID); }
};

class FricationFace : public PacketFace<ILarynthFricationParams> {
  public:
    HRESULT LARYNTH_CALL SetAF(double dValue) noexcept override { return Store(ScalarItem::AF, dValue); }
    HRESULT LARYNTH_CALL GetAF(double* pdValue) noexcept override { return Read(ScalarItem::AF, pdValue); }
    HRESULT LARYNTH_CALL GetIDAF(int* pnID) noexcept override { return ReadID(ScalarItem::AF, pnID); }
};

// The packet stores the sample time, which its conversions use: a frequency passes through 1/x twice.
inline HRESULT TimingFace::SetSampleFreq(double dValue) noexcept {
    Data().frame.sampleTime = 1.0 / dValue;
    return S_OK;
}

inline HRESULT TimingFace::GetSampleFreq(double* pdValue) noexcept {
    return Put(pdValue, Data().frame.SampleFreq());
}

inline HRESULT TimingFace::SetFrameLen(int nValue) noexcept {
    Data().frame.length = nValue;
    return S_OK;
}

inline HRESULT TimingFace::GetFrameLen(int* pnValue) noexcept { return Put(pnValue, Data().frame.length); }

}  // namespace larynth
