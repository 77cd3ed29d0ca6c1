// SPDX-License-Identifier: MIT
/// The coefficients of a frame's sections at once, as SectionDesign describes them.
#pragma once

#include <bit>
#include <cmath>
#include <cstddef>

#include "engine/Constants.h"
#include "engine/Exponential.h"
#include "engine/Trigonometry.h"
#include "engine/vector/Kernels.h"
#include "engine/vector/Lanes.h"

namespace larynth::vector {

/// The antiresonator that undoes the resonator with these F, B and C, times G.
LARYNTH_KERNEL SectionCoefficients Inverse(double F, double G, double B, double C) {
    if (F == 0.0) return {1.0, 0.0, 0.0};
    const double A = G / (1.0 - B - C);
    return {A, -B * A, -C * A};
}

LARYNTH_KERNEL void DesignSections(const SectionDesign& design) {
    constexpr std::size_t kZero = Frame::kFirstCascadeZero;
    static_assert(Frame::kCascadeZeros == 1);
    const auto& [F, BW, G] = design.from;
    const double T = design.T;
    SectionRow angle, cosine, B, C;
    CoefficientRows made;
    int beyond = 0;
    for (std::size_t k = 0; k < kSectionPlaces; ++k) {
        angle[k] = kTwoPi10 * F[k] * T;
        cosine[k] = ReducedCosine(ReduceToQuadrant(angle[k]));
        beyond |= std::fabs(angle[k]) <= kSineReductionLimit ? 0 : 1;
    }
    if (beyond != 0) {
        for (std::size_t k = 0; k < kSectionPlaces; ++k) cosine[k] = Cosine(angle[k]);
    }
    for (std::size_t k = 0; k < kSectionPlaces; ++k) {
        const double r = Exponential(-kPi10 * BW[k] * T);
        C[k] = -(r * r);
        B[k] = 2.0 * r * cosine[k];
        const bool plain = F[k] <= 0.0 || BW[k] <= 0.0;
        made.A[k] = plain ? G[k] : G[k] * (1.0 - B[k] - C[k]);
        made.B[k] = plain ? 0.0 : B[k];
        made.C[k] = plain ? 0.0 : C[k];
    }
    made.Set(kZero, Inverse(F[kZero], G[kZero], B[kZero], C[kZero]));
    if (design.wanted == Frame::kAllSections) {
        design.to = made;
        return;
    }
    for (unsigned wanted = design.wanted; wanted != 0; wanted &= wanted - 1) {
        const auto place = static_cast<std::size_t>(std::countr_zero(wanted));
        design.to.Set(place, made.At(place));
    }
}

}  // namespace larynth::vector
