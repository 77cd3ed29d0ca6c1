// SPDX-License-Identifier: MIT
/// A host's view: whole calls of Calculate, through interfaces and modules, as any program would make them.
#include <benchmark/benchmark.h>
#include <vector>

#include "bench/Utterance.h"

namespace larynth::bench {
namespace {

constexpr FrameKind kVowel{};
constexpr FrameKind kVowelWithFlutter{.flutter = true};
constexpr FrameKind kEverything{.noise = true, .tilt = true};
constexpr FrameKind kEverythingWithFlutter{.flutter = true, .noise = true, .tilt = true};

/// One packet again and again; the argument is the frame length.
void CalculatePacket(benchmark::State& state, const FrameKind& kind) {
    const auto synthesizer = MakeSynthesizer();
    const auto packet = MakeFrame(static_cast<int>(state.range(0)), kind);
    for (auto _ : state) {
        ComPtr<IUnknown> block;
        Check(synthesizer->Calculate(packet.Get(), GUID_NULL, GUID_NULL, block.Put()));
        benchmark::DoNotOptimize(block.Get());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK_CAPTURE(CalculatePacket, vowel, kVowel)->Arg(0)->Arg(16)->Arg(110)->Arg(1000);
BENCHMARK_CAPTURE(CalculatePacket, vowel_flutter, kVowelWithFlutter)->Arg(110);
BENCHMARK_CAPTURE(CalculatePacket, everything, kEverything)->Arg(110)->Arg(1000);
BENCHMARK_CAPTURE(CalculatePacket, everything_flutter, kEverythingWithFlutter)->Arg(110)->Arg(1000);

/// 6,000 packets of 10 ms in one list: a minute of speech at 11025 Hz, every frame a packet of its own.
void CalculateMinute(benchmark::State& state) {
    constexpr int kFrames = 6000, kLength = 110;
    const auto synthesizer = MakeSynthesizer();
    ComPtr<ITTSObjectList> list;
    Check(list.Create(CLSID_TTSObjectList));
    for (int i = 0; i < kFrames; ++i) Check(list->Add(MakeFrame(kLength, kEverything).Get()));
    for (auto _ : state) {
        ComPtr<ITTSObjectList> blocks;
        Check(synthesizer->Calculate(list.Get(), GUID_NULL, IID_ITTSObjectList, blocks.PutUnknown()));
    }
    state.SetItemsProcessed(state.iterations() * kFrames * kLength);
}
BENCHMARK(CalculateMinute)->Unit(benchmark::kMillisecond);

void CreatePacket(benchmark::State& state) {
    for (auto _ : state) {
        ComPtr<ILarynthParams> packet;
        Check(packet.Create(CLSID_LarynthParams));
        benchmark::DoNotOptimize(packet.Get());
    }
}
BENCHMARK(CreatePacket);

}  // namespace
}  // namespace larynth::bench

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
    larynth::bench::LoadModules();
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
