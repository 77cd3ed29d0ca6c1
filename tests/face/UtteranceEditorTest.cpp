// SPDX-License-Identifier: MIT
/// Edited utterances, held against rendering everything.
#include <algorithm>
#include <gmock/gmock.h>
#include <limits>
#include <random>
#include <tuple>

#include <larynth/UtteranceEditor.h>

namespace larynth {
namespace {

/// Draws frames that leave the state of every stage changed.
class RandomFrames {
  public:
    KlattFrame Next() {
        KlattFrame frame;
        frame.length = Whole(0, 90);
        frame.F0 = Whole(60, 300), frame.FL = 0.1, frame.FLT = 9.0;
        frame.AV = Whole(0, 900), frame.AH = Whole(0, 90), frame.AF = Whole(0, 90), frame.TL = Whole(0, 20);
        frame.F1 = Whole(200, 900), frame.BW1 = 80, frame.F2 = Whole(900, 2200), frame.BW2 = 90;
        frame.PF2 = 1500, frame.PG2 = 0.7;
        return frame;
    }
    std::vector<KlattFrame> Next(int count) {
        std::vector<KlattFrame> frames;
        for (int i = 0; i < count; ++i) frames.push_back(Next());
        return frames;
    }
    int Whole(int least, int most) {
        return least + static_cast<int>(random_() % unsigned(most - least + 1));
    }

  private:
    std::minstd_rand random_{5};
};

void ExpectAsIfRenderedWhole(UtteranceEditor& editor, const SynthesizerSettings& settings) {
    const Sound edited = editor.Render(), whole = Render(editor.Utterance(), settings);
    ASSERT_EQ(edited.samples, whole.samples);
    ASSERT_EQ(edited.markers.size(), whole.markers.size());
    for (std::size_t i = 0; i < whole.markers.size(); ++i) {
        EXPECT_EQ(std::tie(edited.markers[i].sample, edited.markers[i].text),
                  std::tie(whole.markers[i].sample, whole.markers[i].text));
    }
}

TEST(UtteranceEditors, GiveTheSamplesOfRenderingEverything) {
    RandomFrames random;
    const VoiceSettings voice{.preEmphasis = 0.4, .lowShelf = {.F = 300, .G = 2, .P3 = 1, .P4 = 1}};
    for (const SynthesizerSettings& settings : {SynthesizerSettings{.seed = 9},
                                                {.tract = TractForm::Filter, .voice = voice, .seed = 1},
                                                {.wave = Waveform{0, 1, 2, -3}, .seed = 4}}) {
        UtteranceEditor editor({.frames = random.Next(40), .markers = {{0, "a"}, {17, "b"}, {40, "c"}}},
                               settings);
        for (int i = 0; i < 60; ++i) {
            const std::size_t count = editor.Utterance().frames.size();
            const auto place = static_cast<std::size_t>(random.Whole(0, static_cast<int>(count)));
            const int edit = random.Whole(0, 4);
            if (edit == 0) {
                editor.Insert(place, random.Next(random.Whole(0, 10)));
            } else if (edit == 1) {
                editor.Erase(place, std::min<std::size_t>(count - place, 7));
            } else if (place < count) {
                editor.SetFrame(place, random.Next());
            }
            if (i % 3 != 0) ExpectAsIfRenderedWhole(editor, settings);
        }
        // At a kept state, where nothing has been rendered behind it; and of the utterance's own frames.
        UtteranceEditor appended({.frames = random.Next(16)}, settings);
        for (std::size_t end : {16U, 24U, 32U}) {
            ExpectAsIfRenderedWhole(appended, settings);
            const std::vector<KlattFrame> again(appended.Utterance().frames.begin(),
                                                appended.Utterance().frames.begin() + 8);
            appended.Insert(end, std::span(appended.Utterance().frames).first(8));
            EXPECT_TRUE(std::ranges::equal(std::span(appended.Utterance().frames).last(8), again));
        }
        ExpectAsIfRenderedWhole(appended, settings);
        editor.Erase(0, editor.Utterance().frames.size());
        EXPECT_TRUE(editor.Samples().empty());
    }
}

TEST(UtteranceEditors, RefuseWhatCannotBeRenderedAndKeepWhatThereWas) {
    RandomFrames random;
    KlattFrame wrong = random.Next();
    wrong.G3 = std::numeric_limits<double>::quiet_NaN();
    const SynthesizerSettings settings{.seed = 2};
    UtteranceEditor editor({.frames = random.Next(10), .markers = {{3, "x"}}}, settings);
    const std::vector<KlattFrame> wrongs{random.Next(), wrong};
    EXPECT_THROW(editor.SetFrame(3, wrong), InputError);
    EXPECT_THROW(editor.SetFrames(3, wrongs), InputError);
    EXPECT_THROW(editor.Insert(0, wrongs), InputError);
    EXPECT_THROW(editor.SetFrame(10, random.Next()), InputError);
    EXPECT_THROW(editor.Erase(9, 2), InputError);
    EXPECT_THROW(editor.SampleOf(11), InputError);
    ExpectAsIfRenderedWhole(editor, settings);
    EXPECT_EQ(editor.SampleOf(10), editor.Samples().size());

    UtteranceEditor mended({.frames = {random.Next(), wrong}}, settings);
    try {
        mended.Samples();
        ADD_FAILURE();
    } catch (const InputError& error) {
        EXPECT_THAT(error.what(), testing::StartsWith("frame 1: G3: expected a finite number"));
    }
    mended.SetFrame(1, random.Next());
    ExpectAsIfRenderedWhole(mended, settings);
}

}  // namespace
}  // namespace larynth
