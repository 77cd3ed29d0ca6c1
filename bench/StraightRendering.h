// SPDX-License-Identifier: MIT
#pragma once

#include "bench/Rendering.h"
#include "bench/StraightLoop.h"

namespace larynth::bench {

/// Rendering by the straight loop.
class StraightRendering final : public Rendering {
  public:
    /// With `flushing` denormal numbers count as zero while it renders.
    StraightRendering(const Case& one, bool flushing);

    void Prepare(Samples* samples) override;
    void Render(std::size_t count, Samples* samples) override;

  private:
    void RenderFrame(const PlainFrame& frame, const Sections& sections, Samples* samples);

    const Case& case_;
    bool flushing_;
    StraightLoop loop_;
    Sections kept_;  // of the first frame
    Samples block_;  // large enough for every frame
};

}  // namespace larynth::bench
