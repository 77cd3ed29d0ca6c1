// SPDX-License-Identifier: MIT
#pragma once

#include <larynth/Larynth.h>

#include "host/FrameStream.h"
#include "host/Sound.h"

namespace larynth {

/// A synthesizer of the process's modules, ready to render. All operations raise ComponentFailure.
class Synthesizer {
  public:
    explicit Synthesizer(TractForm form);

    void SetVolume(double volume);    ///< Linear, applied last.
    void SetOutputGain(double gain);  ///< Linear, on the sum of both tracts.

    void SetVoice(IUnknown* voice);
    void SetVoicingSource(IUnknown* source);

    /// Renders a stream in one call. State runs on from one stream to the next.
    Sound Render(const FrameStream& stream);

  private:
    ComPtr<IACLIOProcess> process_;
    ComPtr<ILarynthAttributes> attributes_;
};

}  // namespace larynth
