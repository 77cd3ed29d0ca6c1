// SPDX-License-Identifier: MIT
#pragma once

#include <larynth/ComPtr.h>
#include <larynth/Streams.h>
#include <larynth/Voice.h>

namespace larynth {

class OutputStage;
class Roles;

/// The voice of a synthesizer: what it changes when it is set, and its announcement in an output stream.
class CurrentVoice {
  public:
    CurrentVoice(Roles& roles, OutputStage& output) noexcept : roles_(roles), output_(output) {}

    /// Sets a voice, or removes it (null): pre-emphasis, output filters, voicing source. The filters stay as
    /// they are with a voice that has none to offer. E_FAIL for an object that is no voice (nothing changed)
    /// and when no voicing source can be had (the voice is set, the role empty).
    HRESULT Set(IUnknown* voice);

    /// Sets a voice that arrived in the stream, if `object` is one. The stream itself carries the change, so
    /// it is not announced. Failures are not reported.
    void AdoptFrom(IUnknown* object);

    /// Adds a sync element with the voice to `output` when the voice has not been announced yet. A failure
    /// leaves it to be announced later and is not reported.
    void Announce(ITTSObjectList& output) noexcept;

    ComPtr<ITTSVoice> Get() const noexcept { return voice_; }

  private:
    /// Reads the voice's pre-emphasis and filters; the results of its methods are not examined.
    void ReadSettings(ITTSVoice* voice, ITTSVoiceSourceParams* sourceSettings);

    Roles& roles_;
    OutputStage& output_;
    ComPtr<ITTSVoice> voice_;
    bool pending_ = false;  // set directly and not announced yet
};

}  // namespace larynth
