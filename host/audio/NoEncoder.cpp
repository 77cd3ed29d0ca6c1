// SPDX-License-Identifier: MIT
#include "host/audio/Encoder.h"
#include "input/BadInput.h"

namespace larynth {

class Encoder::Implementation {};

Encoder::Encoder(OutputFile*, AudioFormat, int) {
    throw BadInput(
        "WAV and FLAC files need libsndfile, without which this program was built: .raw alone is possible");
}
Encoder::~Encoder() = default;

void Encoder::Append(std::span<const short>) {}
void Encoder::Finish() {}

}  // namespace larynth
