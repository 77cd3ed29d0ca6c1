// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <string>
#include <tuple>

#include "tests/host/CommandFolder.h"

namespace larynth::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::MatchesRegex;

class Say : public testing::Test {
  protected:
    std::string Out(const std::string& line, int status = 0) const {
        const CommandResult result = folder_.Run(line);
        EXPECT_EQ(result.status, status) << line << '\n' << result.err;
        return result.out;
    }
    std::string Raw(const std::string& options) const { return Out("larynth say Hello. -o - " + options); }

    CommandFolder folder_;
};

TEST_F(Say, AFailureHasItsStatusAndOneClearLineAndLeavesNothing) {
    folder_.Write("t.txt", "Hello.");
    folder_.Write("alsa.conf", "pcm.none { type empty }\n");
    const std::string toWav = "larynth say Hello -o o.wav ";
    const std::tuple<int, std::string, std::string> rows[] = {
        {2, "larynth say", "expected either TEXT or --file"},
        {2, "larynth say Hello -f t.txt", "expected either TEXT or --file"},
        {2, "larynth say '' -o o.wav --table t.csv", "TEXT: expected something to say, found nothing"},
        {2, "larynth say - -o o.wav </dev/null", "<stdin>: expected something to say, found nothing"},
        {2, "larynth say -f none -o o.wav", "none: cannot be opened"},
        {2, "larynth say '<speak>Hello <b there' --input ssml -o o.wav --table t.csv", "TEXT:1:"},
        {2, "larynth say 'HH QQ' --input arpabet -o o.wav", "TEXT:1:4: expected a phone"},
        {2, toWav + "--input html", "--input: expected text, arpabet, ipa or ssml, found \"html\""},
        {2, toWav + "--voice bob", "--voice: expected man, woman, whisper or a file, found \"bob\""},
        {2, toWav + "--voice t.txt", "t.txt:1:1: expected "},
        {2, toWav + "--rate 601", "--rate: expected a number from 80 to 600, found \"601\""},
        {2, toWav + "--pitch high", "--pitch: expected a number from 0.25 to 4"},
        {2, toWav + "--phone-table none", "none: cannot be opened"},
        {2, toWav + "--phone-table t.txt", "t.txt:1:1: expected "},
        {2, toWav + "--lexicon t.txt", "t.txt:1:"},
        {2, toWav + "--table ./o.wav", "--table: expected another file than the output"},
        {2, "larynth say - -o - --labels t.txt <t.txt", "--labels: expected another file than the input"},
        {2, "larynth say Hello --phones --labels l", "--labels: expected sound to label"},
        {1, toWav + "--labels none/l", "none/l: cannot be created"},
        {1, "larynth say '<speak><mark name=\"m\"/></speak>' --input ssml -o o.flac --table t.csv",
         "expected a sound that is not empty"},
        {1, "ALSA_CONFIG_PATH=$PWD/alsa.conf HOME=. larynth say Hello", "write a file with -o"},
        {1, "ALSA_CONFIG_PATH=/dev/null larynth say Hello", "no sound device; write a file with -o"},
        {2, "larynth say Hello -o ''", "expected the name of a file"},
    };
    for (const auto& [status, line, message] : rows) {
        const CommandResult result = folder_.Run(line);
        EXPECT_EQ(result.status, status) << line;
        EXPECT_THAT(result.err, MatchesRegex("larynth: [ -~]*\n")) << line;
        EXPECT_THAT(result.err, HasSubstr(message)) << line;
        EXPECT_EQ(result.out, "") << line;
    }
    EXPECT_THAT(folder_.Names(), ElementsAre("alsa.conf", "t.txt"));
}

TEST_F(Say, TheTableRendersAsTheSoundThatWasSaid) {
    folder_.Write("t",
                  "<speak>One <mark name=\"a, b\"/> two. <mark name=\"c\"/><mark name=\"d\"/> Three?<mark "
                  "name=\"e\"/></speak>");
    Out("larynth say -f t --input ssml -o s.raw --labels s.txt --table t.csv && "
        "larynth render t.csv -o r.raw --labels r.txt && cmp s.raw r.raw && sed -i 's/a,/a;/' s.txt && "
        "cmp s.txt r.txt && grep -q 'e$' s.txt");
}

TEST_F(Say, EveryWayInAndOutHoldsTheSameSamples) {
    const std::string raw = Raw("");
    EXPECT_GT(raw.size(), 2U * 4000);
    Out("echo Hello. >t; larynth say -f t -o o.wav && larynth say - <t -o o.flac && larynth say Hello. -o "
        "o.raw");
    EXPECT_EQ(folder_.Read("o.wav").substr(44), raw);
    EXPECT_EQ(folder_.Read("o.wav").substr(40, 2),
              std::string({static_cast<char>(raw.size() & 0xFF), static_cast<char>(raw.size() >> 8 & 0xFF)}));
    EXPECT_EQ(folder_.Read("o.raw"), raw);
    EXPECT_EQ(folder_.Read("o.flac").substr(0, 4), "fLaC");
}

TEST_F(Say, AStreamIsSpokenSentenceBySentence) {
    // The second sentence is not written before the first one has been heard.
    Out("mkfifo in out; { echo 'One. Two'; timeout 10 head -c 2000 out >first; echo three.; } >in & "
        "larynth say - <in -o - >out & wait; test -s first");
}

TEST_F(Say, OptionsReachTheVoice) {
    const std::string plain = Raw("");
    EXPECT_EQ(Raw("--voice man --rate 175 --pitch 1 --range 1 --volume 1 --input text"), plain);
    for (const char* option : {"--voice woman", "--pitch 1.1", "--range 0", "--volume 0.5"}) {
        EXPECT_NE(Raw(option), plain) << option;
    }
    EXPECT_EQ(Out("larynth say --input ssml '<speak><prosody pitch=\"105Hz\">Hello.</prosody></speak>' -o -"),
              plain);  // the man's own
    EXPECT_LT(Raw("--rate 350").size(), plain.size() * 3 / 4);
    EXPECT_EQ(Out("larynth say --voices"), "man\nwoman\nwhisper\n");
}

TEST_F(Say, PhonesReadBackAsTheyWerePrinted) {
    const std::string phones = Out("larynth say --phones 'Hello, big world.'");
    EXPECT_THAT(phones, HasSubstr("HH AX0 L OW1"));
    folder_.Write("p", phones);
    EXPECT_EQ(Out("larynth say --phones --input arpabet -f p"), phones);
    folder_.Write("l", "hello\tG UH1 D AY2\n");
    EXPECT_THAT(Out("larynth say --phones Hello --lexicon l"), HasSubstr("G UH1 D AY2"));
}

}  // namespace
}  // namespace larynth::test
