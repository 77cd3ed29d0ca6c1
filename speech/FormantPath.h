// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <vector>

#include "speech/SpokenPhone.h"

namespace larynth {

/// Where the formants F1 to F3 are at any time of an utterance, before the speaker's tract scales them.
///
/// Each phone runs from the boundary in front of it to the one behind it; a vowel or glide goes to its own
/// targets in between, as fast as its neighbours' transitions take. Phones are worked out when the time
/// reaches them.
class FormantPath {
  public:
    /// The phones must live as long as this object.
    explicit FormantPath(const SpokenPhones& phones) : phones_(phones) {}

    /// At `time` (s), Hz: the path, rounded off over some 15 ms as the tongue's mass does, with the formants
    /// kept apart.
    Formants At(double time);

  private:
    /// Points between which the formants move along half a cosine.
    struct Stretch {
        std::size_t count = 2;
        std::array<double, 4> times{};  // s
        std::array<Formants, 4> values{};
    };
    double BoundaryTime(std::size_t i) const;
    Stretch Plan(std::size_t i) const;
    void AddTargets(std::size_t i, Stretch& stretch) const;
    Formants Raw(double time);

    const SpokenPhones& phones_;
    std::vector<Stretch> stretches_;  // of the phones up to the latest asked for
    std::size_t latest_ = 0;          // phone of the last question
};

}  // namespace larynth
