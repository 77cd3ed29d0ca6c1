// SPDX-License-Identifier: MIT
/// From text to sound in a process that has spoken before.
#include <benchmark/benchmark.h>
#include <sstream>

#include "speech/SpeechSynthesizer.h"
#include "text/UtteranceReader.h"

namespace larynth::bench {
namespace {

constexpr char kSentence[] = "The quick brown fox jumps over the lazy dog, and nobody knows why it does.";

/// A reader and a synthesizer, made anew, up to the first samples of a sentence.
void TextToFirstSample(benchmark::State& state) {
    for (auto _ : state) {
        std::istringstream text(kSentence);
        UtteranceReader reader(text, "TEXT", {});
        SpeechSynthesizer synthesizer(PhoneTable::English(), *Speaker::Find("man"), {});
        reader.Next();
        synthesizer.Begin(reader.Current());
        SpeechChunk chunk;
        synthesizer.Next(chunk);
        benchmark::DoNotOptimize(chunk.samples.data());
    }
}
BENCHMARK(TextToFirstSample)->Unit(benchmark::kMicrosecond);

/// A sentence to its end; the rate counts seconds of sound in a second.
void SpeakSentence(benchmark::State& state) {
    std::size_t samples = 0;
    for (auto _ : state) {
        std::istringstream text(kSentence);
        UtteranceReader reader(text, "TEXT", {});
        SpeechSynthesizer synthesizer(PhoneTable::English(), *Speaker::Find("man"), {});
        while (reader.Next()) {
            synthesizer.Begin(reader.Current());
            for (SpeechChunk chunk; synthesizer.Next(chunk);) samples += chunk.samples.size();
        }
    }
    state.counters["sound"] =
        benchmark::Counter(static_cast<double>(samples) / kSpeechSampleFreq, benchmark::Counter::kIsRate);
}
BENCHMARK(SpeakSentence)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace larynth::bench
