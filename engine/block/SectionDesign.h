// SPDX-License-Identifier: MIT
#pragma once

#include <bit>

#include "engine/Constants.h"
#include "engine/Exponential.h"
#include "engine/Trigonometry.h"
#include "engine/block/Lanes.h"

namespace larynth::block {

/// Eight second-order sections as frequencies and bandwidths describe them, side by side; a lane that is not
/// needed stays 0.
struct alignas(32) SectionDesign {
    static constexpr int kLanes = 8;

    double F[kLanes] = {}, BW[kLanes] = {};  ///< Hz.
    double G[kLanes] = {};                   ///< Linear gain at 0 Hz.
    unsigned antiResonators = 0;             ///< Bit k: lane k holds an antiresonator.

    /// What comes out: the coefficients (Klatt 1980), with r = exp(−pi·BW·T) and pi of ten digits
    ///
    ///     C = −r², B = 2·r·cos(2·pi·F·T), A = G·(1 − B − C)
    ///
    /// of a resonator, {G, 0, 0} where F or BW is not above 0; of an antiresonator, with these B and C,
    /// a = G/(1 − B − C) and {a, −B·a, −C·a}, {1, 0, 0} where F is 0. What is not a number gives none.
    double A[kLanes], B[kLanes], C[kLanes];
};

/// Turns the resonator of a lane into the antiresonator that undoes it.
inline void Invert(SectionDesign& design, int lane, double B, double C) {
    const double A = design.G[lane] / (1.0 - B - C);
    const bool plain = design.F[lane] == 0.0;
    design.A[lane] = plain ? 1.0 : A;
    design.B[lane] = plain ? 0.0 : -B * A;
    design.C[lane] = plain ? 0.0 : -C * A;
}

/// `T` is the sample time (s).
LARYNTH_KERNEL void DesignSections(SectionDesign& design, double T) {
    constexpr int kLanes = SectionDesign::kLanes;
    double angle[kLanes], cosine[kLanes], B[kLanes], C[kLanes];
    int beyond = 0;
    for (int k = 0; k < kLanes; ++k) {
        angle[k] = kTwoPi10 * design.F[k] * T;
        cosine[k] = ReducedCosine(ReduceToQuadrant(angle[k]));
        beyond |= std::fabs(angle[k]) <= kSineReductionLimit ? 0 : 1;
    }
    if (beyond != 0) {
        for (int k = 0; k < kLanes; ++k) cosine[k] = Cosine(angle[k]);
    }
    for (int k = 0; k < kLanes; ++k) {
        const double r = Exponential(-kPi10 * design.BW[k] * T);
        C[k] = -(r * r);
        B[k] = 2.0 * r * cosine[k];
        const bool plain = design.F[k] <= 0.0 || design.BW[k] <= 0.0;
        design.A[k] = plain ? design.G[k] : design.G[k] * (1.0 - B[k] - C[k]);
        design.B[k] = plain ? 0.0 : B[k];
        design.C[k] = plain ? 0.0 : C[k];
    }
    for (unsigned lanes = design.antiResonators; lanes != 0; lanes &= lanes - 1) {
        const int k = std::countr_zero(lanes);
        Invert(design, k, B[k], C[k]);
    }
}

}  // namespace larynth::block
