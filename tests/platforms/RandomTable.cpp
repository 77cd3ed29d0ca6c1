// SPDX-License-Identifier: MIT
#include "tests/platforms/RandomTable.h"

namespace larynth {
namespace {

/// SplitMix64 (Steele, Lea and Flood 2014).
class Random {
  public:
    explicit Random(std::uint64_t seed) : state_(seed) {}

    /// 0 to `count` - 1.
    unsigned Below(unsigned count) {
        state_ += 0x9E3779B97F4A7C15U;
        std::uint64_t z = (state_ ^ (state_ >> 30)) * 0xBF58476D1CE4E5B9U;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBU;
        return static_cast<unsigned>((z ^ (z >> 31)) % count);
    }
    bool OnceIn(unsigned count) { return Below(count) == 0; }
    /// From `least` on in `steps` steps of 1/1024 of `size`; size and least have few bits.
    double Between(double least, double size, unsigned steps = 1024) {
        return least + Below(steps + 1) * (size / 1024.0) * (1024.0 / steps);
    }
    template <class Value, std::size_t kCount>
    Value OneOf(const Value (&values)[kCount]) {
        return values[Below(kCount)];
    }

  private:
    std::uint64_t state_;
};

Waveform RandomWave(Random& random) {
    Waveform wave(1 + random.Below(60));
    for (double& value : wave) value = random.Between(-512.0, 1024.0);
    return wave;
}

// With P4 = 0 and P3 between 1/G and 1 the filter is stable.
Shelf RandomShelf(Random& random) {
    const double G = random.OneOf({1.0, 2.0, 4.0, 8.0});
    return {.F = random.Between(100.0, 2048.0), .G = G, .P3 = random.Between(0.5, 0.25) + 0.25 / G};
}

SynthesizerSettings RandomSettings(Random& random) {
    SynthesizerSettings settings{.sampleFreq = random.OneOf({8000.0, 11025.0, 16000.0, 22050.0, 44100.0,
                                                             7333.25, 11025.0625, 95999.5}),
                                 .tract = random.OnceIn(3) ? TractForm::Filter : TractForm::Resonator,
                                 .volume = random.OneOf({1.0, 0.75, -1.5, 64.0}),
                                 .outputGain = random.OneOf({1.0, 0.3125, 2.5}),
                                 .seed = random.Below(1000)};
    if (random.OnceIn(3)) {
        settings.voice = VoiceSettings{.preEmphasis = random.OneOf({0.0, 0.5, 0.9375}),
                                       .openQuotient = random.Between(0.25, 0.625)};
        if (random.OnceIn(2)) settings.voice->lowShelf = RandomShelf(random);
        if (random.OnceIn(2)) settings.voice->highShelf = RandomShelf(random);
        if (random.OnceIn(3)) settings.voice->wave = RandomWave(random);
    }
    if (random.OnceIn(6)) settings.wave = RandomWave(random);
    return settings;
}

double RandomValue(Random& random, const FrameItem& item) {
    const std::string_view name = item.name;
    if (name == "F0") return random.OnceIn(8) ? 0.0 : random.Between(40.0, 512.0);
    if (name == "OQ" || name == "DI") return random.Between(0.0, 1.0);
    if (name == "FL") return random.OnceIn(2) ? 0.0 : random.Between(0.0, 0.25);
    if (name == "FLT") return random.OneOf({0.0, 9.0625, 6.25, 2.25, 400.5, -12.5, 1048576.0});
    if (name == "TL") return random.Between(-4.0, 48.0);
    if (name[0] == 'A') return random.OnceIn(3) ? 0.0 : random.Between(0.0, name == "AV" ? 8192.0 : 256.0);
    if (item.unit == "factor") return random.Between(-0.25, 1.5);
    if (name.find("BW") != name.npos) return random.Between(-8.0, 512.0);
    return random.OnceIn(20) ? random.Between(-64.0, 64.0) : random.Between(100.0, 4096.0);
}

}  // namespace

RandomTable MakeRandomTable(std::uint64_t number) {
    Random random(number);
    RandomTable table{RandomSettings(random), std::vector<KlattFrame>(1 + random.Below(8))};
    KlattFrame frame;
    for (KlattFrame& made : table.frames) {
        frame.length = random.OneOf({0, 1, 2, 5, 55, 80, 110, 255, 256, 257, 700});
        const bool isFirst = &made == &table.frames.front();
        for (const FrameItem& item : FrameItems()) {
            if (isFirst ? !random.OnceIn(4) : random.OnceIn(4)) frame.*item.value = RandomValue(random, item);
        }
        made = frame;
    }
    return table;
}

}  // namespace larynth
