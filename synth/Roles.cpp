// SPDX-License-Identifier: MIT
#include "synth/Roles.h"

#include <larynth/Classes.h>
#include <larynth/Packet.h>

#include "com/OutPointer.h"

namespace larynth {

namespace {

template <class Role>
HRESULT Fill(ComPtr<Role>& role, REFCLSID rclsid) {
    return role ? S_OK : role.Create(rclsid);
}

bool Answers(IUnknown* object, auto interface) { return decltype(interface){}.TryQuery(object); }

/// Passes a voice's open quotient on, where there is a voice that has one.
template <class Source>
void TransferOpenQuotient(Source& source, ITTSVoiceSourceParams* settings) {
    if (settings == nullptr) return;
    double openQuotient = 0.0;
    settings->GetOpenQuotient(&openQuotient);
    source.SetOQ(openQuotient);
}

SourceKind Classify(IUnknown* source) {
    if (Answers(source, ComPtr<ITTSVoicingSourceRBF>())) return SourceKind::Rbf;
    if (Answers(source, ComPtr<ITTSVoicingSourceStd>())) return SourceKind::Standard;
    if (Answers(source, ComPtr<ITTSVoicingSourceWave>())) return SourceKind::Wave;
    return SourceKind::Other;
}

/// As Classify, but a source that is both wave table and standard counts as a wave table, whose open quotient
/// is the voice's to set.
SourceKind ClassifyForVoice(IUnknown* source, ITTSVoiceSourceParams* settings) {
    if (ComPtr<ITTSVoicingSourceRBF> rbf; rbf.TryQuery(source)) {
        TransferOpenQuotient(*rbf.Get(), settings);
        return SourceKind::Rbf;
    }
    if (ComPtr<ITTSVoicingSourceWave> wave; wave.TryQuery(source)) {
        TransferOpenQuotient(*wave.Get(), settings);
        return SourceKind::Wave;
    }
    return Answers(source, ComPtr<ITTSVoicingSourceStd>()) ? SourceKind::Standard : SourceKind::Other;
}

}  // namespace

HRESULT Roles::FillEmpty() {
    if (!voicingSource) {
        if (const HRESULT hr = voicingSource.Create(CLSID_TTSVoicingSourceStd); FAILED(hr)) return hr;
        sourceKind_ = SourceKind::Standard;
    }
    HRESULT hr = Fill(vocalTract, CLSID_TTSVocalTractR);
    if (SUCCEEDED(hr)) hr = Fill(parallelTract, CLSID_TTSParallelTract);
    if (SUCCEEDED(hr)) hr = Fill(aspirationSource, CLSID_TTSAspirationSource);
    if (SUCCEEDED(hr)) hr = Fill(fricationSource, CLSID_TTSFricationSource);
    if (FAILED(hr) || voicingFilter) return hr;

    hr = voicingFilter.Create(CLSID_TTSVoicingSourceFilter);
    if (SUCCEEDED(hr)) WireVoicingFilter();
    return hr;
}

void Roles::PlugVoicingSource(IUnknown* component) {
    if (!CanCall(component)) throw Zelvani::ComException(E_POINTER, nullptr, nullptr, "", 0);
    if (voicingSource) sourceKind_ = SourceKind::Other;
    Zelvani::CheckResult(voicingSource.QueryFrom(component));
    if (sourceKind_ == SourceKind::Other) sourceKind_ = Classify(voicingSource.Get());
    WireVoicingFilter();
}

void Roles::PlugVoiceSource(ComPtr<ITTSVoicingSource> source, ITTSVoiceSourceParams* settings) {
    voicingSource.Release();
    voicingSource = std::move(source);
    sourceKind_ = ClassifyForVoice(voicingSource.Get(), settings);
    voicingSource->Reset();
}

void Roles::KeepOrMakeStandardSource() {
    if (sourceKind_ == SourceKind::Standard) return;
    if (FAILED(voicingSource.Create(CLSID_TTSVoicingSourceStd))) return;
    sourceKind_ = SourceKind::Standard;
    voicingSource->Reset();
}

void Roles::WireVoicingFilter() {
    if (voicingFilter) voicingFilter->SetVoicingSource(voicingSource.Get(), IID_ITTSVoicingSource);
}

bool Roles::Complete() const noexcept {
    return voicingSource && vocalTract && parallelTract && aspirationSource && fricationSource;
}

void Roles::SetParams(IUnknown* packet) {
    Zelvani::CheckResult(voicingSource->SetParams(packet, IID_ILarynthParams));
    Zelvani::CheckResult(vocalTract->SetParams(packet, IID_ILarynthParams));
    Zelvani::CheckResult(parallelTract->SetParams(packet, IID_ILarynthParams));
    Zelvani::CheckResult(aspirationSource->SetParams(packet, IID_ILarynthParams));
    Zelvani::CheckResult(fricationSource->SetParams(packet, IID_ILarynthParams));
    if (voicingFilter) Zelvani::CheckResult(voicingFilter->SetParams(packet, IID_ILarynthParams));
}

}  // namespace larynth
