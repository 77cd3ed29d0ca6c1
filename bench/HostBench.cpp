// SPDX-License-Identifier: MIT
/// What a host pays beside rendering: for objects, and for the first sound.
#include <benchmark/benchmark.h>

#include <larynth/UtteranceEditor.h>

#include "bench/ComponentRendering.h"
#include "bench/Frames.h"

namespace larynth::bench {
namespace {

/// Activation of a small class.
void CreateResonatorView(benchmark::State& state) {
    for (auto _ : state) {
        ComPtr<ITTSResonatorFBParams> view;
        Require(view.Create(CLSID_TTSResonatorParams), "create a resonator's view");
        benchmark::DoNotOptimize(view.Get());
    }
}
BENCHMARK(CreateResonatorView);

void CreatePacket(benchmark::State& state) {
    for (auto _ : state) {
        ComPtr<ILarynthParams> packet;
        Require(packet.Create(CLSID_LarynthParams), "create a packet");
        benchmark::DoNotOptimize(packet.Get());
    }
}
BENCHMARK(CreatePacket);

/// A new packet with all of its items written.
void CreateAndFillPacket(benchmark::State& state) {
    const PlainFrame frame = VowelFrames({}, 110).front();
    for (auto _ : state) benchmark::DoNotOptimize(MakePacket(frame).Get());
}
BENCHMARK(CreateAndFillPacket);

/// A new synthesizer up to its first block of 10 ms; the modules are loaded.
void StartUpToFirstBlock(benchmark::State& state) {
    const auto packet = MakePacket(VowelFrames({}, 110).front());
    for (auto _ : state) {
        ComPtr<IACLIOProcess> synthesizer;
        ComPtr<IUnknown> block;
        Require(synthesizer.Create(CLSID_Larynth), "create a synthesizer");
        Require(synthesizer->Initialize(nullptr, GUID_NULL), "initialize the synthesizer");
        Require(synthesizer->Calculate(packet.Get(), GUID_NULL, GUID_NULL, block.Put()), "render");
        benchmark::DoNotOptimize(block.Get());
    }
}
BENCHMARK(StartUpToFirstBlock);

/// Of a minute of speech, 6,000 frames of 10 ms, the last one is changed and heard.
void EditLastFrame(benchmark::State& state) {
    KlattFrame frame{.length = 110, .AV = 900.0, .F1 = 700.0, .BW1 = 130.0};
    UtteranceEditor editor({.frames = std::vector<KlattFrame>(6000, frame)});
    for (auto _ : state) {
        frame.F1 = frame.F1 < 700.0 ? 700.0 : 600.0;
        editor.SetFrame(5999, frame);
        benchmark::DoNotOptimize(editor.Samples().data());
    }
}
BENCHMARK(EditLastFrame);

}  // namespace
}  // namespace larynth::bench
