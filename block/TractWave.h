// SPDX-License-Identifier: MIT
/// The wavefront that runs all sections of both tracts at once.
///
/// A section's recurrence is a chain of dependent operations, and sections in series wait for each other.
/// Here lane k of the cascade works on sample s − k at step s: its input is what its left neighbour put out
/// at the step before, and all lanes advance together. The parallel branch, one sample later, sends its input
/// and its partial sum along the lanes in the same way, so that the sum is made in index order. Each section
/// makes the operations of Resonator::Process and AntiResonator::Process, in their order.
#pragma once

#include <cstddef>
#include <cstdint>

#include "block/Lanes.h"
#include "block/Tracts.h"

namespace larynth::block {

/// One chain of sections in registers.
struct Chain {
    Lanes A, B, C, state1, state2;

    LARYNTH_KERNEL explicit Chain(const SectionLanes& sections)
        : A(LoadLanes(sections.A)),
          B(LoadLanes(sections.B)),
          C(LoadLanes(sections.C)),
          state1(LoadLanes(sections.state1)),
          state2(LoadLanes(sections.state2)) {}

    LARYNTH_KERNEL Lanes Output(const Lanes& x) const { return (B * state1 + C * state2) + A * x; }

    LARYNTH_KERNEL void Advance(const Lanes& newest) {
        state2 = state1;
        state1 = newest;
    }
    /// Advances the lanes `first` to `last`, which have a sample; the others keep their states.
    LARYNTH_KERNEL void AdvanceBetween(std::int64_t first, std::int64_t last, const Lanes& newest) {
        const auto from = static_cast<double>(first), to = static_cast<double>(last);
        state2 = ChooseBetween(from, to, state1, state2);
        state1 = ChooseBetween(from, to, newest, state1);
    }
    LARYNTH_KERNEL void StoreStates(SectionLanes& sections) const {
        StoreLanes(state1, sections.state1);
        StoreLanes(state2, sections.state2);
    }
};

struct TractWave {
    Chain cascade, parallel;
    double bypass;
    Lanes cascadeOut = {}, frication = {}, partialSum = {};
    Lanes newestCascade = {}, newestParallel = {};  // what goes into the states

    LARYNTH_KERNEL explicit TractWave(const Tracts& tracts)
        : cascade(tracts.cascade), parallel(tracts.parallel), bypass(tracts.bypass) {}

    template <bool kTilting>
    LARYNTH_KERNEL void Step(double voicing, double aspiration, double fricationIn) {
        static_assert(Tracts::kTilt == 0 && Tracts::kAntiResonator == 1);
        Lanes x = ShiftIn(voicing, cascadeOut);
        x.low = __builtin_shufflevector(x.low, x.low + aspiration, 0, 5, 2, 3);
        cascadeOut = cascade.Output(x);
        newestCascade = {__builtin_shufflevector(cascadeOut.low, x.low, 0, 5, 2, 3), cascadeOut.high};
        if constexpr (!kTilting) cascadeOut.low = __builtin_shufflevector(cascadeOut.low, x.low, 4, 1, 2, 3);

        frication = ShiftIn(fricationIn, frication);
        newestParallel = parallel.Output(frication);
        partialSum = ShiftIn(bypass * fricationIn, partialSum) + newestParallel;
    }
    LARYNTH_KERNEL double ParallelOutput() const { return partialSum.high[Tracts::kParallelLast - 4]; }
    LARYNTH_KERNEL double Sum() const { return ParallelOutput() + cascadeOut.high[Tracts::kCascadeLast - 4]; }
};

/// A step near the ends of the stretch, where some lanes have no sample.
template <bool kTilting>
LARYNTH_KERNEL void EdgeStep(TractWave& wave, const TractSamples& samples, std::int64_t count,
                             std::int64_t s) {
    const bool enters = s < count, joins = s >= 1 && s <= count;
    wave.Step<kTilting>(enters ? samples.voicing[s] : 0.0, joins ? samples.aspiration[s - 1] : 0.0,
                        joins ? samples.frication[s - 1] : 0.0);
    wave.cascade.AdvanceBetween(s - count + 1, s, wave.newestCascade);
    wave.parallel.AdvanceBetween(s - count, s - 1, wave.newestParallel);
    if (const std::int64_t leaving = s - Tracts::kCascadeLast; leaving >= 0)
        samples.sum[leaving] = wave.Sum();
}

template <bool kTilting>
LARYNTH_KERNEL void RunWave(Tracts& tracts, const TractSamples& samples, std::int64_t count) {
    static_assert(Tracts::kParallelLast + 1 == Tracts::kCascadeLast, "both outputs leave at the same step");
    constexpr std::int64_t kDelay = Tracts::kCascadeLast;  // steps from a sample's entry to its last lane
    TractWave wave(tracts);
    std::int64_t s = 0;
    for (; s < kDelay; ++s) EdgeStep<kTilting>(wave, samples, count, s);
    for (; s < count; ++s) {
        wave.Step<kTilting>(samples.voicing[s], samples.aspiration[s - 1], samples.frication[s - 1]);
        wave.cascade.Advance(wave.newestCascade);
        wave.parallel.Advance(wave.newestParallel);
        samples.sum[s - kDelay] = wave.Sum();
    }
    for (; s < count + kDelay; ++s) EdgeStep<kTilting>(wave, samples, count, s);
    wave.cascade.StoreStates(tracts.cascade);
    wave.parallel.StoreStates(tracts.parallel);
    tracts.parallelOutput = wave.ParallelOutput();
}

LARYNTH_KERNEL void TractsByWave(Tracts& tracts, const TractSamples& samples, std::size_t count) {
    const auto signedCount = static_cast<std::int64_t>(count);
    if (tracts.tilting) {
        RunWave<true>(tracts, samples, signedCount);
    } else {
        RunWave<false>(tracts, samples, signedCount);
    }
}

/// One sample through one lane's section; `kAnti` keeps inputs instead of outputs.
template <bool kAnti>
LARYNTH_KERNEL double RunSection(SectionLanes& lanes, int k, double x) {
    const double y = (lanes.B[k] * lanes.state1[k] + lanes.C[k] * lanes.state2[k]) + lanes.A[k] * x;
    lanes.state2[k] = lanes.state1[k];
    lanes.state1[k] = kAnti ? x : y;
    return y;
}

/// The same without a wave: sample by sample, section by section.
LARYNTH_KERNEL void TractsOneByOne(Tracts& tracts, const TractSamples& samples, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        double x = samples.voicing[i];
        if (tracts.tilting) x = RunSection<false>(tracts.cascade, Tracts::kTilt, x);
        x = RunSection<true>(tracts.cascade, Tracts::kAntiResonator, x + samples.aspiration[i]);
        for (int k = Tracts::kFirstResonator; k <= Tracts::kCascadeLast; ++k) {
            x = RunSection<false>(tracts.cascade, k, x);
        }
        double y = tracts.bypass * samples.frication[i];
        for (int k = 0; k <= Tracts::kParallelLast; ++k) {
            y = y + RunSection<false>(tracts.parallel, k, samples.frication[i]);
        }
        tracts.parallelOutput = y;
        samples.sum[i] = y + x;
    }
}

}  // namespace larynth::block
