// SPDX-License-Identifier: MIT
// Any bytes are utterances, or refused as bad input, in each form of text; what an utterance says of its
// phones is true.
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>
#include <utility>

#include "input/BadInput.h"
#include "text/UtteranceReader.h"

namespace {

using namespace larynth;

void Expect(bool condition) {
    if (!condition) std::abort();
}

void Check(const Utterance& utterance) {
    const std::size_t count = utterance.phones.size();
    Expect(count > 0 || !utterance.marks.empty());
    for (const Phone& phone : utterance.phones)
        Expect(!phone.name.empty() && phone.duration >= 0.0 && phone.duration <= 60.0 &&
               phone.prosody.rate > 0.0);
    for (const PitchTarget& target : utterance.pitch)
        Expect(target.phone < count && target.place >= 0.0 && target.place <= 1.0 &&
               std::isfinite(target.level));
    std::size_t last = 0;
    for (const Mark& mark : utterance.marks)
        Expect(mark.phone >= std::exchange(last, mark.phone) && mark.phone <= count);
}

}  // namespace

// The first byte chooses form and options.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    TextOptions options;
    options.form = static_cast<TextForm>(data[0] & 3);
    options.punctuation = static_cast<Punctuation>(data[0] >> 2 & 3);
    options.capitals = (data[0] & 16) != 0 ? Capitals::Spell : Capitals::None;
    options.spell = (data[0] & 32) != 0;
    std::istringstream input(std::string(data + 1, data + size));
    try {
        for (UtteranceReader reader(input, "input", options); reader.Next();) Check(reader.Current());
    } catch (const BadInput&) {
    }
    return 0;
}
