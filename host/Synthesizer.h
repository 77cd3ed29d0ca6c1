// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <span>

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

    /// Puts a component into the role that its interface names.
    void PlugIn(IUnknown* component, REFIID role);

    /// The samples of a packet in resonator form, valid until the next call; the filter form is computed
    /// where the tract takes that. State runs on from packet to packet.
    std::span<const short> Render(IUnknown* packet);

    /// Whether the last sample was a finite number before it became one of 16 bits, which does not tell: what
    /// both tracts gave, times output gain and volume. What a voice's output filters make of it is not asked.
    bool IsFinite() const;

  private:
    TractForm tract_;
    double outputGain_, volume_;  // linear
    ComPtr<IACLIOProcess> process_;
    ComPtr<ITTSVocalTract> cascade_;
    ComPtr<ITTSParallelTract> parallel_;
    ComPtr<ITTSSoundData> block_;  // of the last packet
};

}  // namespace larynth
