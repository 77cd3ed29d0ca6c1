// SPDX-License-Identifier: MIT
#include "synth/SignalTaps.h"

#include <limits>

#include <larynth/ComException.h>

#include "com/OutPointer.h"

namespace larynth {

namespace {

// clang-format off
constexpr std::string_view kNames[] = {
    "voicing", "tilted_voicing", "aspiration", "frication",
    "cascade_input", "cascade_nz",
    "cascade_np", "cascade_f1", "cascade_f2", "cascade_f3", "cascade_f4", "cascade_f5",
    "parallel_bypass",
    "parallel_f0", "parallel_f1", "parallel_f2", "parallel_f3", "parallel_f4", "parallel_f5", "parallel_f6",
    "cascade", "parallel", "sum",
    "gained", "low_shelf", "high_shelf", "pre_emphasis", "output",
};
// clang-format on
constexpr auto kCount = static_cast<std::size_t>(Signal::Count);
static_assert(std::size(kNames) == kCount);

constexpr double kNotComputed = std::numeric_limits<double>::quiet_NaN();

}  // namespace

std::span<const std::string_view> SignalNames() noexcept { return kNames; }

void SignalRows::RequireRoomFor(int count) const {
    if (rowLength < count) Zelvani::CheckResult(E_INVALIDARG);
    if (count == 0) return;
    const std::size_t all =
        (kCount - 1) * static_cast<std::size_t>(rowLength) + static_cast<std::size_t>(count);
    if (!CanWriteBytes(values, all * sizeof(double))) Zelvani::CheckResult(E_POINTER);
}

inline double SignalTaps::Put(Signal signal, double value, std::size_t further) noexcept {
    const std::size_t row = static_cast<std::size_t>(signal) + further;
    return rows_.values[row * static_cast<std::size_t>(rows_.rowLength) + at_] = value;
}

void SignalTaps::Render(std::span<std::int16_t> samples) noexcept {
    for (at_ = 0; at_ < samples.size(); ++at_) {
        const OutputStage::Steps steps = output_.Advance(Put(Signal::Sum, NextSum()));
        Put(Signal::Gained, steps.gained);
        Put(Signal::LowShelf, steps.lowShelved);
        Put(Signal::HighShelf, steps.highShelved);
        Put(Signal::PreEmphasis, steps.emphasised);
        samples[at_] = ToSample(Put(Signal::Output, steps.output));
    }
}

/// In the order of Roles::Called::NextSample.
double SignalTaps::NextSum() noexcept {
    double voicing = Put(Signal::Voicing, NextVoicing());
    const double aspiration = Put(Signal::Aspiration, own_.aspiration->Evaluate());
    const double frication = Put(Signal::Frication, own_.frication->Evaluate());
    if (own_.filter != nullptr) {
        MoveSource();
        voicing = own_.filter->Store(own_.filter->Process(voicing));
    }
    Put(Signal::TiltedVoicing, voicing);
    const double cascade = ThroughCascade(Put(Signal::CascadeInput, voicing + aspiration));
    const double parallel = ThroughParallel(frication);
    return Put(Signal::Parallel, parallel) + Put(Signal::Cascade, cascade);
}

double SignalTaps::NextVoicing() noexcept {
    if (own_.source != nullptr) return own_.source->Evaluate();
    return own_.waveSource->IsSounding() ? own_.waveSource->Evaluate() : 0.0;
}

/// Lets F0 flutter, for the source's next sample.
void SignalTaps::MoveSource() noexcept {
    if (!own_.filterMovesSource || !own_.filter->Flutters()) return;
    const double F0 = own_.filter->NextF0();
    if (own_.source != nullptr) {
        own_.source->SetPeriodFromF0(F0);
    } else {
        own_.waveSource->SetF0(F0);
    }
}

double SignalTaps::ThroughCascade(double x) noexcept {
    if (own_.cascade == nullptr) {
        Put(Signal::CascadeZero, kNotComputed);
        for (std::size_t i = 0; i < Frame::kCascadePoles; ++i) Put(Signal::FirstCascadePole, kNotComputed, i);
        return own_.filterTract->Store(own_.filterTract->Process(x));
    }
    CascadeTract& tract = *own_.cascade;
    const double y = tract.Poles().InSeries(Put(Signal::CascadeZero, tract.Zero().Process(x)));
    for (std::size_t i = 0; i < Frame::kCascadePoles; ++i)
        Put(Signal::FirstCascadePole, tract.Poles().Output(i), i);
    return tract.Store(y);
}

double SignalTaps::ThroughParallel(double x) noexcept {
    ParallelTractCore& tract = *own_.parallel;
    const double y = tract.Poles().SideBySide(x, Put(Signal::ParallelBypass, tract.Bypass().Process(x)));
    for (std::size_t i = 0; i < Frame::kParallelPoles; ++i)
        Put(Signal::FirstParallelPole, tract.Poles().Output(i), i);
    return tract.Store(y);
}

}  // namespace larynth
