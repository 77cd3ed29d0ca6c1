// SPDX-License-Identifier: MIT
/// The sections of both tracts as waves.
///
/// A section's recurrence is a chain of operations that wait for each other, and sections in series wait for
/// each other as well. So they run as a wave: at a step the section at place k works on the sample k before
/// the one that place 0 works on, takes in what its neighbour put out at the step before, and all of them
/// advance together, one a lane. Neighbours lie in different halves: what the high half puts out is what the
/// low half takes in, and the other way round it is one lane further down.
///
///     lane     0 1 2 3          0 1 2 3
///     place    7 5 3 1  (low)   6 4 2 0  (high)
#pragma once

#include "engine/vector/Lanes.h"
#include "engine/vector/Tracts.h"

namespace larynth::vector {

constexpr int LaneOf(int place) { return 3 - place / 2; }
constexpr bool IsHigh(int place) { return place % 2 == 0; }

/// Eight sections. Each is without states until it enters, which it does before its first sample.
template <class Four>
struct Wave {
    Section<Four> low, high;

    /// The sections at the places 0 and 1, 2 and 3, 4 and 5, 6 and 7.
    LARYNTH_KERNEL Wave(const Section<Double2>& p0, const Section<Double2>& p1, const Section<Double2>& p2,
                        const Section<Double2>& p3)
        : low(Half<1>(p0, p1, p2, p3)), high(Half<0>(p0, p1, p2, p3)) {}

    /// The section at a place; `pair` is the one that it is in.
    template <int kPlace>
    LARYNTH_KERNEL void Enter(const Section<Double2>& pair) {
        Section<Four>& half = IsHigh(kPlace) ? high : low;
        half.state1 = WithLane<LaneOf(kPlace)>(half.state1, InAllLanes<Four>(pair.state1[kPlace % 2]));
        half.state2 = WithLane<LaneOf(kPlace)>(half.state2, InAllLanes<Four>(pair.state2[kPlace % 2]));
    }

  private:
    template <int k>
    LARYNTH_KERNEL static Section<Four> Half(const Section<Double2>& p0, const Section<Double2>& p1,
                                             const Section<Double2>& p2, const Section<Double2>& p3) {
        return {Four{p3.A[k], p2.A[k], p1.A[k], p0.A[k]}, Four{p3.B[k], p2.B[k], p1.B[k], p0.B[k]},
                Four{p3.C[k], p2.C[k], p1.C[k], p0.C[k]}};
    }
};

/// The states of a wave behind a step, from which a section leaves behind its last sample.
struct WaveStates {
    double low1[4], low2[4], high1[4], high2[4];

    template <class Four>
    LARYNTH_KERNEL void Keep(const Wave<Four>& wave) {
        Store(wave.low.state1, low1);
        Store(wave.low.state2, low2);
        Store(wave.high.state1, high1);
        Store(wave.high.state2, high2);
    }
    LARYNTH_KERNEL double State1(int place) const { return (IsHigh(place) ? high1 : low1)[LaneOf(place)]; }
    LARYNTH_KERNEL double State2(int place) const { return (IsHigh(place) ? high2 : low2)[LaneOf(place)]; }

    /// To the section at a place; `pairs` begin with place 0.
    LARYNTH_KERNEL void Leave(int place, Section<Double2>* pairs) const {
        pairs[place / 2].state1[place % 2] = State1(place);
        pairs[place / 2].state2[place % 2] = State2(place);
    }
};

/// The parallel branch. It is the input that travels from place to place, and with it the sum of the bypass
/// and of the sections that it has passed, which is so made in their order. The tilt runs at the place that
/// the branch leaves free, on the newest sample.
template <class Four>
struct BranchWave {
    static constexpr int kTiltPlace = Tracts::kParallelCount;

    Wave<Four> wave;
    Four inputLow = {}, inputHigh = {};
    Four sumLow = {}, sumHigh = {};

    /// `p` are the pairs of the branch; `tilt` may be null.
    LARYNTH_KERNEL BranchWave(const Section<Double2>* p, const SectionValues* tilt)
        : BranchWave(p, PairWithTilt(p[3], tilt)) {}

    /// A sample of each enters, the first of those that the pointers show.
    LARYNTH_KERNEL void Step(const double* frication, const double* bypassed, const double* voicing) {
        const Four input = ShiftDown(inputLow, Load<Four>(frication));
        const Four sum = ShiftDown(sumLow, Load<Four>(bypassed));
        inputLow = WithLane<LaneOf(kTiltPlace)>(inputHigh, Load<Four>(voicing));
        inputHigh = input;
        sumLow = sumHigh + wave.low.Resonate(inputLow);
        sumHigh = sum + wave.high.Resonate(inputHigh);
    }
    LARYNTH_KERNEL double Output() const { return Lane<LaneOf(Tracts::kParallelCount - 1)>(sumHigh); }

    /// What the tilt puts out, in the first lane.
    LARYNTH_KERNEL Four Tilted() const { return wave.low.state1; }

  private:
    LARYNTH_KERNEL BranchWave(const Section<Double2>* p, const Section<Double2>& last)
        : wave(p[0], p[1], p[2], last) {
        wave.template Enter<kTiltPlace>(last);
    }
    /// The last of the branch, with the tilt as its partner.
    LARYNTH_KERNEL static Section<Double2> PairWithTilt(Section<Double2> pair, const SectionValues* tilt) {
        if (tilt == nullptr) return pair;
        pair.A[1] = tilt->A, pair.B[1] = tilt->B, pair.C[1] = tilt->C;
        pair.state1[1] = tilt->state1, pair.state2[1] = tilt->state2;
        return pair;
    }
};

/// The resonators of the cascade. The newest state of a section is what it puts out.
template <class Four>
struct CascadeWave {
    Wave<Four> wave;

    LARYNTH_KERNEL explicit CascadeWave(const Section<Double2>* p)
        : wave(p[0], p[1], p[2], Section<Double2>{}) {}

    LARYNTH_KERNEL void Step(double x) {
        const Four input = ShiftDown(wave.low.state1, Four{x, 0.0, 0.0, 0.0});
        wave.low.Resonate(wave.high.state1);
        wave.high.Resonate(input);
    }
    LARYNTH_KERNEL double Output() const { return Lane<LaneOf(Tracts::kCascadeCount - 1)>(wave.low.state1); }
};

/// The antiresonator, which waits for no output, four samples at a time.
template <class Four>
struct AntiResonatorRow {
    Section<Four> section;
    Four before;  // the samples before the next four

    LARYNTH_KERNEL explicit AntiResonatorRow(const SectionValues& s)
        : section{InAllLanes<Four>(s.A), InAllLanes<Four>(s.B), InAllLanes<Four>(s.C)},
          before{0.0, 0.0, s.state2, s.state1} {}

    LARYNTH_KERNEL Four Run(const Four& x) {
        section.state1 = ShiftUpOne(before, x);
        section.state2 = ShiftUpTwo(before, x);
        before = x;
        return section.Output(x);
    }
};

}  // namespace larynth::vector
