// SPDX-License-Identifier: MIT
#include "bench/Case.h"

#include "bench/Frames.h"

namespace larynth::bench {
namespace {

constexpr int kLength = 110;     // samples, 10 ms
constexpr int kSamples = 11000;  // about one second: what a timed part of a made-up utterance has

constexpr FrameKind kVowel{};
constexpr FrameKind kVowelFlutter{.flutter = true};
constexpr FrameKind kEverything{.everything = true};
constexpr FrameKind kEverythingFlutter{.flutter = true, .everything = true};

Case Fresh(std::string name, std::vector<PlainFrame> frames) {
    const std::size_t count = frames.size();
    return {std::move(name), Feeding::Fresh, std::move(frames), count};
}

Case Fresh(std::string name, const FrameKind& kind, int length = kLength) {
    return Fresh(std::move(name), VowelFrames(kind, length, kSamples / length));
}

Case Same(std::string name, const FrameKind& kind, int length = kLength) {
    const auto count = static_cast<std::size_t>(kSamples / length);
    return {std::move(name), Feeding::Same, VowelFrames(kind, length), count};
}

/// Packets without samples: what a packet costs beside its samples.
Case Empty(std::string name, Feeding feeding) {
    const int different = feeding == Feeding::Fresh ? 100 : 1;
    return {std::move(name), feeding, VowelFrames(kEverything, 0, different), 100};
}

Case Table(std::string name, bool flutter) {
    auto frames = TableFrames(LARYNTH_EXAMPLES_DIR "/sentence_female.csv");
    return Fresh(std::move(name), flutter ? WithFlutter(std::move(frames)) : std::move(frames));
}

Case OneList() {
    Case one = Fresh("list_1000", VowelFrames(kEverything, kLength, 1000));
    one.oneList = true;
    return one;
}

Case FilterTract() {
    Case one = Same("filter_tract", kEverything);
    one.filterTract = true;
    return one;
}

Case WaveSource() {
    Case one = Fresh("wave_source", kEverything);
    one.waveSource = true;
    return one;
}

Case Silence() {
    Case one{"silence", Feeding::Same, Silenced(VowelFrames(kEverything, kLength)), 1000};
    one.lead = VowelFrames(kEverything, kLength, 100);
    return one;
}

}  // namespace

std::size_t Case::Units() const {
    std::size_t units = 0;
    for (std::size_t i = 0; i < count; ++i)
        units += CountsPackets() ? 1 : static_cast<std::size_t>(Frame(i).length);
    return units;
}

std::vector<Case> AllCases() {
    return {
        Table("sentence", false),
        Table("sentence_flutter", true),
        Fresh("vowel", kVowel),
        Fresh("vowel_flutter", kVowelFlutter),
        Fresh("everything", kEverything),
        Fresh("everything_flutter", kEverythingFlutter),
        Fresh("everything_16", kEverything, 16),
        Fresh("everything_1000", kEverything, 1000),
        Fresh("everything_flutter_1000", kEverythingFlutter, 1000),
        Same("same_vowel", kVowel),
        Same("same_vowel_flutter", kVowelFlutter),
        Same("same_everything", kEverything),
        Same("same_everything_flutter", kEverythingFlutter),
        Same("same_everything_16", kEverything, 16),
        Same("same_everything_1000", kEverything, 1000),
        Silence(),
        FilterTract(),
        WaveSource(),
        OneList(),
        Empty("empty", Feeding::Fresh),
        Empty("same_empty", Feeding::Same),
    };
}

}  // namespace larynth::bench
