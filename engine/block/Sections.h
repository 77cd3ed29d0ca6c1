// SPDX-License-Identifier: MIT
/// The design of a frame's sections at once: the coefficients that SectionDesign describes.
#pragma once

#include <bit>

#include "engine/Constants.h"
#include "engine/Exponential.h"
#include "engine/Trigonometry.h"
#include "engine/block/Kernels.h"
#include "engine/block/Lanes.h"

namespace larynth::block {

/// Turns the resonator of a lane into the antiresonator that undoes it.
inline void Invert(SectionDesign& design, int lane, double B, double C) {
    const double A = design.G[lane] / (1.0 - B - C);
    const bool plain = design.F[lane] == 0.0;
    design.A[lane] = plain ? 1.0 : A;
    design.B[lane] = plain ? 0.0 : -B * A;
    design.C[lane] = plain ? 0.0 : -C * A;
}

/// The sections from lane `first` on, as many as are computed side by side.
LARYNTH_KERNEL void DesignRow(SectionDesign& design, int first, double T) {
    constexpr int kRow = SectionDesign::kRow;
    double angle[kRow], cosine[kRow], B[kRow], C[kRow];
    int beyond = 0;
    for (int k = 0; k < kRow; ++k) {
        angle[k] = kTwoPi10 * design.F[first + k] * T;
        cosine[k] = ReducedCosine(ReduceToQuadrant(angle[k]));
        beyond |= std::fabs(angle[k]) <= kSineReductionLimit ? 0 : 1;
    }
    if (beyond != 0) {
        for (int k = 0; k < kRow; ++k) cosine[k] = Cosine(angle[k]);
    }
    for (int k = 0; k < kRow; ++k) {
        const double r = Exponential(-kPi10 * design.BW[first + k] * T);
        C[k] = -(r * r);
        B[k] = 2.0 * r * cosine[k];
        const double G = design.G[first + k];
        const bool plain = design.F[first + k] <= 0.0 || design.BW[first + k] <= 0.0;
        design.A[first + k] = plain ? G : G * (1.0 - B[k] - C[k]);
        design.B[first + k] = plain ? 0.0 : B[k];
        design.C[first + k] = plain ? 0.0 : C[k];
    }
    constexpr unsigned kLanesOfRow = (1U << kRow) - 1;
    for (unsigned lanes = design.antiResonators >> first & kLanesOfRow; lanes != 0; lanes &= lanes - 1) {
        const int k = std::countr_zero(lanes);
        Invert(design, first + k, B[k], C[k]);
    }
}

/// `T` is the sample time (s).
LARYNTH_KERNEL void DesignSections(SectionDesign& design, double T) {
    for (int first = 0; first < design.count; first += SectionDesign::kRow) DesignRow(design, first, T);
}

}  // namespace larynth::block
