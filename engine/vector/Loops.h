// SPDX-License-Identifier: MIT
/// The loops that a compiler makes vector code of by itself. Each iteration makes the operations of the
/// element that it stands for, in their order.
#pragma once

#include <cstddef>
#include <cstdint>

#include "engine/Flutter.h"
#include "engine/VoicingSourceCore.h"
#include "engine/vector/Kernels.h"
#include "engine/vector/Lanes.h"

namespace larynth::vector {

/// The next multiple of four, up to which `values` are filled with the last one: a loop over that many has no
/// rest that would be computed one by one.
LARYNTH_KERNEL std::size_t PadToFour(double* values, std::size_t count) {
    const std::size_t padded = (count + 3) & ~std::size_t{3};
    for (std::size_t i = count; i < padded; ++i) values[i] = values[count - 1];
    return padded;
}

LARYNTH_KERNEL void Pulses(const Glottis& g, const GlottalPeriod& period, double* t, double* out,
                           std::size_t samples) {
    const std::size_t count = PadToFour(t, samples);
    const GlottalPeriod p = period;  // a copy: `out` could be any double
    for (std::size_t i = 0; i < count; ++i) out[i] = GlottalPulse(g.AV, p, t[i]);
    if (!(g.DI > 0.0)) return;
    const double OQ = g.OQ, DI = g.DI, AV = g.AV;
    for (std::size_t i = 0; i < count; ++i) {
        out[i] = out[i] + (1.0 - DI) * GlottalPulse(AV, p, SecondPulseTime(t[i], p, OQ, DI));
    }
}

/// A period of 0 is silent.
LARYNTH_KERNEL void MovedPulses(const Glottis& g, const GlottalPeriods& periods, double* t, double* out,
                                std::size_t samples) {
    const auto [AV, OQ, DI] = g;
    const std::size_t count = PadToFour(t, samples);
    for (std::size_t i = 0; i < count; ++i) {
        const double y = GlottalPulse(AV, {periods.T0[i], periods.Tp[i], periods.K[i]}, t[i]);
        out[i] = periods.T0[i] == 0.0 ? 0.0 : y;
    }
    if (!(DI > 0.0)) return;
    for (std::size_t i = 0; i < count; ++i) {
        const GlottalPeriod period{periods.T0[i], periods.Tp[i], periods.K[i]};
        const double y = GlottalPulse(AV, period, SecondPulseTime(t[i], period, OQ, DI));
        out[i] = period.T0 == 0.0 ? 0.0 : out[i] + (1.0 - DI) * y;
    }
}

/// A value of each sample of a stretch. A few lines longer than that: where two arrays lie a multiple of 4096
/// bytes apart, processors take a load from the one to wait for a store to the other.
template <class Value>
using Scratch = Value[kStretch + 16];

/// The angles of a stretch, reduced.
struct Angles {
    Scratch<double> r, correction;
    Scratch<std::uint64_t> quadrant;
};

/// Adds the sines of angles in one quadrant, which takes the function `kKernel`.
template <double (*kKernel)(double, double)>
LARYNTH_KERNEL void AddAlikeSines(const double* r, const double* correction, std::uint64_t quadrant,
                                  double* sums, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        sums[i] = sums[i] + WithSignOf(quadrant, kKernel(r[i], correction[i]));
    }
}

/// Adds the sines of angles in any quadrants.
LARYNTH_KERNEL void AddSines(const double* r, const double* correction, const std::uint64_t* quadrant,
                             double* sums, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        sums[i] = sums[i] + ReducedSine({r[i], correction[i], quadrant[i]});
    }
}

/// Adds one sinusoid of the flutter to the sums; `a` is pi times the flutter time. Reduction and sine in two
/// loops, as the chain of operations from an argument to its sine is longer than a processor looks ahead. The
/// arguments are in order, and quadrants are long: most runs of sixteen lie in one.
LARYNTH_KERNEL void AddSinusoid(double multiple, const double* a, double* sums, std::size_t count) {
    constexpr std::size_t kRun = 16;
    Angles angles;
    for (std::size_t i = 0; i < count; ++i) {
        const QuadrantAngle angle = ReduceToQuadrant(multiple * a[i]);
        angles.r[i] = angle.r;
        angles.correction[i] = angle.correction;
        angles.quadrant[i] = angle.quadrant;
    }
    for (std::size_t first = 0; first < count; first += kRun) {
        const std::size_t length = first + kRun < count ? kRun : count - first;
        const double* const r = angles.r + first;
        const double* const correction = angles.correction + first;
        const std::uint64_t* const quadrant = angles.quadrant + first;
        if (quadrant[0] != quadrant[length - 1]) {
            AddSines(r, correction, quadrant, sums + first, length);
        } else if ((quadrant[0] & 1U) != 0) {
            AddAlikeSines<CosineKernel>(r, correction, quadrant[0], sums + first, length);
        } else {
            AddAlikeSines<SineKernel>(r, correction, quadrant[0], sums + first, length);
        }
    }
}

LARYNTH_KERNEL void MoveF0(double F0, double FL, double* t, std::size_t samples) {
    const std::size_t count = PadToFour(t, samples);
    Scratch<double> sums;
    for (std::size_t i = 0; i < count; ++i) {
        t[i] = kPi10 * t[i];
        sums[i] = -0.0;  // to which the first sinusoid is added as it is
    }
    for (const double multiple : Flutter::kMultiples) AddSinusoid(multiple, t, sums, count);
    for (std::size_t i = 0; i < count; ++i) t[i] = Flutter::Moved(F0, FL, sums[i]);
}

LARYNTH_KERNEL void Periods(double OQ, double* F0, const GlottalPeriods& out, std::size_t samples) {
    const std::size_t count = PadToFour(F0, samples);
    for (std::size_t i = 0; i < count; ++i) {
        const GlottalPeriod period = GlottalPeriod::OfF0(F0[i], OQ);
        out.T0[i] = period.T0;
        out.Tp[i] = period.Tp;
        out.K[i] = period.K;
    }
}

}  // namespace larynth::vector
