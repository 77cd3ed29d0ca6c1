// SPDX-License-Identifier: MIT
#include "engine/Network.h"

#include <algorithm>

namespace larynth {

using vector::Tracts;
using vector::TractSamples;

void Network::Elements::Take(const Frame& frame) const {
    if (source != nullptr) source->Take(frame);
    if (waveSource != nullptr) waveSource->Take(frame);
    if (cascade != nullptr) cascade->Take(frame);
    if (filterTract != nullptr) filterTract->Take(frame);
    parallel->Take(frame);
    aspiration->SetAmplitude(frame.AH);
    frication->SetAmplitude(frame.AF);
    if (filter != nullptr) filter->Take(frame);
}

std::span<const double> Network::Render(const Elements& elements, std::size_t count) noexcept {
    elements_ = &elements;
    auto& [voicing, aspiration, frication, bypassed, mixed, delayed, branch, sums] = stretch_;
    Excite(std::span(voicing).first(count));
    DrawNoise({.aspirationAmplitude = elements_->aspiration->Amplitude(),
               .fricationAmplitude = elements_->frication->Amplitude(),
               .bypassGain = elements_->parallel->Bypass().Gain(),
               .aspiration = aspiration.data(),
               .frication = frication.data(),
               .bypassed = bypassed.data()},
              count);
    const TractSamples samples{voicing.data(), aspiration.data(), frication.data(), bypassed.data(),
                               sums.data(),    mixed.data(),      delayed.data(),   branch.data()};
    if (elements_->cascade != nullptr) {
        RunTracts(samples, count);
    } else {
        RunFilterTract(samples, count);
    }
    return std::span(sums).first(count);
}

void Network::Excite(std::span<double> voicing) noexcept {
    const bool flutters =
        elements_->filter != nullptr && elements_->filterMovesSource && elements_->filter->Flutters();
    if (elements_->source == nullptr) return ExciteFromWave(voicing, flutters);
    if (flutters) return ExciteFluttering(voicing);
    ExciteSteadily(voicing);
}

void Network::ExciteFromWave(std::span<double> voicing, bool flutters) noexcept {
    WaveTablePlayer& source = *elements_->waveSource;
    for (double& sample : voicing) {
        sample = source.IsSounding() ? source.Evaluate() : 0.0;
        if (flutters) source.SetF0(elements_->filter->NextF0());
    }
}

void Network::ExciteSteadily(std::span<double> voicing) noexcept {
    VoicingSourceCore& source = *elements_->source;
    const GlottalPeriod period = source.Period();
    vector::StretchValues times;
    phases_.Write(source.SampleTime(), source.Phase(), period.T0, std::span(times).first(voicing.size()));
    if (source.IsSilent() || period.T0 == 0.0) {
        std::ranges::fill(voicing, 0.0);
    } else {
        kernels_.pulses({source.AV(), source.OQ(), source.DI()}, period, times.data(), voicing.data(),
                        voicing.size());
    }
    source.Store(voicing.back());
}

/// The filter runs behind the source, so that each flutter step sets the period of the next sample.
void Network::ExciteFluttering(std::span<double> voicing) noexcept {
    const std::size_t count = voicing.size();
    VoicingSourceCore& source = *elements_->source;
    vector::StretchValues F0, times, T0, Tp, K;
    FlutterF0(std::span(F0).first(count));
    T0[0] = source.Period().T0;
    Tp[0] = source.Period().Tp;
    K[0] = source.Period().K;
    kernels_.periods(source.OQ(), F0.data(), {&T0[1], &Tp[1], &K[1]}, count);
    phases_.Write(source.SampleTime(), source.Phase(), T0.data(), std::span(times).first(count));
    if (source.IsSilent()) {
        std::ranges::fill(voicing, 0.0);
    } else {
        kernels_.movedPulses({source.AV(), source.OQ(), source.DI()}, {T0.data(), Tp.data(), K.data()},
                             times.data(), voicing.data(), count);
    }
    source.Period() = {T0[count], Tp[count], K[count]};
    source.Store(voicing.back());
}

/// The fluttering F0 behind each sample.
void Network::FlutterF0(std::span<double> F0) noexcept {
    VoicingFilterCore& filter = *elements_->filter;
    Flutter& flutter = filter.FlutterState();
    if (flutter.StaysReduced(filter.FLT, F0.size())) {
        flutter.Advance(filter.FLT, F0);
        kernels_.flutter(filter.F0, filter.FL, F0.data(), F0.size());
    } else {
        for (double& each : F0) each = filter.NextF0();
    }
}

void Network::DrawNoise(const vector::Noise& noise, std::size_t count) noexcept {
    const std::uint32_t state = elements_->aspiration->Generator().Claim(2 * count);
    kernels_.noise(state, noise, count);
    elements_->aspiration->Store(noise.aspiration[count - 1]);
    elements_->frication->Store(noise.frication[count - 1]);
}

void Network::RunTracts(const TractSamples& samples, std::size_t count) noexcept {
    CascadeTract& cascade = *elements_->cascade;
    VoicingFilterCore* const filter = elements_->filter;
    const bool tilts = filter != nullptr && filter->Tilt().IsTilting();
    Tracts tracts;
    tracts.tilt = tilts ? &filter->Tilt().Section().Values() : nullptr;
    tracts.antiResonator = &cascade.Zero().Values();
    tracts.cascade = cascade.Poles().Pairs();
    tracts.parallel = elements_->parallel->Poles().Pairs();

    elements_->parallel->Store(kernels_.tracts(tracts, samples, count));

    // A resonator's last output is its state.
    if (filter != nullptr) filter->Store(tilts ? tracts.tilt->state1 : samples.voicing[count - 1]);
    cascade.Store(cascade.Poles().Output(Frame::kCascadePoles - 1));
}

/// The tract as one filter runs sample by sample.
void Network::RunFilterTract(const TractSamples& samples, std::size_t count) noexcept {
    VoicingFilterCore* const filter = elements_->filter;
    CascadeFilterTract& tract = *elements_->filterTract;
    for (std::size_t i = 0; i < count; ++i) {
        double voicing = samples.voicing[i];
        if (filter != nullptr) voicing = filter->Store(filter->Process(voicing));
        samples.sum[i] = tract.Store(tract.Process(voicing + samples.aspiration[i]));
    }
    Tracts tracts{};
    tracts.parallel = elements_->parallel->Poles().Pairs();
    elements_->parallel->Store(kernels_.parallel(tracts, samples, count));
}

}  // namespace larynth
