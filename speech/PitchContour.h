// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "speech/SpokenPhone.h"
#include "speech/Utterance.h"

namespace larynth {

/// The course of an utterance's pitch: straight between its targets, level beyond the first and the last.
class PitchContour {
  public:
    PitchContour(const Utterance& utterance, const SpokenPhones& phones);

    /// At `time` (s), which must not go back: in standard deviations of the speaker's F0 above its mean.
    double At(double time);

  private:
    struct Point {
        double time, level;
    };
    std::vector<Point> points_;
    std::size_t next_ = 0;  // the first point behind the last question
};

}  // namespace larynth
