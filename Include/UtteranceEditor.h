// SPDX-License-Identifier: MIT
/// Editing an utterance and hearing it at once: link Larynth::Speech.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

#include <larynth/Speech.h>

namespace larynth {

/// An utterance and its sound. A frame that is changed, put in or taken out is rendered again with those
/// behind it; what lies in front of it stays. The samples are always those of rendering everything.
///
/// The state of the synthesizer is kept before every eighth frame: 230 bytes a frame, with a wave table
/// 1.1 kB. Failures are those of Synthesizer; the utterance has not changed then.
class LARYNTH_SPEECH_API UtteranceEditor {
  public:
    /// Of `settings`, the utterance's own sample frequency and, if it has one, its voice hold. Without a seed
    /// the noise begins where the process's generator stands now, at each rendering anew.
    explicit UtteranceEditor(KlattUtterance utterance, const SynthesizerSettings& settings = {});
    UtteranceEditor(UtteranceEditor&&) noexcept;
    UtteranceEditor& operator=(UtteranceEditor&&) noexcept;
    ~UtteranceEditor();

    const KlattUtterance& Utterance() const noexcept;  ///< As it is now.

    /// Puts frames in the place of as many, from `index` (from 0) on. InputError, as from the two below, for
    /// frames outside, and for one that cannot be rendered, with its number among `frames`.
    void SetFrames(std::size_t index, std::span<const KlattFrame> frames);
    void SetFrame(std::size_t index, const KlattFrame& frame);
    /// Puts `frames` in front of frame `index`; the number of frames stands for the end. Markers in front of
    /// that frame stay in front of it.
    void Insert(std::size_t index, std::span<const KlattFrame> frames);
    /// Takes `count` frames out, from `index` on; their markers move to the frame behind them.
    void Erase(std::size_t index, std::size_t count = 1);

    /// Samples of the utterance as it is now; renders what has changed since the last call. Valid until the
    /// next call of a function that is not const. The noise generator of the process stands behind the last
    /// frame then.
    std::span<const std::int16_t> Samples();
    /// The same as a sound, with the markers.
    Sound Render();
    /// Samples in front of frame `index`; the number of frames stands for the end. Renders as Samples does.
    std::size_t SampleOf(std::size_t index);

  private:
    class [[gnu::visibility("hidden")]] Implementation;
    std::unique_ptr<Implementation> implementation_;
};

}  // namespace larynth
