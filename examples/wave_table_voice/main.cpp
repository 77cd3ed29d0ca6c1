// SPDX-License-Identifier: MIT
// A voice of one's own: a table for the open phase of its glottal pulse, a raised top, and a sentence in it.
// Reads a frame table, the argument, and writes voice.wav.
#include <cstdio>
#include <exception>

#include <larynth/Speech.h>

namespace {

/// The derivative of a flow t^3·(1 − t) that rises slowly and falls fast, as in a pressed voice, in `count`
/// steps. Only its form counts, not its size.
larynth::Waveform PressedPulse(int count) {
    larynth::Waveform wave;
    for (int i = 0; i < count; ++i) {
        const double t = (i + 0.5) / count;
        wave.push_back(t * t * (3.0 - 4.0 * t));
    }
    return wave;
}

}  // namespace

int main(int argc, char** argv) try {
    if (argc != 2) {
        std::fputs("usage: wave_table_voice TABLE\n", stderr);
        return 2;
    }
    larynth::KlattUtterance sentence = larynth::ReadUtterance(argv[1]);
    sentence.voice = larynth::VoiceSettings{
        .openQuotient = 0.4,
        .highShelf = {.F = 3000.0, .G = 1.6, .P3 = 0.8, .P4 = 0.0},
        .wave = PressedPulse(64),
    };
    // The top is louder than in the table's own voice: less of all leaves the samples below 32768.
    larynth::Render(sentence, {.volume = 0.6}).Write("voice.wav");
} catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
}
