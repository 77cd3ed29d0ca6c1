// SPDX-License-Identifier: MIT
// Any text is a waveform that sounds, or refused.
#include "fuzz/HostFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace larynth;
    ReadHostFile(data, size, [](std::istream& file) {
        SynthesizerSettings settings;
        settings.wave = ParseWaveform(file, "file");
        Speak(settings);
    });
    return 0;
}
