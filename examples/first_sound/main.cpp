// SPDX-License-Identifier: MIT
#include <larynth/Speech.h>

int main() {
    larynth::KlattUtterance vowel{.frames = std::vector<larynth::KlattFrame>(100), .markers = {{0, "a"}}};
    for (larynth::KlattFrame& frame : vowel.frames) {
        frame.length = 110;  // samples: 10 ms
        frame.AV = 900, frame.AH = frame.AF = 0;
        frame.F1 = 700, frame.F2 = 1220, frame.F3 = 2600, frame.F4 = 3300, frame.F5 = 3750;  // Hz
        frame.BW1 = 130, frame.BW2 = 70, frame.BW3 = 160, frame.BW4 = 250, frame.BW5 = 200;
    }
    larynth::Render(vowel).Write("vowel.wav", "vowel.txt");
}
