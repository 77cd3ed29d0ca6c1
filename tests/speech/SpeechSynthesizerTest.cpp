// SPDX-License-Identifier: MIT
#include <algorithm>
#include <gmock/gmock.h>

#include <larynth/ComException.h>
#include <larynth/Runtime.h>

#include "input/BadInput.h"
#include "speech/SpeechSynthesizer.h"
#include "tests/speech/Spoken.h"

namespace larynth::test {
namespace {

class SpeechSound : public testing::Test {
  protected:
    static SpeechSynthesizer NewSynthesizer() {
        for (const char* module :
             {LARYNTH_MODULE_DIR "/Larynth.so", LARYNTH_MODULE_DIR "/LarynthCompanion.so"}) {
            Zelvani::CheckResult(LarynthLoadModule(module));
        }
        return {PhoneTable::English(), Speaker{}, UsualSettings()};
    }

    /// All samples, with the marks' names and places in `marks_`.
    std::vector<std::int16_t> Sound(SpeechSynthesizer& synthesizer, const Utterance& utterance) {
        std::vector<std::int16_t> sound;
        synthesizer.Begin(utterance);
        for (SpeechChunk chunk; synthesizer.Next(chunk);) {
            for (const ReachedMark& mark : chunk.marks)
                marks_.emplace_back(mark.mark.name, sound.size() + mark.sample);
            sound.insert(sound.end(), chunk.samples.begin(), chunk.samples.end());
        }
        return sound;
    }

    SpeechSynthesizer synthesizer_ = NewSynthesizer();
    std::vector<std::pair<std::string, std::size_t>> marks_;
};

TEST_F(SpeechSound, ComesWithItsMarksInTheirPlaces) {
    Utterance utterance = Phones("aa1:200 s:100 iy1:200");
    utterance.marks = {{0, Mark::Kind::Word, "a"},
                       {1, Mark::Kind::Named, "b"},
                       {1, Mark::Kind::Word, "c"},
                       {3, Mark::Kind::Named, "end"}};
    const auto sound = Sound(synthesizer_, utterance);
    EXPECT_EQ(sound.size(), 520U * 16U);
    EXPECT_THAT(marks_, testing::ElementsAre(std::pair("a", 0U), std::pair("b", 3200U), std::pair("c", 3200U),
                                             std::pair("end", sound.size())));
    const auto [least, largest] = std::minmax_element(sound.begin(), sound.end());
    EXPECT_GT(*largest, 5000);
    EXPECT_LT(std::max<int>(*largest, -*least), 32767);  // not cut
}

TEST_F(SpeechSound, BeginsAnewWhateverIsLeft) {
    SpeechChunk chunk;
    EXPECT_FALSE(synthesizer_.Next(chunk));
    synthesizer_.Begin(Phones("aa1:200 iy1:200"));
    EXPECT_TRUE(synthesizer_.Next(chunk));
    EXPECT_NEAR(static_cast<double>(Sound(synthesizer_, Phones("aa1:100")).size()), 120.0 * 16.0, 80.0);
    EXPECT_TRUE(Sound(synthesizer_, {}).empty());
    EXPECT_THROW(synthesizer_.Begin(Phones("aa1:100 qq:100")), BadInput);
}

}  // namespace
}  // namespace larynth::test
