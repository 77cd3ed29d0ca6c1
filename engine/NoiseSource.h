// SPDX-License-Identifier: MIT
#pragma once

#include "engine/Component.h"
#include "engine/NoiseGenerator.h"

namespace larynth {

/// The noise sample of draw r (0 … 32767): uniform over ±(√3/2)·amplitude, standard deviation amplitude/2.
/// √3 has ten digits, like pi elsewhere, and the factors stand in this order. `Number` is double, or a vector
/// of doubles for as many samples: inlined always, as a vector can be handed over only within one instruction
/// set.
template <class Number>
[[gnu::always_inline]] constexpr Number NoiseSample(Number r, double amplitude) {
    return (r * 3.051850947599719e-05 - 0.5) * amplitude * 1.732050808;  // the first factor is 1/32767
}

/// White noise of a linear amplitude. Every computed sample takes one draw, also at amplitude 0.
class NoiseSource final : public Component {
  public:
    /// The generator is not owned and outlives the source.
    NoiseSource(double amplitude, NoiseGenerator& generator)
        : amplitude_(amplitude), generator_(&generator) {}

    /// Takes effect with the next computed sample.
    void SetAmplitude(double amplitude) { amplitude_ = amplitude; }
    double Amplitude() const { return amplitude_; }

    /// The generator, for code that takes many draws at once.
    NoiseGenerator& Generator() { return *generator_; }

    /// Draws a sample and caches it.
    double Evaluate() { return Store(NoiseSample<double>(generator_->Draw(), amplitude_)); }

  private:
    double amplitude_;
    NoiseGenerator* generator_;
};

}  // namespace larynth
