// SPDX-License-Identifier: MIT
#include "bench/Frames.h"

#include <algorithm>

#include <larynth/Speech.h>

namespace larynth::bench {
namespace {

using Values = std::initializer_list<std::pair<std::string_view, double>>;

constexpr double kSampleFreq = 11025.0;

const Values kVowel = {{"F0", 110.0},  {"AV", 900.0},  {"OQ", 0.6},    {"AH", 0.0},    {"AF", 0.0},
                       {"F1", 500.0},  {"BW1", 60.0},  {"F2", 1500.0}, {"BW2", 90.0},  {"F3", 2500.0},
                       {"BW3", 150.0}, {"F4", 3400.0}, {"BW4", 250.0}, {"F5", 4200.0}, {"BW5", 300.0}};

const Values kTheRest = {{"AH", 40.0},    {"AF", 200.0},  {"AB", 0.1},    {"TL", 12.0},    {"DI", 0.3},
                         {"FNP", 280.0},  {"FNZ", 350.0}, {"PF0", 300.0}, {"PBW0", 80.0},  {"PG0", 0.1},
                         {"PF1", 700.0},  {"PBW1", 90.0}, {"PG1", 0.1},   {"PG2", 0.2},    {"PF2", 1500.0},
                         {"PF3", 2500.0}, {"PG3", 0.3},   {"PG4", 0.4},   {"PF4", 3400.0}, {"PG5", 0.3},
                         {"PF5", 4200.0}, {"PG6", 0.2}};

PlainFrame Plain(const KlattFrame& frame, double sampleFreq) {
    PlainFrame plain{{}, sampleFreq, frame.length};
    std::ranges::transform(FrameItems(), plain.items,
                           [&](const FrameItem& item) { return frame.*item.value; });
    return plain;
}

void Set(KlattFrame& frame, const Values& values) {
    for (const auto& [name, value] : values) frame[name] = value;
}

}  // namespace

std::vector<PlainFrame> VowelFrames(const FrameKind& kind, int length, int count) {
    KlattFrame vowel;
    vowel.length = length;
    Set(vowel, kVowel);
    if (kind.everything) Set(vowel, kTheRest);
    std::vector<PlainFrame> frames;
    for (int i = 0; i < count; ++i) {
        KlattFrame frame = vowel;
        frame.F0 += i % 20;
        frame.F1 += 5 * (i % 30);
        frame.F2 -= 10 * (i % 40);
        frames.push_back(Plain(frame, kSampleFreq));
    }
    return kind.flutter ? WithFlutter(std::move(frames)) : frames;
}

std::vector<PlainFrame> TableFrames(const char* path) {
    const KlattUtterance utterance = ReadUtterance(path);
    std::vector<PlainFrame> frames;
    for (const KlattFrame& frame : utterance.frames) frames.push_back(Plain(frame, utterance.sampleFreq));
    return frames;
}

std::vector<PlainFrame> WithFlutter(std::vector<PlainFrame> frames) {
    for (PlainFrame& frame : frames) {
        frame.items[FL] = 0.05;
        frame.items[FLT] = 1e5 / frame.sampleFreq;
    }
    return frames;
}

std::vector<PlainFrame> Silenced(std::vector<PlainFrame> frames) {
    for (PlainFrame& frame : frames) frame.items[AV] = frame.items[AH] = frame.items[AF] = 0.0;
    return frames;
}

}  // namespace larynth::bench
