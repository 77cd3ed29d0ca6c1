// SPDX-License-Identifier: MIT
#include "speech/PitchContour.h"

namespace larynth {

PitchContour::PitchContour(const Utterance& utterance, const SpokenPhones& phones) {
    for (const PitchTarget& target : utterance.pitch) {
        if (target.phone >= phones.size()) continue;
        const SpokenPhone& phone = phones[target.phone];
        points_.push_back({phone.start + target.place * phone.Duration(), target.level});
    }
}

double PitchContour::At(double time) {
    if (points_.empty()) return 0.0;
    while (next_ < points_.size() && points_[next_].time <= time) ++next_;
    if (next_ == 0) return points_.front().level;
    if (next_ == points_.size()) return points_.back().level;
    const Point& a = points_[next_ - 1];
    const Point& b = points_[next_];
    return a.level + (b.level - a.level) * (time - a.time) / (b.time - a.time);
}

}  // namespace larynth
