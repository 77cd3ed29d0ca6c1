// SPDX-License-Identifier: MIT
#include "synth/Roles.h"

#include <larynth/Classes.h>
#include <larynth/Packet.h>

#include "com/OutPointer.h"
#include "com/OwnObject.h"
#include "components/NoiseSources.h"
#include "components/TTSParallelTract.h"
#include "components/TTSVocalTractF.h"
#include "components/TTSVocalTractR.h"
#include "components/TTSVoicingSourceFilter.h"
#include "components/TTSVoicingSourceStd.h"
#include "components/TTSVoicingSourceWave.h"
#include "packet/LarynthParams.h"

namespace larynth {

namespace {

bool Answers(IUnknown* object, auto wanted) { return decltype(wanted){}.TryQuery(object); }

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

void TakeFrame(TTSAspirationSource& source, KlattPacketData& packet) {
    source.Element().SetAmplitude(packet.frame.AH);
}

void TakeFrame(TTSFricationSource& source, KlattPacketData& packet) {
    source.Element().SetAmplitude(packet.frame.AF);
}

template <class Own>
void TakeFrame(Own& component, KlattPacketData& packet) {
    auto& element = component.Element();
    element.Take(packet.Converted(element.kSections));
}

/// Hands one packet to one component after the other.
class PacketRound {
  public:
    explicit PacketRound(IUnknown* packet) noexcept
        : packet_(packet), own_(OwnObject<LarynthParams>::Find(packet)) {}

    /// `Own` are the classes of ours that can fill the role.
    template <class... Own, class Role>
    void HandTo(const ComPtr<Role>& role) {
        if (!role) Zelvani::CheckResult(E_FAIL);  // a component that had the packet before emptied it
        if (own_ != nullptr && (TakenBy<Own>(role.Get()) || ...)) return;
        Zelvani::CheckResult(role->SetParams(packet_, IID_ILarynthParams));
    }

    void HandToTracts(const ComPtr<ITTSVocalTract>& cascade, const ComPtr<ITTSParallelTract>& parallel) {
        // Where both take a frame, the sections of both are computed at once.
        if (own_ != nullptr && OwnObject<TTSVocalTractR>::Find(cascade.Get()) != nullptr &&
            OwnObject<TTSParallelTract>::Find(parallel.Get()) != nullptr) {
            static_cast<void>(own_->Values().Converted(Frame::Sections::Both));
        }
        HandTo<TTSVocalTractR, TTSVocalTractF>(cascade);
        HandTo<TTSParallelTract>(parallel);
    }

  private:
    template <class Own>
    bool TakenBy(IUnknown* component) {
        Own* const own = OwnObject<Own>::Find(component);
        if (own != nullptr) TakeFrame(*own, own_->Values());
        return own != nullptr;
    }

    IUnknown* packet_;
    LarynthParams* own_;
};

/// The element of a component that is an `Own`; null for any other.
template <class Own>
auto ElementOf(IUnknown* component) noexcept {
    Own* const own = OwnObject<Own>::Find(component);
    return own != nullptr ? &own->Element() : nullptr;
}

}  // namespace

template <class Role>
HRESULT Roles::Fill(ComPtr<Role>& role, REFCLSID rclsid, bool* filled) {
    if (role) return S_OK;
    ComPtr<Role> made;
    const HRESULT hr = made.Create(rclsid);
    if (FAILED(hr) || role) return hr;
    Assign(role, std::move(made));
    if (filled != nullptr) *filled = true;
    return hr;
}

HRESULT Roles::FillEmpty() {
    bool ownSource = false, ownFilter = false;
    HRESULT hr = Fill(voicingSource, CLSID_TTSVoicingSourceStd, &ownSource);
    if (ownSource) sourceKind_ = SourceKind::Standard;
    if (SUCCEEDED(hr)) hr = Fill(vocalTract, CLSID_TTSVocalTractR);
    if (SUCCEEDED(hr)) hr = Fill(parallelTract, CLSID_TTSParallelTract);
    if (SUCCEEDED(hr)) hr = Fill(aspirationSource, CLSID_TTSAspirationSource);
    if (SUCCEEDED(hr)) hr = Fill(fricationSource, CLSID_TTSFricationSource);
    if (SUCCEEDED(hr)) hr = Fill(voicingFilter, CLSID_TTSVoicingSourceFilter, &ownFilter);
    if (ownFilter) WireVoicingFilter();
    return hr;
}

void Roles::PlugVoicingSource(IUnknown* component) {
    if (!CanCall(component)) throw Zelvani::ComException(E_POINTER, nullptr, nullptr, "", 0);
    if (voicingSource) sourceKind_ = SourceKind::Other;
    Zelvani::CheckResult(Plug(voicingSource, component));
    if (sourceKind_ == SourceKind::Other) {
        const auto source = voicingSource;  // which may leave the role from within a query
        const SourceKind kind = Classify(source.Get());
        if (source.Get() == voicingSource.Get()) sourceKind_ = kind;
    }
    WireVoicingFilter();
}

void Roles::PlugVoiceSource(ComPtr<ITTSVoicingSource> source, ITTSVoiceSourceParams* settings) {
    Assign(voicingSource, source);
    sourceKind_ = SourceKind::Other;  // until it has answered
    const SourceKind kind = ClassifyForVoice(source.Get(), settings);
    if (source.Get() == voicingSource.Get()) sourceKind_ = kind;
    source->Reset();
}

void Roles::KeepOrMakeStandardSource() {
    if (sourceKind_ == SourceKind::Standard) return;
    Assign(voicingSource, {});
    bool ownSource = false;
    if (FAILED(Fill(voicingSource, CLSID_TTSVoicingSourceStd, &ownSource)) || !ownSource) return;
    sourceKind_ = SourceKind::Standard;
    const auto source = voicingSource;
    source->Reset();
}

void Roles::WireVoicingFilter() {
    const auto filter = voicingFilter;  // both may leave their roles meanwhile
    const auto source = voicingSource;
    if (filter) filter->SetVoicingSource(source.Get(), IID_ITTSVoicingSource);
}

bool Roles::Complete() const noexcept {
    return voicingSource && vocalTract && parallelTract && aspirationSource && fricationSource;
}

void Roles::SetParams(IUnknown* packet) {
    PacketRound round(packet);
    round.HandTo<TTSVoicingSourceStd, TTSVoicingSourceWave>(voicingSource);
    round.HandToTracts(vocalTract, parallelTract);
    round.HandTo<TTSAspirationSource>(aspirationSource);
    round.HandTo<TTSFricationSource>(fricationSource);
    if (voicingFilter) round.HandTo<TTSVoicingSourceFilter>(voicingFilter);
}

Roles::Called Roles::ToCall() const {
    if (!Complete()) Zelvani::CheckResult(E_FAIL);
    return {voicingSource.Get(), aspirationSource.Get(), fricationSource.Get(),
            vocalTract.Get(),    parallelTract.Get(),    voicingFilter.Get()};
}

std::optional<Network::Elements> Roles::OwnElements() const noexcept {
    // Filled where the caller gets them: a copy would wait for what was just written.
    std::optional<Network::Elements> elements(std::in_place);
    if (!FindOwn(*elements)) elements.reset();
    return elements;
}

bool Roles::FindOwn(Network::Elements& own) const noexcept {
    own.source = ElementOf<TTSVoicingSourceStd>(voicingSource.Get());
    own.waveSource = ElementOf<TTSVoicingSourceWave>(voicingSource.Get());
    own.aspiration = ElementOf<TTSAspirationSource>(aspirationSource.Get());
    own.frication = ElementOf<TTSFricationSource>(fricationSource.Get());
    own.cascade = ElementOf<TTSVocalTractR>(vocalTract.Get());
    own.filterTract = ElementOf<TTSVocalTractF>(vocalTract.Get());
    own.parallel = ElementOf<TTSParallelTract>(parallelTract.Get());
    if (!own.Complete()) return false;
    if (!voicingFilter) return true;

    auto* const filter = OwnObject<TTSVoicingSourceFilter>::Find(voicingFilter.Get());
    if (filter == nullptr) return false;
    ITTSVoicingSource* const moved = filter->Source();
    own.filter = &filter->Element();
    own.filterMovesSource = moved != nullptr;
    return moved == nullptr || moved == voicingSource.Get();
}

}  // namespace larynth
