// SPDX-License-Identifier: MIT
/// Both tracts over a stretch of samples.
///
/// The waves of both are one long row of thirteen sections: the cascade runs as many samples behind the
/// branch as the branch has sections. So one section begins at each of the first steps, and one ends at each
/// of the last, and in between there is time for the antiresonator, which takes the tilt's output four
/// samples at a time. Both waves stand in one loop, so that one computes while the other waits.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>

#include "engine/vector/Kernels.h"
#include "engine/vector/SectionWaves.h"

namespace larynth::vector {

using Index = std::int64_t;

/// What a stretch leaves in memory, step by step.
struct WaveRecord {
    /// Steps from a sample's entry into the branch to its way out of the branch, to its entry into the
    /// cascade and to its way out of there.
    static constexpr int kBranchDelay = Tracts::kParallelCount - 1;
    static constexpr int kLag = Tracts::kParallelCount;
    static constexpr int kDelay = kLag + Tracts::kCascadeCount - 1;
    static constexpr std::size_t kSteps = kStretch + kDelay + 4;

    double* const mixed;
    double* const delayed;  // enters the cascade kLag steps later
    double* const branch;
    static_assert(2 + kSteps <= std::tuple_size_v<StretchValues>);
    WaveStates branchStates[kDelay + 4], cascadeStates[kDelay + 4];  // from the last sample's entry on

    /// The wave moves on from `tracts` ...
    LARYNTH_KERNEL WaveRecord(const Tracts& tracts, const TractSamples& samples)
        : mixed(samples.mixed), delayed(samples.delayed), branch(samples.branch) {
        mixed[0] = tracts.antiResonator->state2;
        mixed[1] = tracts.antiResonator->state1;
    }
    /// ... and leaves its states there.
    LARYNTH_KERNEL void Leave(const Tracts& tracts, std::size_t count) const {
        if (tracts.tilt != nullptr) {
            tracts.tilt->state1 = branchStates[0].State1(Tracts::kParallelCount);
            tracts.tilt->state2 = branchStates[0].State2(Tracts::kParallelCount);
        }
        for (int place = 0; place < Tracts::kParallelCount; ++place) {
            branchStates[place].Leave(place, tracts.parallel);
        }
        for (int place = 0; place < Tracts::kCascadeCount; ++place) {
            cascadeStates[kLag + place].Leave(place, tracts.cascade);
        }
        tracts.antiResonator->state1 = mixed[count + 1];
        tracts.antiResonator->state2 = mixed[count];
    }
};

template <class Four>
class TractWave {
  public:
    LARYNTH_KERNEL TractWave(const Tracts& tracts, const TractSamples& samples, std::size_t count,
                             WaveRecord& record)
        : tracts_(tracts),
          samples_(samples),
          last_(static_cast<Index>(count) - 1),
          record_(record),
          branch_(tracts.parallel, tracts.tilt),
          cascade_(tracts.cascade),
          antiResonator_(*tracts.antiResonator) {}

    LARYNTH_KERNEL void Run() {
        Begin(std::make_integer_sequence<int, kDelay / 4>{});
        BeginSection<kDelay>();
        Index s = kDelay;
        for (; s + 3 < last_; s += 4) FourSteps<kAllAtWork, false>(s);
        for (; s <= last_ + kDelay; s += 4) FourSteps<kAllAtWork, true>(s);
    }

  private:
    static constexpr int kLag = WaveRecord::kLag, kDelay = WaveRecord::kDelay;
    static constexpr int kAllAtWork = kDelay + 1;
    static_assert(kDelay % 4 == 0);

    template <int... kFours>
    LARYNTH_KERNEL void Begin(std::integer_sequence<int, kFours...>) {
        (FourSteps<4 * kFours, true>(4 * kFours), ...);
    }

    /// Steps from `s` on, which is kStep or, behind the beginning, at least that; `kMayEnd`: the last sample
    /// may have entered.
    template <int kStep, bool kMayEnd>
    LARYNTH_KERNEL void FourSteps(Index s) {
        // Behind the last sample it does not matter what enters.
        const Index from = kMayEnd ? std::min(s, last_ & ~Index{3}) : s;
        const Four a = Step<kStep, kMayEnd>(s, from);
        const Four b = Step<kStep + 1, kMayEnd>(s + 1, from + 1);
        const Four c = Step<kStep + 2, kMayEnd>(s + 2, from + 2);
        const Four d = Step<kStep + 3, kMayEnd>(s + 3, from + 3);
        AntiResonate(s, from, FirstLanes(a, b, c, d));
    }
    /// Returns what the tilt puts out, in the first lane.
    template <int kStep, bool kMayEnd>
    LARYNTH_KERNEL Four Step(Index s, Index from) {
        BeginSection<kStep>();
        if constexpr (kStep >= kLag) cascade_.Step(record_.delayed[s - kLag]);
        branch_.Step(samples_.frication + from, samples_.bypassed + from, samples_.voicing + from);
        record_.branch[s] = branch_.Output();
        if constexpr (kStep >= kDelay) {
            const Index sample = s - kDelay;
            samples_.sum[sample] = record_.branch[sample + WaveRecord::kBranchDelay] + cascade_.Output();
        }
        if (kMayEnd && s >= last_) KeepStates(s);
        return branch_.Tilted();
    }
    template <int kStep>
    LARYNTH_KERNEL void BeginSection() {
        if constexpr (kStep < Tracts::kParallelCount) {
            branch_.wave.template Enter<kStep>(tracts_.parallel[kStep / 2]);
        } else if constexpr (kStep >= kLag && kStep <= kDelay) {
            cascade_.wave.template Enter<kStep - kLag>(tracts_.cascade[(kStep - kLag) / 2]);
        }
    }

    LARYNTH_KERNEL void AntiResonate(Index s, Index from, const Four& tilted) {
        const Four voicing = tracts_.tilt != nullptr ? tilted : Load<Four>(samples_.voicing + from);
        const Four x = voicing + Load<Four>(samples_.aspiration + from);
        Store(x, record_.mixed + 2 + s);
        Store(antiResonator_.Run(x), record_.delayed + s);
    }

    /// Those of the sections that end at step `s`, among others.
    LARYNTH_KERNEL void KeepStates(Index s) {
        const Index ended = s - last_;
        record_.branchStates[ended].Keep(branch_.wave);
        if (ended >= kLag) record_.cascadeStates[ended].Keep(cascade_.wave);
    }

    const Tracts& tracts_;
    const TractSamples samples_;
    const Index last_;  // sample
    WaveRecord& record_;
    BranchWave<Four> branch_;
    CascadeWave<Four> cascade_;
    AntiResonatorRow<Four> antiResonator_;
};

template <class Four>
LARYNTH_KERNEL double RunTracts(const Tracts& tracts, const TractSamples& samples, std::size_t count) {
    WaveRecord record(tracts, samples);
    TractWave<Four>(tracts, samples, count, record).Run();
    record.Leave(tracts, count);
    return record.branch[count - 1 + WaveRecord::kBranchDelay];
}

/// The branch by itself: its output is added to what is in `samples.sum`.
template <class Four>
class BranchAlone {
  public:
    LARYNTH_KERNEL BranchAlone(const Tracts& tracts, const TractSamples& samples, std::size_t count)
        : branch_(tracts.parallel, nullptr),
          tracts_(tracts),
          samples_(samples),
          last_(static_cast<Index>(count) - 1) {}

    /// The last output.
    LARYNTH_KERNEL double Run(WaveStates* ends) {
        Begin(ends, std::make_integer_sequence<int, Tracts::kParallelCount>{});
        for (Index s = Tracts::kParallelCount; s <= last_ + kDelay; ++s) Step(s, ends);
        return output_;
    }

  private:
    static constexpr int kDelay = WaveRecord::kBranchDelay;

    template <int... kPlaces>
    LARYNTH_KERNEL void Begin(WaveStates* ends, std::integer_sequence<int, kPlaces...>) {
        (BeginSection<kPlaces>(ends), ...);
    }
    template <int kPlace>
    LARYNTH_KERNEL void BeginSection(WaveStates* ends) {
        branch_.wave.template Enter<kPlace>(tracts_.parallel[kPlace / 2]);
        Step(kPlace, ends);
    }
    LARYNTH_KERNEL void Step(Index s, WaveStates* ends) {
        const Index from = std::min(s, last_);
        branch_.Step(samples_.frication + from, samples_.bypassed + from, samples_.voicing + from);
        if (s >= last_) ends[s - last_].Keep(branch_.wave);
        if (s < kDelay) return;
        output_ = branch_.Output();
        samples_.sum[s - kDelay] = output_ + samples_.sum[s - kDelay];
    }

    BranchWave<Four> branch_;
    const Tracts& tracts_;
    const TractSamples samples_;
    const Index last_;  // sample
    double output_ = 0.0;
};

template <class Four>
LARYNTH_KERNEL double AddParallel(const Tracts& tracts, const TractSamples& samples, std::size_t count) {
    WaveStates ends[Tracts::kParallelCount];
    const double last = BranchAlone<Four>(tracts, samples, count).Run(ends);
    for (int place = 0; place < Tracts::kParallelCount; ++place) {
        ends[place].Leave(place, tracts.parallel);
    }
    return last;
}

}  // namespace larynth::vector
