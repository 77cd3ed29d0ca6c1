// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>

#include <larynth/Interface.h>

#include "com/ComObject.h"
#include "engine/Network.h"
#include "synth/OutputStage.h"

namespace larynth {

/// What a synthesizer of own components remembers, kept for a client: copies of its elements and of its
/// output stage, and the state of the noise generator. New ones are empty.
class SynthesizerState final : public ComObject<IUnknown> {
  public:
    using RecognisedBy = IUnknown;
    using ComObject::ComObject;

    /// Copies take the memory that is there. Empty when memory runs out, which is raised.
    void Save(const Network::Elements& own, const OutputStage& output);

    /// Raises E_FAIL for an empty state and for a voice of other kinds of elements, and what running out of
    /// memory raises; nothing has changed then.
    void Restore(const Network::Elements& own, OutputStage& output) const;

  private:
    struct Copies {
        std::optional<VoicingSourceCore> source;
        std::optional<WaveTablePlayer> waveSource;
        std::optional<VoicingFilterCore> filter;
        std::optional<NoiseSource> aspiration, frication;
        std::optional<CascadeTract> cascade;
        std::optional<CascadeFilterTract> filterTract;
        std::optional<ParallelTractCore> parallel;
        OutputStage output;
    };

    /// Calls `action` with each element, or null, and the place of its copy.
    static void ForEachKind(const Network::Elements& own, auto& copies, auto&& action);

    bool IsOf(const Network::Elements& own) const;

    Copies copies_;
    bool filterMovesSource_ = false;
    std::uint32_t noise_ = 0;
    bool complete_ = false;
};

}  // namespace larynth
