// SPDX-License-Identifier: MIT
#include "engine/TiltFilter.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "engine/Constants.h"

namespace larynth {
namespace {

constexpr int kMaxTilt = 41;

/// Bandwidth in Hz for each tilt; entry 0 is never used, as tilt 0 is a bypass.
constexpr std::array kTiltBandwidth = {
    5000.0, 4350.0, 3790.0, 3330.0, 2930.0, 2700.0, 2580.0,  // 0
    2468.0, 2364.0, 2260.0, 2157.0, 2045.0, 1925.0, 1806.0,  // 7
    1687.0, 1568.0, 1449.0, 1350.0, 1272.0, 1199.0, 1133.0,  // 14
    1071.0, 1009.0, 947.0,  885.0,  833.0,  781.0,  729.0,   // 21
    677.0,  625.0,  599.0,  573.0,  547.0,  521.0,  495.0,   // 28
    469.0,  442.0,  416.0,  390.0,  364.0,  338.0,  312.0,   // 35
};
static_assert(kTiltBandwidth.size() == kMaxTilt + 1);

/// Gain at 0 Hz, growing with the square of the tilt above 10.
double TiltGain(int TL) {
    const double excess = TL - 10.0;
    return TL > 10 ? 1.0 + excess * excess * 0.001 : 1.0;
}

}  // namespace

void TiltFilter::SetTilt(int TL, double fs) {
    TL = std::max(TL, 0);
    if (IsZeroOrNan(fs) || TL == TL_) return;
    TL_ = std::min(TL, kMaxTilt);
    if (TL_ == 0) {
        resonator_.SetABC(1.0, 0.0, 0.0);
        return;
    }
    resonator_.SetFB(0.375 * TL_, kTiltBandwidth[static_cast<std::size_t>(TL_)], TiltGain(TL_), 1.0 / fs);
}

}  // namespace larynth
