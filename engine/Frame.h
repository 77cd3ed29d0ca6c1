// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>

namespace larynth {

/// Coefficients of a second-order section, see Resonator and AntiResonator.
struct SectionCoefficients {
    double A = 0.0, B = 0.0, C = 0.0;
};

/// Places for the sections of a frame, side by side: what is computed for all of them is computed at once.
/// The places behind the last section hold nothing.
inline constexpr std::size_t kSectionPlaces = 16;
using SectionRow = std::array<double, kSectionPlaces>;

/// What a front end thinks in: centre frequencies and bandwidths (Hz), linear gains at 0 Hz.
struct FrequencyRows {
    SectionRow F, BW, G;
};

struct CoefficientRows {
    SectionRow A, B, C;

    SectionCoefficients At(std::size_t place) const { return {A[place], B[place], C[place]}; }
    void Set(std::size_t place, const SectionCoefficients& abc) {
        A[place] = abc.A;
        B[place] = abc.B;
        C[place] = abc.C;
    }
};

/// One frame of speech as the elements of a voice take it, its sections as last converted (Klatt 1980; Klatt
/// and Klatt 1990).
struct Frame {
    static constexpr std::size_t kCascadePoles = 6, kCascadeZeros = 1, kParallelPoles = 7;

    /// Their places: nasal pole, F1 … F5; the nasal zero; the parallel ones.
    static constexpr std::size_t kFirstCascadePole = 0, kFirstCascadeZero = kCascadePoles,
                                 kFirstParallelPole = kFirstCascadeZero + kCascadeZeros;
    static constexpr std::size_t kSectionCount = kFirstParallelPole + kParallelPoles;
    static_assert(kSectionCount <= kSectionPlaces);

    /// A bit for each section's place.
    static constexpr unsigned kAllSections = (1U << kSectionCount) - 1U;

    static constexpr std::size_t kFeedbackCount = 2 * kCascadePoles,
                                 kFeedForwardCount = 2 * kCascadeZeros + 1;

    /// The sections of a frame that are read: whoever converts them on demand converts no others.
    enum class Sections { None, Cascade, Parallel, Both };

    double F0, OQ;   ///< Hz; open phase as a fraction of the period.
    double FL, FLT;  ///< Flutter: largest excursion as a fraction of F0, 10⁻⁵ of its time per sample.
    double DI, TL;   ///< Diplophonia; spectral tilt, 0 to 41.
    double AV, AH, AF, AB;  ///< Linear amplitudes: voicing, aspiration, frication, bypass.

    CoefficientRows sections;

    /// The cascade as one filter: coefficients of y[n−1−i], and of x[n−j].
    std::array<double, kFeedbackCount> alpha;
    std::array<double, kFeedForwardCount> beta;

    double sampleTime;  ///< s
    int length;         ///< Samples.

    /// Hz, by the way through the sample time: 1/(1/x) need not be x.
    double SampleFreq() const { return 1.0 / sampleTime; }
};

}  // namespace larynth
