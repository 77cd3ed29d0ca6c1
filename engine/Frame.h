// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>

namespace larynth {

/// Coefficients of a second-order section, see Resonator and AntiResonator.
struct SectionCoefficients {
    double A = 0.0, B = 0.0, C = 0.0;
};

/// One frame of speech as the elements of a voice take it, its sections as last converted (Klatt 1980; Klatt
/// and Klatt 1990).
struct Frame {
    static constexpr std::size_t kCascadePoles = 6, kCascadeZeros = 1, kParallelPoles = 7;
    static constexpr std::size_t kFeedbackCount = 2 * kCascadePoles,
                                 kFeedForwardCount = 2 * kCascadeZeros + 1;

    /// The sections of a frame that are read: whoever converts them on demand converts no others.
    enum class Sections { None, Cascade, Parallel, Both };

    double F0, OQ;   ///< Hz; open phase as a fraction of the period.
    double FL, FLT;  ///< Flutter: largest excursion as a fraction of F0, 10⁻⁵ of its time per sample.
    double DI, TL;   ///< Diplophonia; spectral tilt, 0 to 41.
    double AV, AH, AF, AB;  ///< Linear amplitudes: voicing, aspiration, frication, bypass.

    std::array<SectionCoefficients, kCascadePoles> cascadePoles;  ///< Nasal pole, F1 … F5.
    std::array<SectionCoefficients, kCascadeZeros> cascadeZeros;  ///< Nasal zero.
    std::array<SectionCoefficients, kParallelPoles> parallelPoles;

    /// The cascade as one filter: coefficients of y[n−1−i], and of x[n−j].
    std::array<double, kFeedbackCount> alpha;
    std::array<double, kFeedForwardCount> beta;

    double sampleTime;  ///< s
    int length;         ///< Samples.

    /// Hz, by the way through the sample time: 1/(1/x) need not be x.
    double SampleFreq() const { return 1.0 / sampleTime; }
};

}  // namespace larynth
