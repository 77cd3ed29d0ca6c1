// SPDX-License-Identifier: MIT
#include "bench/Frames.h"

#include <algorithm>
#include <fstream>

#include "host/tables/FrameTable.h"

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

/// What a new packet holds.
PlainFrame NewFrame(const ItemVocabulary& vocabulary, double sampleFreq) {
    PlainFrame frame{{}, sampleFreq, 0};
    for (std::size_t i = 0; i < kItems; ++i) frame.items[i] = vocabulary.Items().at(i).initial;
    return frame;
}

std::size_t IndexOf(const ItemVocabulary& vocabulary, std::string_view name) {
    return static_cast<std::size_t>(vocabulary.IndexOf(name).value());
}

}  // namespace

std::vector<PlainFrame> VowelFrames(const FrameKind& kind, int length, int count) {
    const auto vocabulary = ItemVocabulary::OfNewPacket();
    PlainFrame frame = NewFrame(vocabulary, kSampleFreq);
    frame.length = length;
    for (const auto& [name, value] : kVowel) frame.items[IndexOf(vocabulary, name)] = value;
    if (kind.everything) {
        for (const auto& [name, value] : kTheRest) frame.items[IndexOf(vocabulary, name)] = value;
    }
    std::vector<PlainFrame> frames(static_cast<std::size_t>(count), frame);
    for (int i = 0; i < count; ++i) {
        double* const items = frames[static_cast<std::size_t>(i)].items;
        items[F0] += i % 20;
        items[IndexOf(vocabulary, "F1")] += 5 * (i % 30);
        items[IndexOf(vocabulary, "F2")] -= 10 * (i % 40);
    }
    return kind.flutter ? WithFlutter(std::move(frames)) : frames;
}

std::vector<PlainFrame> TableFrames(const char* path) {
    const auto vocabulary = ItemVocabulary::OfNewPacket();
    std::ifstream file(path);
    FrameTableParser table(file, path, vocabulary, {});
    std::vector<PlainFrame> frames;
    while (table.Next()) {
        PlainFrame frame = NewFrame(vocabulary, table.SampleFreq());
        frame.length = table.Frame().length;
        for (std::size_t i = 0; i < table.ItemIndices().size(); ++i) {
            frame.items[static_cast<std::size_t>(table.ItemIndices()[i])] = table.Frame().values[i];
        }
        frames.push_back(frame);
    }
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
