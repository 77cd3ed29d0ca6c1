// SPDX-License-Identifier: MIT
/// The engine's elements alone: nanoseconds a sample.
#include <benchmark/benchmark.h>

#include "engine/CascadeFilterTract.h"
#include "engine/CascadeTract.h"
#include "engine/Flutter.h"
#include "engine/NoiseSource.h"
#include "engine/ParallelTractCore.h"
#include "engine/TiltFilter.h"
#include "engine/VoicingSourceCore.h"

namespace larynth::bench {
namespace {

constexpr double kT = 1.0 / 11025.0;

/// 1500 Hz, 90 Hz wide.
constexpr SectionCoefficients kFormant{0.7, 1.25, -0.95};

/// Runs `element` over an input that never decays into denormal numbers.
template <class Element>
void Process(benchmark::State& state, Element& element) {
    double x = 1.0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(element.Process(x));
        x = -x;
    }
    state.SetItemsProcessed(state.iterations());
}

void ResonatorElement(benchmark::State& state) {
    Resonator element(1.0, 0.0, 0.0);
    element.SetFB(500.0, 60.0, 1.0, kT);
    Process(state, element);
}
BENCHMARK(ResonatorElement);

void CascadeTractElement(benchmark::State& state) {
    CascadeTract element;
    for (std::size_t i = 0; i < Frame::kCascadePoles; ++i) element.Poles().Set(i, kFormant);
    Process(state, element);
}
BENCHMARK(CascadeTractElement);

void CascadeFilterTractElement(benchmark::State& state) {
    CascadeFilterTract element;
    element.Filter().Feedback()[0] = 0.9;
    element.Filter().FeedForward()[0] = 1.0;
    Process(state, element);
}
BENCHMARK(CascadeFilterTractElement);

void ParallelTractElement(benchmark::State& state) {
    ParallelTractCore element;
    for (std::size_t i = 0; i < Frame::kParallelPoles; ++i) element.Poles().Set(i, kFormant);
    Process(state, element);
}
BENCHMARK(ParallelTractElement);

void TiltFilterElement(benchmark::State& state) {
    TiltFilter element;
    element.SetTilt(12, 11025.0);
    Process(state, element);
}
BENCHMARK(TiltFilterElement);

void VoicingSourceElement(benchmark::State& state) {
    VoicingSourceCore element;
    element.SetSampleTime(kT);
    element.SetParams(110.0, 900.0, 0.6, 0.3);
    for (auto _ : state) benchmark::DoNotOptimize(element.Evaluate());
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(VoicingSourceElement);

void FlutterElement(benchmark::State& state) {
    Flutter element;
    for (auto _ : state) benchmark::DoNotOptimize(element.Step(110.0, 0.05, 100000.0 * kT));
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(FlutterElement);

void NoiseElement(benchmark::State& state) {
    NoiseGenerator generator;
    NoiseSource element(40.0, generator);
    for (auto _ : state) benchmark::DoNotOptimize(element.Evaluate());
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(NoiseElement);

}  // namespace
}  // namespace larynth::bench
