// SPDX-License-Identifier: MIT
/// What the rules claim, measured in the frames that they make.
#include <algorithm>
#include <cmath>
#include <gmock/gmock.h>
#include <string>

#include "speech/Pauses.h"
#include "tests/speech/Spoken.h"

namespace larynth::test {
namespace {

constexpr double kStep = 5.0;  // ms
constexpr std::size_t kF2 = kF1 + 2;

using Frames = std::vector<SpeechFrame>;

// The value at a time (ms), and its least and largest in a time.
double At(const Frames& frames, std::size_t item, double time) {
    return frames[static_cast<std::size_t>(time / kStep)][item];
}
double Extreme(const Frames& frames, std::size_t item, double from, double to, bool isLargest) {
    double found = At(frames, item, from);
    for (double time = from; time < to; time += kStep) {
        found = isLargest ? std::max(found, At(frames, item, time)) : std::min(found, At(frames, item, time));
    }
    return found;
}
double Largest(const Frames& f, std::size_t item, double from, double to) {
    return Extreme(f, item, from, to, true);
}
double Least(const Frames& f, std::size_t item, double from, double to) {
    return Extreme(f, item, from, to, false);
}

// The first time (ms) behind `from` at which a value exceeds a bound.
double Reaches(const Frames& frames, std::size_t item, double bound, double from) {
    while (At(frames, item, from) <= bound) from += kStep;
    return from;
}

const PhoneEntry& Entry(const char* name) { return *PhoneTable::English().Find(name); }

TEST(Boundary, OfAnObstruentAndAVowelIsWhereTheLocusEquationSays) {
    const auto measured = [](const char* vowel) {
        return At(FramesOf("b:100 " + std::string(vowel) + "1:200"), kF2, 102);
    };
    const PhoneEntry& b = Entry("b");
    for (const char* vowel : {"iy", "aa", "uw"}) {
        const double expected = b.start[1] + b.slope[1] * (Entry(vowel).start[1] - b.start[1]);
        EXPECT_NEAR(measured(vowel), expected, 120.0) << vowel;  // rounded off towards the vowel
    }
    EXPECT_GT(measured("iy"), measured("aa") + 300.0);
}

TEST(Boundary, OfAVelarIsFurtherForwardBesideFrontVowels) {
    const auto locus = [](const char* vowel) {
        const double target = Entry(vowel).start[1];
        return At(FramesOf("g:100 " + std::string(vowel) + "1:200"), kF2, 102) - target;
    };
    EXPECT_LT(std::abs(locus("iy")), 200.0);  // F2 hardly moves
    EXPECT_GT(locus("uw"), 50.0);
}

TEST(Vowel, ReachesItsTargetsWhenThereIsTimeAndFallsShortWhenThereIsNot) {
    const double target = Entry("ao").start[1];
    const double nearest = Least(FramesOf("d:80 ao1:250 d:80"), kF2, 80, 330);
    EXPECT_NEAR(nearest, target, 60.0);
    EXPECT_GT(Least(FramesOf("d:80 ao1:60 d:80"), kF2, 80, 140), nearest + 80.0);
}

TEST(Diphthong, GoesFromOneTargetToTheOther) {
    const Frames frames = FramesOf("ay1:300");
    EXPECT_NEAR(At(frames, kF2, 60), Entry("ay").start[1], 150.0);
    EXPECT_NEAR(At(frames, kF2, 250), Entry("ay").end[1], 150.0);
}

TEST(Stop, IsClosedThenBurstsThenBreathesThenVoices) {
    const Frames frames = FramesOf("aa1:150 t1:120 .iy1:150");
    const double release = Reaches(frames, kAF, 500.0, 160);
    const double voicing = Reaches(frames, kAV, 300.0, release);
    EXPECT_LT(Largest(frames, kAV, 165, release), 100.0);
    EXPECT_LT(Largest(frames, kAF, 165, release - 6), 50.0);
    EXPECT_NEAR(voicing - release, 1000.0 * Entry("t").onset, 12.0);
    EXPECT_GT(Largest(frames, kAH, release + 10, voicing), 4.0 * At(frames, kAH, release - 10));
}

TEST(Stop, BreathesLessWithoutStressAndHardlyBehindAFricativeOfItsSyllable) {
    const auto onset = [](const std::string& phones, double from) {
        const Frames frames = FramesOf(phones);
        const double release = Reaches(frames, kAF, 500.0, from);
        return Reaches(frames, kAV, 300.0, release) - release;
    };
    const double stressed = onset("aa1:150 p1:120 .aa1:150", 170);
    EXPECT_LT(onset("aa1:150 p:120 .aa:150", 170), stressed - 8.0);
    EXPECT_GT(Reaches(FramesOf("s1:120 .p1:120 .aa1:150"), kAF, 500.0, 150), 215.0);  // of 240
    EXPECT_LT(Reaches(FramesOf("s1:120 p1:120 .aa1:150"), kAF, 500.0, 150), 205.0);
}

TEST(Stop, InFrontOfAnotherClosureHasNoBurst) {
    EXPECT_GT(Largest(FramesOf("aa1:150 p:100 .l:80 .aa1:100"), kAF, 170, 260), 200.0);
    EXPECT_LT(Largest(FramesOf("aa1:150 p:100 t:100 .aa1:100"), kAF, 170, 280), 50.0);
}

TEST(Nasal, OpensTheVelumBeforeTheMouthCloses) {
    const Frames frames = FramesOf("aa1:200 m:100 aa1:200");
    EXPECT_NEAR(At(frames, kFNZ, 100), At(frames, kFNP, 100), 1.0);  // pole and zero cancel
    EXPECT_GT(At(frames, kFNZ, 194), At(frames, kFNP, 194) + 30.0);
    EXPECT_NEAR(At(frames, kFNZ, 250), *Entry("m").zero, 5.0);
}

TEST(Fricative, LosesItsVoiceEarlyInFrontOfSilence) {
    const Frames before = FramesOf("aa1:150 z:100 aa1:150"), last = FramesOf("aa1:150 z:100 pau:100");
    EXPECT_GT(At(before, kAV, 230), 50.0);
    EXPECT_LT(At(last, kAV, 230), 10.0);
    EXPECT_GT(At(last, kAF, 230), 500.0);
}

TEST(Flap, TakesThePlaceOfTBetweenVowelsWhereTheSecondIsUnstressed) {
    EXPECT_GT(Least(FramesOf("aa1:150 t:80 er:120"), kAV, 150, 180), 150.0);
    EXPECT_LT(Least(FramesOf("aa:150 t:80 er1:120"), kAV, 150, 230), 10.0);
}

TEST(H, IsBreathInTheNeighboursTract) {
    const Frames frames = FramesOf("hh:80 iy1:200");
    EXPECT_NEAR(At(frames, kF2, 20), Entry("iy").start[1], 60.0);
    EXPECT_GT(At(frames, kAH, 40), 300.0);
    EXPECT_LT(At(frames, kAV, 40), 50.0);
}

TEST(Rate, IsKeptWhileVowelsGiveMoreThanStops) {
    const auto times = [](double rate) {
        Utterance utterance = Phones("b:80 aa1:160 t:80 s:120 ow1:180 n:70");
        SpeechSettings settings = UsualSettings();
        settings.rate *= rate;
        FramePlanner planner(PhoneTable::English(), {}, settings, utterance);
        double count = 0;
        while (planner.Next()) ++count;
        return count * kStep;
    };
    const double tail = 20.0;
    EXPECT_NEAR(times(1.0), 690.0 + tail, kStep);
    EXPECT_NEAR(times(1.5), 460.0 + tail, 2 * kStep);
    EXPECT_NEAR(times(0.5), 1380.0 + tail, 2 * kStep);
    std::vector<SpokenPhone> phones(3);
    phones[0].entry = &Entry("aa");
    phones[1].entry = &Entry("t");
    phones[2].entry = &Entry("pau");  // whose length is no business of the others
    for (SpokenPhone& phone : phones) phone.end = 0.1;
    PutInTime(phones, 1.5);
    EXPECT_LT(phones[0].Duration(), 0.9 * phones[1].Duration());
    EXPECT_NEAR(phones[1].end, 0.2 / 1.5, 1e-4);
}

TEST(SlowSpeech, PausesBetweenWordsButNotBehindOneWithoutStress) {
    Utterance utterance = Phones("ax:80 b:80 aa1:160 t:80 s:120 ow1:180");
    for (const std::size_t first : {0U, 1U, 4U}) utterance.phones[first].startsWord = true;
    utterance.pitch = {{3, 0.5, 1.0}, {5, 0.5, 1.0}};
    utterance.marks = {{4, Mark::Kind::Word, "so"}, {6, Mark::Kind::Named, "end"}};
    const double tempo = 0.3;
    const PausedUtterance slow = WithPauses(utterance, tempo, "pau");
    ASSERT_EQ(slow.utterance.phones.size(), 7U);
    EXPECT_EQ(slow.utterance.phones[4].name, "pau");
    EXPECT_GT(slow.tempo, 2.0 * tempo);
    EXPECT_NEAR((0.7 + slow.utterance.phones[4].duration) / slow.tempo, 0.7 / tempo, 1e-6);
    EXPECT_EQ(slow.utterance.pitch[0].phone, 3U);
    EXPECT_EQ(slow.utterance.pitch[1].phone, 6U);
    EXPECT_EQ(slow.utterance.marks[0].phone, 5U);
    EXPECT_EQ(slow.utterance.marks[1].phone, 7U);
    EXPECT_EQ(WithPauses(utterance, 0.8, "pau").utterance.phones.size(), 6U);
}

TEST(Pitch, FollowsTargetsSpeakerAndSettings) {
    Utterance utterance = Phones("aa1:200 aa1:200");
    utterance.pitch = {{0, 0.0, 0.0}, {1, 0.0, 2.0}, {1, 1.0, -1.0}};
    Speaker speaker;
    speaker.f0 = 100.0;
    speaker.spread = 0.5;
    const Frames frames = FramesOf(utterance, UsualSettings(), speaker);
    EXPECT_NEAR(At(frames, kF0, 2), 100.0, 3.0);
    EXPECT_NEAR(At(frames, kF0, 100), 141.4, 4.0);
    EXPECT_NEAR(At(frames, kF0, 200), 200.0, 6.0);  // two deviations of half an octave
    SpeechSettings settings = UsualSettings();
    settings.range = 0.0;
    settings.pitch = 1.5;
    utterance.phones[1].prosody.pitch = 2.0;
    const Frames monotone = FramesOf(utterance, settings, speaker);
    EXPECT_EQ(At(monotone, kF0, 100), 150.0);
    EXPECT_EQ(At(monotone, kF0, 300), 300.0);
}

TEST(Speaker, ScalesTheTractAndWhispersWithoutAVoice) {
    const Utterance utterance = Phones("aa1:300");
    const Frames man = FramesOf(utterance);
    const Frames woman = FramesOf(utterance, UsualSettings(), *Speaker::Find("woman"));
    EXPECT_NEAR(At(woman, kF2, 150) / At(man, kF2, 150), Speaker::Find("woman")->scale[1], 1e-9);
    const Frames whisper = FramesOf(utterance, UsualSettings(), *Speaker::Find("whisper"));
    EXPECT_EQ(Largest(whisper, kAV, 0, 300), 0.0);
    EXPECT_GT(At(whisper, kAH, 150), 5.0 * At(man, kAH, 150));
}

}  // namespace
}  // namespace larynth::test
