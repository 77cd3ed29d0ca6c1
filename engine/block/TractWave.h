// SPDX-License-Identifier: MIT
/// All sections of both tracts at once.
///
/// A section's recurrence is a chain of dependent operations, and sections in series wait for each other. So
/// the cascade runs as a wavefront: its section k works on sample s − k at step s, takes in what its
/// neighbour put out at the step before, and all lanes advance together. The sections of the parallel branch
/// have the same input; their outputs are turned, four samples at a time, so that the sums are made in index
/// order. Both recurrences stand in one loop, so that one computes while the other waits. Each section makes
/// the operations of Resonator::Process and AntiResonator::Process, in their order.
#pragma once

#include <cstddef>
#include <cstdint>

#include "engine/block/Lanes.h"
#include "engine/block/Tracts.h"

namespace larynth::block {

/// Sections in registers.
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
    LARYNTH_KERNEL void StoreStates(SectionLanes& sections) const {
        StoreLanes(state1, sections.state1);
        StoreLanes(state2, sections.state2);
    }
};

/// The cascade in lanes; `kTilting` as Tracts::tilting.
template <bool kTilting>
struct CascadeWave {
    /// Steps from a sample's entry to its output.
    static constexpr std::int64_t kDelay = Tracts::kCascadeCount - 1;

    Chain chain;
    Lanes out = {};
    Lanes newest =
        {};  // what goes into the states; in the tilt's lane without meaning while it does not tilt

    static constexpr double Place(int lane) { return Tracts::CascadePlace(lane); }

    /// The last lanes of `voicing` and `aspiration` enter.
    LARYNTH_KERNEL void Compute(const Double4& voicing, const Double4& aspiration) {
        static_assert(Tracts::CascadeLane(Tracts::kTilt) == 7 &&
                      Tracts::CascadeLane(Tracts::kAntiResonator) == 3);
        const Lanes x = {__builtin_shufflevector(out.high, out.high + aspiration, 0, 1, 2, 7),
                         ShiftDown(out.low, voicing)};
        out = chain.Output(x);
        newest = {__builtin_shufflevector(out.low, x.low, 0, 1, 2, 7), out.high};
        if constexpr (!kTilting) out.high = __builtin_shufflevector(out.high, x.high, 0, 1, 2, 7);
    }

    /// A step in the midst of a stretch: every section has a sample.
    LARYNTH_KERNEL double Step(TractSamples samples, std::int64_t s) {
        Compute(Load4(samples.voicing + s - 3), Load4(samples.aspiration + s - 4));
        chain.Advance(newest);
        return out.low[0];
    }
    /// A step near the ends of the stretch: sections without a sample keep their states.
    LARYNTH_KERNEL double EdgeStep(TractSamples samples, std::int64_t count, std::int64_t s) {
        constexpr Double4 kLowPlaces = {Place(0), Place(1), Place(2), Place(3)};
        constexpr Double4 kHighPlaces = {Place(4), Place(5), Place(6), Place(7)};
        Compute(InAllLanes(s < count ? samples.voicing[s] : 0.0),
                InAllLanes(s >= 1 && s <= count ? samples.aspiration[s - 1] : 0.0));
        const auto last = static_cast<double>(s), before = static_cast<double>(s - count);
        const Mask4 low = (kLowPlaces <= last) & (kLowPlaces > before);
        const Mask4 high = (kHighPlaces <= last) & (kHighPlaces > before);
        chain.state2 = {Choose(low, chain.state1.low, chain.state2.low),
                        Choose(high, chain.state1.high, chain.state2.high)};
        chain.state1 = {Choose(low, newest.low, chain.state1.low),
                        Choose(high, newest.high, chain.state1.high)};
        return out.low[0];
    }
};

/// The parallel branch in lanes. Its steps give the sums of bypass and sections.
struct ParallelBranch {
    Chain chain;
    double bypass;

    LARYNTH_KERNEL Lanes Outputs(double x) {
        const Lanes y = chain.Output({InAllLanes(x), InAllLanes(x)});
        chain.Advance(y);
        return y;
    }
    LARYNTH_KERNEL double Step(TractSamples samples, std::int64_t i) {
        double outputs[SectionLanes::kLanes];
        StoreLanes(Outputs(samples.frication[i]), outputs);
        double sum = bypass * samples.frication[i];
        for (int k = 0; k < Tracts::kParallelCount; ++k) sum = sum + outputs[k];
        return sum;
    }
    LARYNTH_KERNEL Double4 FourSteps(TractSamples samples, std::int64_t i) {
        const double* const x = samples.frication + i;
        Lanes a = Outputs(x[0]), b = Outputs(x[1]), c = Outputs(x[2]), d = Outputs(x[3]);
        static_assert(Tracts::kParallelCount == 7);
        Transpose(a.low, b.low, c.low, d.low);
        Transpose(a.high, b.high, c.high, d.high);
        const Double4 sum = (((bypass * Load4(x) + a.low) + b.low) + c.low) + d.low;
        return ((sum + a.high) + b.high) + c.high;
    }
};

template <bool kTilting>
LARYNTH_KERNEL void RunWave(Tracts& tracts, TractSamples samples, std::int64_t count) {
    constexpr std::int64_t kDelay = CascadeWave<kTilting>::kDelay;
    CascadeWave<kTilting> cascade{Chain(tracts.cascade)};
    ParallelBranch parallel{Chain(tracts.parallel), tracts.bypass};
    std::int64_t s = 0, i = 0;  // the step of the cascade, the sample that leaves both
    for (; s < kDelay; ++s) cascade.EdgeStep(samples, count, s);
    for (; s + 4 <= count; s += 4, i += 4) {
        const Double4 sums = parallel.FourSteps(samples, i);
        const double a = cascade.Step(samples, s), b = cascade.Step(samples, s + 1);
        const double c = cascade.Step(samples, s + 2), d = cascade.Step(samples, s + 3);
        Store4(sums + Double4{a, b, c, d}, samples.sum + i);
    }
    for (; i < count; ++s, ++i) {
        tracts.parallelOutput = parallel.Step(samples, i);
        samples.sum[i] = tracts.parallelOutput + cascade.EdgeStep(samples, count, s);
    }
    cascade.chain.StoreStates(tracts.cascade);
    parallel.chain.StoreStates(tracts.parallel);
}

LARYNTH_KERNEL void ParallelByFour(Tracts& tracts, TractSamples samples, std::size_t count) {
    ParallelBranch parallel{Chain(tracts.parallel), tracts.bypass};
    std::int64_t i = 0;
    const auto end = static_cast<std::int64_t>(count);
    for (; i + 4 <= end; i += 4) Store4(parallel.FourSteps(samples, i), samples.sum + i);
    for (; i < end; ++i) samples.sum[i] = parallel.Step(samples, i);
    parallel.chain.StoreStates(tracts.parallel);
    tracts.parallelOutput = samples.sum[count - 1];
}

LARYNTH_KERNEL void TractsByWave(Tracts& tracts, TractSamples samples, std::size_t count) {
    const auto signedCount = static_cast<std::int64_t>(count);
    if (tracts.tilting) {
        RunWave<true>(tracts, samples, signedCount);
    } else {
        RunWave<false>(tracts, samples, signedCount);
    }
}

/// One sample through one lane's section; `kAnti` keeps inputs instead of outputs.
template <bool kAnti = false>
LARYNTH_KERNEL double RunLane(SectionLanes& lanes, int k, double x) {
    const double y = (lanes.B[k] * lanes.state1[k] + lanes.C[k] * lanes.state2[k]) + lanes.A[k] * x;
    lanes.state2[k] = lanes.state1[k];
    lanes.state1[k] = kAnti ? x : y;
    return y;
}

// The same without vectors: sample by sample, section by section.

LARYNTH_KERNEL void ParallelOneByOne(Tracts& tracts, TractSamples samples, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        double y = tracts.bypass * samples.frication[i];
        for (int k = 0; k < Tracts::kParallelCount; ++k) {
            y = y + RunLane(tracts.parallel, k, samples.frication[i]);
        }
        samples.sum[i] = y;
    }
    tracts.parallelOutput = samples.sum[count - 1];
}

LARYNTH_KERNEL void TractsOneByOne(Tracts& tracts, TractSamples samples, std::size_t count) {
    ParallelOneByOne(tracts, samples, count);
    for (std::size_t i = 0; i < count; ++i) {
        double x = samples.voicing[i];
        if (tracts.tilting) x = RunLane(tracts.cascade, Tracts::CascadeLane(Tracts::kTilt), x);
        x = RunLane<true>(tracts.cascade, Tracts::CascadeLane(Tracts::kAntiResonator),
                          x + samples.aspiration[i]);
        for (int place = Tracts::kAntiResonator + 1; place < Tracts::kCascadeCount; ++place) {
            x = RunLane(tracts.cascade, Tracts::CascadeLane(place), x);
        }
        samples.sum[i] = samples.sum[i] + x;
    }
}

}  // namespace larynth::block
