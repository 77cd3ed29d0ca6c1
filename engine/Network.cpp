// SPDX-License-Identifier: MIT
#include "engine/Network.h"

#include <algorithm>

namespace larynth {

using block::PhaseTable;
using block::SectionLanes;
using block::Tracts;
using block::TractSamples;

namespace {

/// Room for a value of each sample of a stretch, one more, and the next multiple of four. Not initialised.
using Values = double[block::kStretch + 4];

/// The section at a place of the cascade behind the tilt.
SectionValues& CascadeSection(CascadeTract& tract, int place) noexcept {
    const int resonator = place - Tracts::kAntiResonator - 1;
    return resonator < 0 ? tract.AntiResonators()[0].Values()
                         : tract.Resonators()[static_cast<std::size_t>(resonator)].Values();
}

void FillCascade(SectionLanes& lanes, CascadeTract& tract) noexcept {
    for (int place = Tracts::kAntiResonator; place < Tracts::kCascadeCount; ++place) {
        lanes.Fill(Tracts::CascadeLane(place), CascadeSection(tract, place));
    }
}

void GiveCascade(const SectionLanes& lanes, CascadeTract& tract) noexcept {
    for (int place = Tracts::kAntiResonator; place < Tracts::kCascadeCount; ++place) {
        lanes.GiveState(Tracts::CascadeLane(place), CascadeSection(tract, place));
    }
}

void FillParallel(Tracts& tracts, ParallelTractCore& branch) noexcept {
    int lane = 0;
    for (Resonator& section : branch.Resonators()) tracts.parallel.Fill(lane++, section.Values());
    tracts.parallel.Silence(lane);
    tracts.bypass = branch.Bypass().Gain();
}

void GiveParallel(const Tracts& tracts, ParallelTractCore& branch) noexcept {
    int lane = 0;
    for (Resonator& section : branch.Resonators()) tracts.parallel.GiveState(lane++, section.Values());
    branch.Store(tracts.parallelOutput);
}

}  // namespace

void Network::Render(const Elements& elements, std::span<double> sums) noexcept {
    elements_ = elements;
    while (!sums.empty()) {
        const std::size_t length = std::min(sums.size(), block::kStretch);
        RenderStretch(sums.first(length));
        sums = sums.subspan(length);
    }
}

void Network::RenderStretch(std::span<double> sums) noexcept {
    Values voicing, aspiration, frication;
    Excite(std::span(voicing, sums.size()));
    DrawNoise(aspiration, frication, sums.size());
    const TractSamples samples{voicing, aspiration, frication, sums.data()};
    if (elements_.cascade != nullptr) {
        RunTracts(samples, sums.size());
    } else {
        RunFilterTract(samples, sums.size());
    }
}

void Network::Excite(std::span<double> voicing) noexcept {
    const bool flutters =
        elements_.filter != nullptr && elements_.filterMovesSource && elements_.filter->Flutters();
    if (elements_.source == nullptr) return ExciteFromWave(voicing, flutters);
    if (flutters) return ExciteFluttering(voicing);
    ExciteSteadily(voicing);
}

void Network::ExciteFromWave(std::span<double> voicing, bool flutters) noexcept {
    WaveTablePlayer& source = *elements_.waveSource;
    for (double& sample : voicing) {
        sample = source.IsSounding() ? source.Evaluate(true) : 0.0;
        if (flutters) source.SetF0(elements_.filter->NextF0());
    }
}

void Network::ExciteSteadily(std::span<double> voicing) noexcept {
    VoicingSourceCore& source = *elements_.source;
    const GlottalPeriod period = source.Period();
    const bool sounds = !source.IsSilent() && period.T0 != 0.0;
    const auto pulses = [&](const double* times, std::size_t first, std::size_t length) {
        double* const out = voicing.data() + first;
        if (sounds) kernels_.pulses({source.AV(), source.OQ(), source.DI()}, period, times, out, length);
    };
    if (!phases_.ForEachRun(source.SampleTime(), source.Phase(), period.T0, voicing.size(), pulses)) {
        Values T0, times;
        std::fill_n(T0, voicing.size(), period.T0);
        PhaseTable::AddUp(source.SampleTime(), source.Phase(), T0, std::span(times, voicing.size()));
        pulses(times, 0, voicing.size());
    }
    if (!sounds) std::ranges::fill(voicing, 0.0);
    source.Store(voicing.back());
}

/// The filter runs behind the source, so that each flutter step sets the period of the next sample.
void Network::ExciteFluttering(std::span<double> voicing) noexcept {
    const std::size_t count = voicing.size();
    VoicingSourceCore& source = *elements_.source;
    Values F0, times, T0, Tp, K;
    FlutterF0(std::span(F0, count));
    T0[0] = source.Period().T0;
    Tp[0] = source.Period().Tp;
    K[0] = source.Period().K;
    kernels_.periods(source.OQ(), F0, {T0 + 1, Tp + 1, K + 1}, count);
    PhaseTable::AddUp(source.SampleTime(), source.Phase(), T0, std::span(times, count));
    if (source.IsSilent()) {
        std::ranges::fill(voicing, 0.0);
    } else {
        kernels_.movedPulses({source.AV(), source.OQ(), source.DI()}, {T0, Tp, K}, times, voicing.data(),
                             count);
    }
    source.Period() = {T0[count], Tp[count], K[count]};
    source.Store(voicing.back());
}

/// The fluttering F0 behind each sample.
void Network::FlutterF0(std::span<double> F0) noexcept {
    VoicingFilterCore& filter = *elements_.filter;
    Flutter& flutter = filter.FlutterState();
    if (flutter.StaysReduced(filter.FLT, F0.size())) {
        flutter.Advance(filter.FLT, F0);
        kernels_.flutter(filter.F0, filter.FL, F0.data(), F0.size());
    } else {
        for (double& each : F0) each = filter.NextF0();
    }
}

void Network::DrawNoise(double* aspiration, double* frication, std::size_t count) noexcept {
    NoiseSource& first = *elements_.aspiration;
    NoiseSource& second = *elements_.frication;
    const std::uint32_t state = first.Generator().Claim(2 * count);
    kernels_.noise(state, {first.Amplitude(), second.Amplitude(), aspiration, frication}, count);
    first.Store(aspiration[count - 1]);
    second.Store(frication[count - 1]);
}

void Network::RunTracts(TractSamples samples, std::size_t count) noexcept {
    constexpr int kTiltLane = Tracts::CascadeLane(Tracts::kTilt);
    CascadeTract& cascade = *elements_.cascade;
    VoicingFilterCore* const filter = elements_.filter;
    TiltFilter* const tilt = filter != nullptr ? &filter->Tilt() : nullptr;
    Tracts tracts;
    tracts.tilting = tilt != nullptr && tilt->IsTilting();
    if (tracts.tilting) {
        tracts.cascade.Fill(kTiltLane, tilt->Section().Values());
    } else {
        tracts.cascade.Silence(kTiltLane);
    }
    FillCascade(tracts.cascade, cascade);
    FillParallel(tracts, *elements_.parallel);

    kernels_.tracts(tracts, samples, count);

    // A resonator's last output is its state.
    if (tracts.tilting) tracts.cascade.GiveState(kTiltLane, tilt->Section().Values());
    if (tilt != nullptr) {
        filter->Store(tracts.tilting ? tracts.cascade.state1[kTiltLane] : samples.voicing[count - 1]);
    }
    GiveCascade(tracts.cascade, cascade);
    cascade.Store(cascade.Resonators().back().Values().state1);
    GiveParallel(tracts, *elements_.parallel);
}

/// The tract as one filter runs sample by sample.
void Network::RunFilterTract(TractSamples samples, std::size_t count) noexcept {
    VoicingFilterCore* const filter = elements_.filter;
    CascadeFilterTract& tract = *elements_.filterTract;
    Values cascade;
    for (std::size_t i = 0; i < count; ++i) {
        double voicing = samples.voicing[i];
        if (filter != nullptr) voicing = filter->Store(filter->Process(voicing));
        cascade[i] = tract.Store(tract.Process(voicing + samples.aspiration[i]));
    }
    Tracts tracts;
    FillParallel(tracts, *elements_.parallel);
    kernels_.parallel(tracts, samples, count);
    GiveParallel(tracts, *elements_.parallel);
    for (std::size_t i = 0; i < count; ++i) samples.sum[i] = samples.sum[i] + cascade[i];
}

}  // namespace larynth
