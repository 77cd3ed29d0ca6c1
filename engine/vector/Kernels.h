// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "engine/VoicingSourceCore.h"
#include "engine/vector/Tracts.h"

namespace larynth::vector {

/// The most samples of a stretch: what they need in between stays in the nearest cache.
inline constexpr std::size_t kStretch = 256;

/// Values of room behind the last of each array of doubles: loops read them and overwrite them, and it does
/// not matter what they are.
inline constexpr std::size_t kRoom = 8;

/// A value of each sample of a stretch, with room. Longer than that: processors take a load for dependent on
/// a store that lies a multiple of 4096 bytes away, and no two of eight such arrays in a row do.
using StretchValues = std::array<double, 320>;
static_assert(std::tuple_size_v<StretchValues> >= kStretch + 16 + kRoom);

/// The noise of a stretch: the aspiration draws before the frication, sample by sample.
struct Noise {
    double aspirationAmplitude, fricationAmplitude;
    double bypassGain;
    double *aspiration, *frication;  // out
    double* bypassed;                // out: the frication times the bypass gain
};

/// The shape of the glottal pulses of a stretch, see VoicingSourceCore.
struct Glottis {
    double AV, OQ, DI;
};

/// The pitch periods that hold at each sample.
struct GlottalPeriods {
    double* T0;  // s
    double* Tp;  // s
    double* K;
};

/// The last stage: volume·(y[n] − coefficient·y[n−1]) with y = gain·sum.
struct Finish {
    double gain, coefficient, volume;
};

/// A frame's sections, computed side by side: one after the other they would wait for each function of
/// theirs. With r = exp(−pi·BW·T) and pi of ten digits, a resonator's coefficients (Klatt 1980) are
///
///     C = −r², B = 2·r·cos(2·pi·F·T), A = G·(1 − B − C)
///
/// or {G, 0, 0} where F or BW is not above 0; the antiresonator's, with these B and C, a = G/(1 − B − C) and
/// {a, −B·a, −C·a}, or {1, 0, 0} where F is 0. What is not a number gives none.
struct SectionDesign {
    const FrequencyRows& from;
    double T;         ///< Sample time, s.
    unsigned wanted;  ///< Bit k: place k is to be written, the others are left.
    CoefficientRows& to;
};

/// The loops over a stretch of 1 to kStretch samples, once for each instruction set. All of them make the
/// bits that the engine's elements make sample by sample. All arrays of doubles have room.
struct Kernels {
    const char* name;

    /// Noise of two sources; `state` is the generator's before the draws.
    void (*noise)(std::uint32_t state, const Noise& noise, std::size_t count);

    /// Pulses at the times `t` (s) since the period began, which has one length for all of them.
    void (*pulses)(const Glottis& glottis, const GlottalPeriod& period, double* t, double* out,
                   std::size_t count);
    /// The same with a period for each sample.
    void (*movedPulses)(const Glottis& glottis, const GlottalPeriods& periods, double* t, double* out,
                        std::size_t count);

    /// Fluttering F0 (Hz) at the flutter times `t`, which are overwritten with it. Flutter::StaysReduced
    /// holds for them.
    void (*flutter)(double F0, double FL, double* t, std::size_t count);

    /// The periods of the frequencies `F0` (Hz).
    void (*periods)(double OQ, double* F0, const GlottalPeriods& out, std::size_t count);

    /// Both tracts to `samples.sum`; or the parallel one alone, added to what is there. The result is the
    /// last output of the parallel one.
    double (*tracts)(const Tracts& tracts, const TractSamples& samples, std::size_t count);
    double (*parallel)(const Tracts& tracts, const TractSamples& samples, std::size_t count);

    /// 16-bit samples; `previous` is y[−1]. These two arrays need no room.
    void (*finish)(const Finish& finish, double previous, const double* sums, std::int16_t* out,
                   std::size_t count);

    /// The coefficients of a frame's sections.
    void (*sections)(const SectionDesign& design);
};

/// The sets of loops that this processor can run, that of the baseline first, the fastest last.
std::span<const Kernels* const> AvailableKernels() noexcept;

inline const Kernels& FastestKernels() noexcept { return *AvailableKernels().back(); }

}  // namespace larynth::vector
