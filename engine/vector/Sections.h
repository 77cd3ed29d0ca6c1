// SPDX-License-Identifier: MIT
/// The design of a frame's sections at once: the coefficients that SectionDesign describes.
#pragma once

#include <bit>

#include "engine/Constants.h"
#include "engine/Exponential.h"
#include "engine/Trigonometry.h"
#include "engine/vector/Kernels.h"
#include "engine/vector/Lanes.h"

namespace larynth::vector {

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

}  // namespace larynth::vector
