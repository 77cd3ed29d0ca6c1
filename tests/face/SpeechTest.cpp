// SPDX-License-Identifier: MIT
/// Frames, targets, utterances and a synthesizer, without an interface pointer.
#include <cmath>
#include <filesystem>
#include <gmock/gmock.h>
#include <limits>
#include <sstream>
#include <tuple>

#include <larynth/Speech.h>

#include "tests/support/Content.h"

namespace larynth {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

KlattFrame Vowel() {
    KlattFrame frame;
    frame.length = 200;
    frame.AV = 700.0;
    frame.F1 = 500.0;
    frame.BW1 = 60.0;
    return frame;
}

TEST(KlattFrames, HaveTheItemsAndTheValuesOfANewPacket) {
    LoadModules();
    ComPtr<ITTSDoublePacket> packet;
    ASSERT_EQ(packet.Create(CLSID_LarynthParams), S_OK);
    int count = 0;
    packet->GetItemsCount(&count);
    ASSERT_EQ(count, static_cast<int>(kFrameItems));
    const KlattFrame frame;
    for (int i = 0; i < count; ++i) {
        const FrameItem& item = FrameItems()[static_cast<std::size_t>(i)];
        char name[8];
        double value = -1.0;
        packet->GetItemName(i, name, sizeof(name));
        packet->GetItemValue(i, &value);
        EXPECT_EQ(item.name, name);
        EXPECT_EQ(frame[name], value) << name;
        EXPECT_NE(item.meaning, "") << name;
    }
}

TEST(KlattFrames, ReachAPacketItemByItem) {
    KlattFrame frame;
    frame.length = 7;
    double next = 0.5;
    for (const FrameItem& item : FrameItems()) frame.*item.value = next++;
    const auto packet = Synthesizer().MakePacket(frame);
    ComPtr<ITTSDoublePacket> items;
    items.Query(packet.Get());
    for (int i = 0; i < static_cast<int>(kFrameItems); ++i) {
        double value = 0.0;
        items->GetItemValue(i, &value);
        EXPECT_EQ(value, 0.5 + i);
    }
}

TEST(KlattFrames, AnUnknownNameSuggestsTheNearest) {
    KlattFrame frame;
    for (const auto& [name, nearest] : {std::pair{"f1", "F1"}, {"PF", "PF0"}, {"bandwidth BW3", "BW3"}}) {
        try {
            frame[name] = 1.0;
            ADD_FAILURE() << name;
        } catch (const InputError& error) {
            EXPECT_THAT(error.what(), testing::EndsWith(std::string("; the nearest is ") + nearest));
            EXPECT_EQ(error.Status(), E_INVALIDARG);
        }
    }
}

TEST(Synthesizers, GiveTheSameSamplesInEveryWay) {
    KlattUtterance utterance{.frames = {Vowel(), Vowel(), Vowel()},
                             .markers = {{0, "one"}, {2, "two"}, {2, "three"}, {3, "end"}}};
    utterance.frames[1].length = 50;
    const SynthesizerSettings settings{.seed = 7};
    const Sound sound = Render(utterance, settings);
    ASSERT_EQ(sound.samples.size(), 450U);
    std::vector<std::size_t> places;
    for (const SoundMarker& marker : sound.markers) places.push_back(marker.sample);
    EXPECT_THAT(places, ElementsAre(0, 250, 250, 450));

    EXPECT_EQ(Synthesizer(settings).Render(std::span<const KlattFrame>(utterance.frames)), sound.samples);
    Synthesizer one(settings);
    std::vector<std::int16_t> samples;
    for (const KlattFrame& frame : utterance.frames) {
        const auto chunk = one.RenderChunk(one.MakePacket(frame).Get());
        samples.insert(samples.end(), chunk.begin(), chunk.end());
    }
    EXPECT_EQ(samples, sound.samples);
    EXPECT_TRUE(one.IsFinite());

    utterance.voice = VoiceSettings{.preEmphasis = 0.5};
    EXPECT_NE(Render(utterance, settings).samples, sound.samples);
    Synthesizer other({.voice = utterance.voice, .seed = 7});
    other.SetVoice(std::nullopt);
    utterance.voice.reset();
    EXPECT_EQ(other.Render(utterance).samples, sound.samples);
    other.SetVolume(0.0);
    EXPECT_THAT(other.Render(Vowel()), testing::Each(0));
}

TEST(Synthesizers, RefuseWhatIsNoFrame) {
    Synthesizer synthesizer({.sampleFreq = 8000.0});
    std::vector<KlattFrame> frames(2, Vowel());
    const auto expect = [&](const std::string& message) {
        try {
            synthesizer.Render({.sampleFreq = frames.empty() ? 16000.0 : 8000.0, .frames = frames});
            ADD_FAILURE() << message;
        } catch (const InputError& error) {
            EXPECT_THAT(error.what(), HasSubstr(message));
        }
    };
    frames[1].PG6 = std::numeric_limits<double>::quiet_NaN();
    expect("frame 1: PG6: expected a finite number, found nan");
    frames[0].BW1 = std::numeric_limits<double>::infinity();
    expect("frame 0: BW1: expected a finite number, found inf");
    frames[0].length = -1;
    expect("frame 0: length: expected a number of samples from 0, found -1");
    frames.clear();
    expect("sample frequency 8000 Hz, found 16000");
    for (const std::size_t second : {0U, 3U}) {
        EXPECT_THROW(Render({.frames = {Vowel(), Vowel()}, .markers = {{1, "one"}, {second, "two"}}}),
                     InputError);
    }
    EXPECT_THROW(Synthesizer({.sampleFreq = 0.0}), InputError);
}

TEST(Targets, FramesLieStraightOrOnACosineBetweenThem) {
    // In any order; a jump of F2 in the middle, AV stands still, the last frame is shorter.
    const KlattUtterance utterance = FramesFromTargets({{{0.045, "F1", 400.0, Approach::Cosine},
                                                         {0.01, "F1", 200.0},
                                                         {0.0, "F1", 100.0},
                                                         {0.02, "F2", 1000.0},
                                                         {0.02, "F2", 2000.0},
                                                         {0.03, "F2", 1000.0},
                                                         {0.01, "AV", 700.0}}},
                                                       {50, 10000.0});
    std::vector<std::tuple<int, double, double, double>> frames;
    for (const KlattFrame& f : utterance.frames) {
        frames.emplace_back(f.length, f.AV, std::round(f.F1 * 100) / 100, std::round(f.F2));
    }
    EXPECT_THAT(frames, ElementsAre(std::tuple(50, 700, 100, 1000), std::tuple(50, 700, 150, 1000),
                                    std::tuple(50, 700, 200, 1000), std::tuple(50, 700, 209.90, 1000),
                                    std::tuple(50, 700, 237.65, 2000), std::tuple(50, 700, 277.75, 1500),
                                    std::tuple(50, 700, 322.25, 1000), std::tuple(50, 700, 362.35, 1000),
                                    std::tuple(50, 700, 390.10, 1000)));
    EXPECT_EQ(utterance.sampleFreq, 10000.0);
    EXPECT_EQ(FramesFromTargets({{{0.0077, "F1", 1.0}}}, {50, 10000.0}).frames.back().length, 27);
    EXPECT_EQ(FramesFromTargets({{{1.0, "F1", 1.0}}}).frames.front().length, 55) << "5 ms";
}

TEST(Files, AnErrorHasItsPlaceInNumbers) {
    std::istringstream table("F0,FrameLen\n\n\n1,x\n");
    try {
        ReadUtterance(table, "t");
        ADD_FAILURE();
    } catch (const InputError& error) {
        EXPECT_EQ(std::tuple(error.File(), error.Line(), error.Column()), std::tuple("t", 4, 3));
    }
}

TEST(Sounds, AreWrittenWithTheirMarkers) {
    const std::string path = std::filesystem::path(testing::TempDir()) / "larynth-sound";
    const Sound sound{1000.0, {1, -2, 0x1234}, {{0, "one"}, {2, "two"}}};
    sound.Write(path + ".raw", path + ".txt");
    EXPECT_EQ(ContentOf(path + ".raw"), std::string("\x01\x00\xFE\xFF\x34\x12", 6));
    EXPECT_EQ(ContentOf(path + ".txt"), "0.000000\t0.002000\tone\n0.002000\t0.003000\ttwo\n");
    EXPECT_THROW(sound.Write(path + ".mp3"), InputError);
    try {
        sound.Write(path + ".raw/x.wav");
        ADD_FAILURE();
    } catch (const Error& error) {
        EXPECT_EQ(error.Status(), E_FAIL);
    }
    for (const char* extension : {".raw", ".txt"}) std::filesystem::remove(path + extension);
}

}  // namespace
}  // namespace larynth
