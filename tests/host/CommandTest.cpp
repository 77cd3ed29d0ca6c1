// SPDX-License-Identifier: MIT
#include <filesystem>
#include <gmock/gmock.h>
#include <string>

#include "tests/host/CommandFolder.h"

namespace larynth::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::StartsWith;

constexpr char kTable[] = "F0,AV,FrameLen,Marker\n100,700,200,one\n,,,\n120,,100,two\n";
constexpr std::size_t kTableBytes = 1000;  // of 500 samples

// So that `exit` and `ulimit` end with the line.
std::string Subshell(const std::string& line) { return std::string("(").append(line).append(")"); }

class Command : public testing::Test {
  protected:
    void SetUp() override { folder_.Write("t.csv", kTable); }

    std::string Raw(const std::string& options) const {
        const CommandResult result = folder_.Run("larynth render t.csv -o - " + options);
        EXPECT_EQ(result.status, 0) << result.err;
        return result.out;
    }

    CommandFolder folder_;
};

TEST_F(Command, BadArgumentsAndBadInputExitWithTwoAndOneClearLine) {
    const struct {
        const char* line;
        const char* message;
    } rows[] = {
        {"larynth", "expected render, items, register, unregister or classes"},
        {"larynth speak", "speak"},
        {"larynth items extra", "extra"},
        {"larynth render t.csv", "output"},
        {"larynth render -o o.wav", "INPUT"},
        {"larynth render t.csv u.csv -o o.wav", "u.csv"},
        {"larynth render t.csv -o o.mp3", "expected - or a name in .wav, .flac or .raw, found o.mp3"},
        {"larynth render t.csv -o o", "found o"},
        {"larynth render t.csv -o o.wav --labels o.wav", "--labels: expected another file"},
        {"larynth render t.csv -o o.wav --labels ./o.wav", "--labels: expected another file"},
        {"larynth render t.csv -o o.wav --pitch 3", "--pitch"},
        {"larynth render t.csv -o o.wav --volume loud", "--volume: expected a number, found \"loud\""},
        {"larynth render t.csv -o o.wav --volume nan", "--volume: expected a number"},
        {"larynth render t.csv -o o.wav --output-gain 1,5", "--output-gain: expected a number"},
        {"larynth render t.csv -o o.wav --seed -1", "--seed: expected a whole number"},
        {"larynth render t.csv -o o.wav --seed 4294967296", "--seed: expected a whole number"},
        {"larynth render t.csv -o o.wav --frame-len 12.5", "--frame-len: expected a whole number"},
        {"larynth render t.csv -o o.wav --frame-len 1000001", "--frame-len: expected a whole number"},
        {"larynth render t.csv -o o.wav --sample-freq 0", "--sample-freq: expected a number above 0"},
        {"larynth render t.csv -o o.wav --tract tube",
         "--tract: expected resonator or filter, found \"tube\""},
        {"larynth render t.csv -o o.wav --input words",
         "--input: expected table or packets, found \"words\""},
        {"larynth render t.csv -o o.wav --source sine",
         "--source: expected standard or wave:FILE, found \"sine\""},
        {"larynth render t.csv -o o.wav --source wave:", "--source: expected standard or wave:FILE"},
        {"larynth render t.csv -o o.wav --source wave:none", "none: cannot be opened: No such file"},
        {"larynth render t.csv -o o.wav --source wave:t.csv", "t.csv:1:1: expected a number"},
        {"larynth render t.csv -o o.wav --voice none.json", "none.json: cannot be opened: No such file"},
        {"larynth render t.csv -o o.wav --voice .", ".: cannot be read"},
        {"larynth render t.csv -o o.wav --voice t.csv", "t.csv:1:1: expected JSON"},
        {"head -c 83 /dev/zero | larynth render - --input packets -o o.wav",
         "<stdin>: expected packets of 82 bytes each, found 83 bytes"},
        {"larynth render . --input packets -o o.wav", ".: cannot be read"},
        {"larynth render none.csv -o o.wav", "none.csv: cannot be opened: No such file"},
        {"larynth render . -o o.wav", "cannot be read"},
        {"larynth render t.csv -o o.flac --sample-freq 1e6", "sample frequency of 1e+06"},
        {"larynth render t.csv -o o.wav --sample-freq 1e12", "sample frequency of 1e+12"},
        {"echo F0,Av,FrameLen | larynth render - -o o.wav", "<stdin>:1:4: expected the name of an item"},
        {"printf 'F0,FrameLen\\n1,2\\n1\\n' >b.csv; larynth render b.csv -o o.wav",
         "b.csv:3:2: expected 2 fields"},
        {"printf 'F0,FrameLen\\nnan,2\\n' | larynth render - -o o.wav", "<stdin>:2:1: expected a number"},
        {"printf 'F0\\n1\\n' | larynth render - -o o.wav", "<stdin>:1:1: expected a column FrameLen"},
        {"printf 'F0,FrameLen\\n' | larynth render - -o o.wav", "<stdin>:2:1: expected a frame"},
    };
    for (const auto& row : rows) {
        const CommandResult result = folder_.Run(row.line);
        EXPECT_EQ(result.status, 2) << row.line;
        EXPECT_THAT(result.err, StartsWith("larynth: ")) << row.line;
        EXPECT_THAT(result.err, HasSubstr(row.message)) << row.line;
        EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
        EXPECT_EQ(result.out, "") << row.line;
    }
    EXPECT_THAT(folder_.Names(), ElementsAre("b.csv", "t.csv"));
}

TEST_F(Command, WhatFailsWhileWorkingExitsWithOne) {
    const struct {
        const char* line;
        const char* message;
    } rows[] = {
        {"larynth render t.csv -o - >/dev/full", "standard output: cannot be written: No space left"},
        {"larynth render t.csv -o - >&-", "standard output: cannot be written"},
        {"larynth items >/dev/full", "standard output: cannot be written"},
        {"larynth render t.csv -o none/o.wav", "none/o.wav: cannot be created"},
        {"mkdir -p o.wav; larynth render t.csv -o o.wav", "o.wav: cannot be written: Is a directory"},
        {"larynth render t.csv -o p.wav --labels none/l", "none/l: cannot be created"},
        {"larynth render t.csv -o p.wav --labels /dev/full", "/dev/full: cannot be written"},
        {"printf 'F0,FrameLen\\n1,0\\n' | larynth render - -o p.flac", "a FLAC file cannot be empty"},
        // More than a pipe holds, so that the reader is gone before all is written.
        {"{ printf 'FrameLen\\n1000000\\n' | larynth render - -o -; echo $? >status; } | true; "
         "read s <status; rm status; exit $s",
         "standard output: cannot be written: Broken pipe"},
    };
    for (const auto& row : rows) {
        const CommandResult result = folder_.Run(Subshell(row.line));
        EXPECT_EQ(result.status, 1) << row.line << '\n' << result.err;
        EXPECT_THAT(result.err, HasSubstr(std::string("larynth: ") + row.message)) << row.line;
    }
    EXPECT_THAT(folder_.Names(), ElementsAre("o.wav", "t.csv"));
}

TEST_F(Command, AFailureLeavesAnExistingFileUntouched) {
    folder_.Write("o.wav", "old");
    for (const char* line :
         {"echo F0,Av,FrameLen | larynth render - -o o.wav", "larynth render t.csv -o o.wav --labels none/l",
          "ulimit -f 0; larynth render t.csv -o o.wav"}) {
        EXPECT_NE(folder_.Run(Subshell(line)).status, 0) << line;
        EXPECT_EQ(folder_.Read("o.wav"), "old") << line;
    }
    EXPECT_THAT(folder_.Names(), ElementsAre("o.wav", "t.csv"));
    EXPECT_EQ(folder_.Run("larynth render t.csv -o o.wav").status, 0);
    EXPECT_EQ(folder_.Read("o.wav").size(), 44 + kTableBytes);
}

TEST_F(Command, EveryFormOfOutputHoldsTheSameSamples) {
    const std::string raw = Raw("");
    ASSERT_EQ(raw.size(), kTableBytes);
    const CommandResult result = folder_.Run(
        "larynth render - -o o.raw <t.csv && larynth render t.csv -o o.wav && "
        "larynth render ./t.csv -o o.flac");
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(folder_.Read("o.raw"), raw);
    EXPECT_EQ(folder_.Read("o.wav").substr(44), raw);
    EXPECT_THAT(folder_.Read("o.flac"), StartsWith("fLaC"));
}

TEST_F(Command, LabelsTellWhereTheMarkersCameOut) {
    Raw("--labels l.txt");
    EXPECT_EQ(folder_.Read("l.txt"), "0.000000\t0.036281\tone\n0.036281\t0.045351\ttwo\n");
    Raw("--labels l.txt --sample-freq 10000.5");
    EXPECT_EQ(folder_.Read("l.txt"), "0.000000\t0.039998\tone\n0.039998\t0.049998\ttwo\n");
}

TEST_F(Command, OptionsReachTheSynthesizer) {
    const std::string plain = Raw("");
    EXPECT_EQ(Raw("--volume 1 --output-gain 1 --seed 1 --tract resonator --frame-len 7"), plain);
    EXPECT_NE(Raw("--seed 2"), plain);
    EXPECT_NE(Raw("--sample-freq 8000"), plain);
    EXPECT_EQ(Raw("--volume -0.5 --output-gain 2"), Raw("--volume -1"));
    EXPECT_EQ(Raw("--volume 0"), std::string(kTableBytes, '\0'));
    // The same transfer function with another order of operations.
    const std::vector<int> resonators = SamplesOf(plain);
    const std::vector<int> filter = SamplesOf(Raw("--tract filter"));
    ASSERT_EQ(filter.size(), resonators.size());
    for (std::size_t i = 0; i < filter.size(); ++i) EXPECT_NEAR(filter[i], resonators[i], 1) << i;
}

TEST_F(Command, AnEmptyPacketFileIsASoundWithoutSamples) {
    const CommandResult result = folder_.Run(
        "larynth render /dev/null --input packets -o o.raw --labels l && "
        "larynth render - --input packets -o o.wav </dev/null");
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.err, "");
    EXPECT_THAT(folder_.Names(), ElementsAre("l", "o.raw", "o.wav", "t.csv"));
    EXPECT_EQ(folder_.Read("o.raw") + folder_.Read("l"), "");
    EXPECT_EQ(folder_.Read("o.wav").size(), 44u);
}

TEST_F(Command, PacketsHaveTheFrameLengthOfTheirConversion) {
    // A frame is 110 samples; an unvoiced packet of nothing but zeros is silent.
    const std::string line = "head -c 164 /dev/zero | larynth render - --input packets -o - ";
    EXPECT_EQ(folder_.Run(line).out, std::string(2 * 110 * 2, '\0'));
    const CommandResult result = folder_.Run(line + "--frame-len 50 --sample-freq 8000 --tract filter");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out.size(), 2u * 110 * 2);
    EXPECT_EQ(result.err, "larynth: --frame-len does not apply to packets: their conversion sets it\n");
}

TEST_F(Command, ARoundedSampleFrequencyIsSaid) {
    const CommandResult result = folder_.Run("larynth render t.csv -o o.wav --sample-freq 10000.5");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "larynth: the file says 10001 Hz for a sample frequency of 10000.5 Hz\n");
}

TEST_F(Command, TheSummaryTellsLengthAndSpeed) {
    const CommandResult result = folder_.Run("larynth render t.csv -o o.wav --sample-freq 1000 --verbose");
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.err,
                MatchesRegex("o.wav: 0.50 s of sound at 1000 Hz, made in [0-9.]+ s, [0-9]+ times faster "
                             "than real time\n"));
}

TEST_F(Command, ProgressIsShownOnATerminal) {
    const CommandResult result = folder_.Run(
        "{ echo FrameLen; seq 200 | sed 's/.*/10/'; } >long.csv; "
        "script -qec 'larynth render long.csv -o o.wav' /dev/null </dev/null");
    EXPECT_EQ(result.status, 0);
    for (const char* percent : {" 32 %", " 64 %", " 96 %", "faster than real time"}) {
        EXPECT_THAT(result.out, HasSubstr(percent));
    }
}

TEST_F(Command, HelpAndVersionAreAnswers) {
    for (const char* line : {"larynth --help", "larynth render --help", "larynth --version"}) {
        const CommandResult result = folder_.Run(line);
        EXPECT_EQ(result.status, 0) << line;
        EXPECT_NE(result.out, "") << line;
    }
}

TEST_F(Command, ItemsListsTheVocabulary) {
    const CommandResult result = folder_.Run("larynth items");
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(std::count(result.out.begin(), result.out.end(), '\n'), 53);
    EXPECT_THAT(result.out, testing::ContainsRegex("\n0 +0 +F0 +Hz +100 "));
}

TEST_F(Command, TheExamplesRender) {
    const struct {
        const char* name;
        std::size_t samples;
        const char* lastWord;
    } rows[] = {{"word_married", 6064, "married"},
                {"sentence_female", 36800, "day"},
                {"sentence_male", 44480, "meters"}};
    for (const auto& row : rows) {
        const CommandResult result = folder_.Run("larynth render '" LARYNTH_EXAMPLES_DIR "/" +
                                                 std::string(row.name) + ".csv' -o o.raw --labels l.txt");
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_EQ(SamplesOf(folder_.Read("o.raw")).size(), row.samples) << row.name;
        EXPECT_THAT(folder_.Read("l.txt"), HasSubstr(row.lastWord)) << row.name;
    }
}

}  // namespace
}  // namespace larynth::test
