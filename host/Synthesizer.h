// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include <larynth/Larynth.h>

#include "host/tables/VoiceFile.h"

namespace larynth {

/// The two forms of the cascade tract.
enum class TractForm { Resonator, Filter };

/// How a synthesizer is to sound; what is absent stays as a new one has it.
struct SynthesizerSettings {
    TractForm tract = TractForm::Resonator;
    std::optional<double> volume;      ///< Linear, applied last.
    std::optional<double> outputGain;  ///< Linear, on the sum of both tracts.
    std::optional<VoiceSettings> voice;
    std::optional<Waveform> wave;  ///< Of a wave-table source that displaces any other.
};

/// A synthesizer of the process's modules, ready to render. All operations raise std::runtime_error.
class Synthesizer {
  public:
    /// For sounds of `sampleFreq` (Hz).
    Synthesizer(const SynthesizerSettings& settings, double sampleFreq);

    /// The form of the cascade tract, which packets have to be given in.
    TractForm Tract() const noexcept { return tract_; }

    /// Puts a component into the role that its interface names.
    void PlugIn(IUnknown* component, REFIID role);

    /// Renders a list of packets and holders: sample blocks and sync elements in the same order. State runs
    /// on from one list to the next, so that a list can be rendered in pieces.
    ComPtr<ITTSObjectList> Render(ITTSObjectList& list);

  private:
    TractForm tract_;
    ComPtr<IACLIOProcess> process_;
};

}  // namespace larynth
