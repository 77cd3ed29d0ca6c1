// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "bench/PlainFrame.h"

namespace larynth::bench {

/// Coefficients of a second-order section.
struct Section {
    double A, B, C;
};

/// The sections of one frame.
struct Sections {
    Section zero;
    Section poles[kPoles];
    Section parallel[kParallel];
};

/// Computes a frame's sections from frequencies, bandwidths and gains, as a packet does.
Sections ConvertSections(const PlainFrame& frame);

/// The yardstick: the whole synthesizer written straight down as one loop, without components, interfaces or
/// virtual calls. The same model with the same arithmetic, so the samples are the same, too.
///
/// Scalar code in the order in which one would write it; what a compiler makes of it is the compiler's.
class StraightLoop {
  public:
    /// Like LarynthSeedNoise, for this loop alone.
    void SeedNoise(std::uint32_t state) { noise_ = state; }

    /// Renders `frame.length` samples to `out`. State runs on from frame to frame.
    void Render(const PlainFrame& frame, const Sections& sections, std::int16_t* out);

    double outputGain = 1.0;   // linear
    double volume = 1.0;       // linear
    double preEmphasis = 0.0;  // a of y[n] − a·y[n−1]

  private:
    struct Memory {
        double last = 0.0, beforeLast = 0.0;
    };
    struct Pulse;

    void SetTilt(const PlainFrame& frame, double fs);

    std::uint32_t noise_ = 1;
    double phase_ = 0.0;        // s, since the period began
    double flutterTime_ = 0.0;  // s
    int tilt_ = 0;
    Section tiltSection_{1.0, 0.0, 0.0};
    Memory tiltMemory_, zero_, poles_[kPoles], parallel_[kParallel];
    double previousOutput_ = 0.0;
};

}  // namespace larynth::bench
