// SPDX-License-Identifier: MIT
#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include <larynth/UtteranceEditor.h>

#include "face/Failure.h"
#include "face/Markers.h"

namespace larynth {
namespace {

/// Frames from one kept state to the next: so many more are rendered again at the most.
constexpr std::size_t kSpacing = 8;

SynthesizerSettings WithSampleFreq(SynthesizerSettings settings, double sampleFreq) {
    settings.sampleFreq = sampleFreq;
    return settings;
}

}  // namespace

class UtteranceEditor::Implementation {
  public:
    Implementation(KlattUtterance utterance, const SynthesizerSettings& settings);

    /// Raises InputError for frames that cannot be rendered.
    void RequireSound(std::span<const KlattFrame> frames) const;
    /// Raises InputError unless there are so many frames from `index` on.
    void RequireFrames(std::size_t index, std::size_t count) const;
    /// The frames from `index` on are to be rendered again.
    void Outdate(std::size_t index) { rendered_ = std::min(rendered_, index); }
    void Update();

    KlattUtterance utterance;
    std::vector<std::int16_t> samples;
    std::vector<std::size_t> starts{0};  // samples in front of each rendered frame, and behind the last one

  private:
    void Save(std::size_t number);
    void Append(std::size_t frame);

    Synthesizer synthesizer_;
    ComPtr<ILarynthState> state_;           // the synthesizer's
    std::vector<ComPtr<IUnknown>> states_;  // before frames 0, kSpacing, …; those behind rendered_ are stale
    std::size_t rendered_ = 0;              // frames whose samples are those of the utterance
};

UtteranceEditor::Implementation::Implementation(KlattUtterance edited, const SynthesizerSettings& settings)
    : utterance(std::move(edited)), synthesizer_(WithSampleFreq(settings, utterance.sampleFreq)) {
    RequireMarkersInOrder(utterance);
    if (utterance.voice) synthesizer_.SetVoice(utterance.voice);
    Require(state_.QueryFrom(synthesizer_.Process()), "reach a synthesizer's state");
    Save(0);
}

void UtteranceEditor::Implementation::RequireSound(std::span<const KlattFrame> frames) const {
    for (std::size_t i = 0; i < frames.size(); ++i) {
        InFrame(i, [&] { synthesizer_.MakePacket(frames[i]); });
    }
}

void UtteranceEditor::Implementation::RequireFrames(std::size_t index, std::size_t count) const {
    const std::size_t size = utterance.frames.size();
    if (index <= size && count <= size - index) return;
    throw InputError("expected frames of the " + std::to_string(size) + " that there are, found " +
                     std::to_string(count) + " from frame " + std::to_string(index));
}

void UtteranceEditor::Implementation::Save(std::size_t number) {
    if (number == states_.size()) {
        IUnknown* made = nullptr;
        Require(state_->CreateState(&made), "make room for a state");
        states_.push_back(ComPtr<IUnknown>::Adopt(made));
    }
    Require(state_->SaveState(states_[number].Get()), "save the state");
}

void UtteranceEditor::Implementation::Append(std::size_t frame) {
    std::span<const std::int16_t> chunk;
    InFrame(frame, [&] { chunk = synthesizer_.RenderChunk(utterance.frames[frame]); });
    samples.insert(samples.end(), chunk.begin(), chunk.end());
    starts.push_back(samples.size());
}

void UtteranceEditor::Implementation::Update() {
    if (rendered_ == utterance.frames.size() && starts.size() == rendered_ + 1) return;
    std::size_t next = rendered_ / kSpacing * kSpacing;
    Require(state_->RestoreState(states_[next / kSpacing].Get()), "restore a state");
    starts.resize(next + 1);
    samples.resize(starts.back());
    for (;; ++next) {
        if (next % kSpacing == 0) Save(next / kSpacing);
        rendered_ = next;
        if (next == utterance.frames.size()) return;
        Append(next);
    }
}

UtteranceEditor::UtteranceEditor(KlattUtterance utterance, const SynthesizerSettings& settings)
    : implementation_(std::make_unique<Implementation>(std::move(utterance), settings)) {}
UtteranceEditor::UtteranceEditor(UtteranceEditor&&) noexcept = default;
UtteranceEditor& UtteranceEditor::operator=(UtteranceEditor&&) noexcept = default;
UtteranceEditor::~UtteranceEditor() = default;

const KlattUtterance& UtteranceEditor::Utterance() const noexcept { return implementation_->utterance; }

void UtteranceEditor::SetFrames(std::size_t index, std::span<const KlattFrame> frames) {
    Implementation& edited = *implementation_;
    edited.RequireFrames(index, frames.size());
    edited.RequireSound(frames);
    const auto first = edited.utterance.frames.begin() + static_cast<std::ptrdiff_t>(index);
    const std::vector<KlattFrame> given(frames.begin(), frames.end());  // perhaps of this utterance
    std::ranges::copy(given, first);
    edited.Outdate(index);
}

void UtteranceEditor::SetFrame(std::size_t index, const KlattFrame& frame) {
    SetFrames(index, std::span(&frame, 1));
}

void UtteranceEditor::Insert(std::size_t index, std::span<const KlattFrame> frames) {
    Implementation& edited = *implementation_;
    edited.RequireFrames(index, 0);
    edited.RequireSound(frames);
    auto& all = edited.utterance.frames;
    const std::vector<KlattFrame> given(frames.begin(), frames.end());  // perhaps of this utterance
    all.insert(all.begin() + static_cast<std::ptrdiff_t>(index), given.begin(), given.end());
    for (FrameMarker& marker : edited.utterance.markers) {
        if (marker.frame >= index) marker.frame += frames.size();
    }
    edited.Outdate(index);
}

void UtteranceEditor::Erase(std::size_t index, std::size_t count) {
    Implementation& edited = *implementation_;
    edited.RequireFrames(index, count);
    const auto first = edited.utterance.frames.begin() + static_cast<std::ptrdiff_t>(index);
    edited.utterance.frames.erase(first, first + static_cast<std::ptrdiff_t>(count));
    for (FrameMarker& marker : edited.utterance.markers) {
        marker.frame = std::max(std::min(marker.frame, index), marker.frame - std::min(marker.frame, count));
    }
    edited.Outdate(index);
}

std::span<const std::int16_t> UtteranceEditor::Samples() {
    implementation_->Update();
    return implementation_->samples;
}

Sound UtteranceEditor::Render() {
    Implementation& edited = *implementation_;
    edited.Update();
    return {edited.utterance.sampleFreq, edited.samples,
            PlacedMarkers(edited.utterance.markers, edited.starts)};
}

std::size_t UtteranceEditor::SampleOf(std::size_t index) {
    Implementation& edited = *implementation_;
    edited.RequireFrames(index, 0);
    edited.Update();
    return edited.starts[index];
}

}  // namespace larynth
