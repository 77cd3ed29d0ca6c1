// SPDX-License-Identifier: MIT
#include "block/OwnNetwork.h"

#include <algorithm>

#include "com/OwnObject.h"

namespace larynth::block {

namespace {

/// Room for a value of each sample of a stretch, one more, and the next multiple of four. Not initialised.
using Values = double[kStretch + 4];

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

std::optional<OwnNetwork> OwnNetwork::Find(const Network& network) noexcept {
    OwnNetwork own;
    own.voicingSource_ = network.voicingSource;
    own.standardSource_ = OwnObject<TTSVoicingSourceStd>::Find(network.voicingSource);
    own.aspirationSource_ = OwnObject<TTSAspirationSource>::Find(network.aspirationSource);
    own.fricationSource_ = OwnObject<TTSFricationSource>::Find(network.fricationSource);
    own.resonatorTract_ = OwnObject<TTSVocalTractR>::Find(network.vocalTract);
    own.filterTract_ = OwnObject<TTSVocalTractF>::Find(network.vocalTract);
    own.parallelTract_ = OwnObject<TTSParallelTract>::Find(network.parallelTract);
    own.filter_ = OwnObject<TTSVoicingSourceFilter>::Find(network.voicingFilter);

    const bool ownSource = own.standardSource_ != nullptr ||
                           OwnObject<TTSVoicingSourceWave>::Find(network.voicingSource) != nullptr;
    const bool complete = ownSource && own.aspirationSource_ != nullptr && own.fricationSource_ != nullptr &&
                          (own.resonatorTract_ != nullptr || own.filterTract_ != nullptr) &&
                          own.parallelTract_ != nullptr &&
                          (own.filter_ != nullptr || network.voicingFilter == nullptr);
    if (!complete) return std::nullopt;
    const bool movesAnother = own.filter_ != nullptr && own.filter_->Source() != nullptr &&
                              own.filter_->Source() != network.voicingSource;
    return movesAnother ? std::nullopt : std::optional(own);
}

void OwnNetwork::Render(const Kernels& kernels, PhaseTable& phases, std::span<double> sums) noexcept {
    if (sums.empty()) return;
    Values voicing, aspiration, frication;
    Excite(kernels, phases, std::span(voicing, sums.size()));
    DrawNoise(kernels, aspiration, frication, sums.size());
    const TractSamples samples{voicing, aspiration, frication, sums.data()};
    if (resonatorTract_ != nullptr) {
        RunTracts(kernels, samples, sums.size());
    } else {
        RunFilterTract(kernels, samples, sums.size());
    }
}

void OwnNetwork::Excite(const Kernels& kernels, PhaseTable& phases, std::span<double> voicing) noexcept {
    const bool flutters = filter_ != nullptr && filter_->Flutters();
    if (standardSource_ == nullptr) return ExciteFromWave(voicing, flutters);
    if (flutters) return ExciteFluttering(kernels, voicing);
    ExciteSteadily(kernels, phases, voicing);
}

void OwnNetwork::ExciteFromWave(std::span<double> voicing, bool flutters) noexcept {
    for (double& sample : voicing) {
        sample = 0.0;
        voicingSource_->CalculateNext(&sample);
        if (flutters) voicingSource_->SetF0(filter_->NextF0());
    }
}

void OwnNetwork::ExciteSteadily(const Kernels& kernels, PhaseTable& phases,
                                std::span<double> voicing) noexcept {
    VoicingSourceCore& source = standardSource_->Core();
    const GlottalPeriod period = source.Period();
    const bool sounds = !source.IsSilent() && period.T0 != 0.0;
    const auto pulses = [&](const double* times, std::size_t first, std::size_t length) {
        double* const out = voicing.data() + first;
        if (sounds) kernels.pulses({source.AV(), source.OQ(), source.DI()}, period, times, out, length);
    };
    if (!phases.ForEachRun(source.SampleTime(), source.Phase(), period.T0, voicing.size(), pulses)) {
        Values T0, times;
        std::fill_n(T0, voicing.size(), period.T0);
        PhaseTable::AddUp(source.SampleTime(), source.Phase(), T0, std::span(times, voicing.size()));
        pulses(times, 0, voicing.size());
    }
    if (!sounds) std::ranges::fill(voicing, 0.0);
    source.Store(voicing.back());
}

/// The filter runs behind the source, so that each flutter step sets the period of the next sample.
void OwnNetwork::ExciteFluttering(const Kernels& kernels, std::span<double> voicing) noexcept {
    const std::size_t count = voicing.size();
    VoicingSourceCore& source = standardSource_->Core();
    Values F0, times, T0, Tp, K;
    FlutterF0(kernels, std::span(F0, count));
    T0[0] = source.Period().T0;
    Tp[0] = source.Period().Tp;
    K[0] = source.Period().K;
    kernels.periods(source.OQ(), F0, {T0 + 1, Tp + 1, K + 1}, count);
    PhaseTable::AddUp(source.SampleTime(), source.Phase(), T0, std::span(times, count));
    if (source.IsSilent()) {
        std::ranges::fill(voicing, 0.0);
    } else {
        kernels.movedPulses({source.AV(), source.OQ(), source.DI()}, {T0, Tp, K}, times, voicing.data(),
                            count);
    }
    source.Period() = {T0[count], Tp[count], K[count]};
    source.Store(voicing.back());
}

/// The fluttering F0 behind each sample.
void OwnNetwork::FlutterF0(const Kernels& kernels, std::span<double> F0) noexcept {
    Flutter& flutter = filter_->FlutterState();
    if (flutter.StaysReduced(filter_->FLT(), F0.size())) {
        flutter.Advance(filter_->FLT(), F0);
        kernels.flutter(filter_->F0(), filter_->FL(), F0.data(), F0.size());
    } else {
        for (double& each : F0) each = filter_->NextF0();
    }
}

void OwnNetwork::DrawNoise(const Kernels& kernels, double* aspiration, double* frication,
                           std::size_t count) noexcept {
    NoiseSource& first = aspirationSource_->Core();
    NoiseSource& second = fricationSource_->Core();
    const std::uint32_t state = first.Generator().Claim(2 * count);
    kernels.noise(state, {first.Amplitude(), second.Amplitude(), aspiration, frication}, count);
    first.Store(aspiration[count - 1]);
    second.Store(frication[count - 1]);
}

void OwnNetwork::RunTracts(const Kernels& kernels, TractSamples samples, std::size_t count) noexcept {
    constexpr int kTiltLane = Tracts::CascadeLane(Tracts::kTilt);
    CascadeTract& cascade = resonatorTract_->Core();
    TiltFilter* const tilt = filter_ != nullptr ? &filter_->Tilt() : nullptr;
    Tracts tracts;
    tracts.tilting = tilt != nullptr && tilt->IsTilting();
    if (tracts.tilting) {
        tracts.cascade.Fill(kTiltLane, tilt->Section().Values());
    } else {
        tracts.cascade.Silence(kTiltLane);
    }
    FillCascade(tracts.cascade, cascade);
    FillParallel(tracts, parallelTract_->Core());

    kernels.tracts(tracts, samples, count);

    // A resonator's last output is its state.
    if (tracts.tilting) tracts.cascade.GiveState(kTiltLane, tilt->Section().Values());
    if (tilt != nullptr) {
        tilt->Store(tracts.tilting ? tracts.cascade.state1[kTiltLane] : samples.voicing[count - 1]);
    }
    GiveCascade(tracts.cascade, cascade);
    cascade.Store(cascade.Resonators().back().Values().state1);
    GiveParallel(tracts, parallelTract_->Core());
}

/// The tract as one filter runs sample by sample.
void OwnNetwork::RunFilterTract(const Kernels& kernels, TractSamples samples, std::size_t count) noexcept {
    Values cascade;
    for (std::size_t i = 0; i < count; ++i) {
        double voicing = samples.voicing[i];
        if (filter_ != nullptr) voicing = filter_->Tilt().Store(filter_->Tilt().Process(voicing));
        filterTract_->CalculateNext(voicing + samples.aspiration[i], &cascade[i]);
    }
    Tracts tracts;
    FillParallel(tracts, parallelTract_->Core());
    kernels.parallel(tracts, samples, count);
    GiveParallel(tracts, parallelTract_->Core());
    for (std::size_t i = 0; i < count; ++i) samples.sum[i] = samples.sum[i] + cascade[i];
}

}  // namespace larynth::block
