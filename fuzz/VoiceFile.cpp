// SPDX-License-Identifier: MIT
// Any text is a voice that speaks, or refused.
#include "fuzz/HostFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace larynth;
    ReadHostFile(data, size, [](const std::istringstream& file) {
        SynthesizerSettings settings;
        settings.voice = ParseVoice(file.str(), "file");
        Speak(settings);
    });
    return 0;
}
