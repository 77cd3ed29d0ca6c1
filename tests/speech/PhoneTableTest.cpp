// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <sstream>
#include <string>
#include <tuple>

#include "input/BadInput.h"
#include "speech/Data.h"
#include "speech/PhoneTable.h"
#include "speech/Speaker.h"

namespace larynth::test {
namespace {

// What Parse says of a text; empty: nothing.
template <class Parsed>
std::string Refusal(const std::string& text) {
    std::istringstream input(text);
    try {
        static_cast<void>(Parsed::Parse(input, "f"));
    } catch (const BadInput& error) {
        return error.what();
    }
    return {};
}

std::string Replaced(std::string text, const std::string& what, const std::string& with) {
    return text.replace(text.find(what), what.size(), with);
}

TEST(PhoneTable, SaysWhereATableIsWrongAndWhatWasExpected) {
    constexpr char kHead[] =
        "phone class voiced F1 F2 F3 E1 E2 E3 B1 B2 B3 S1 S2 S3 yield transition shortest voicing frication "
        "onset "
        "burst zero front flap P1 P2 P3 P4 P5 P6 P7 PB\n";
    constexpr char kPause[] =
        "pau pause 0 450 1450 2500 450 1450 2500 100 120 200 0 0 0 0 50 5 - - 0 0 - - - - - - - - - - -\n";
    constexpr char kS[] =
        "s fricative 0 320 1750 2600 320 1750 2600 200 120 200 0 0 0 0 50 40 - 0 0 0 - - - -9 -9 -9 -9 -9 -9 "
        "-9 -9\n";
    const std::string good = std::string("# a comment\n") + kHead + "\n" + kPause + kS;
    EXPECT_EQ(Refusal<PhoneTable>(good), "");
    const std::tuple<std::string, std::string, std::string> rows[] = {
        {"class ", "clas ", "f:2:7: expected the name of a column, found \"clas\""},
        {"voiced ", "phone ", "f:2:13: expected each column once, found \"phone\""},
        {" PB\n", "\n", "f:2:1: expected a column PB"},
        {"pause 0", "paus 0",
         "f:4:5: expected vowel, diphthong, glide, nasal, fricative, stop, affricate, aspirate or "
         "pause, found \"paus\""},
        {"450", "x", "f:4:13: expected F1: a number from 50 to 7900, found \"x\""},
        {"1450", "8000", "f:4:17: expected F2: a number from 50 to 7900, found \"8000\""},
        {"- 0 0 0", "z 0 0 0", "f:5:69: expected voicing: - or a number from -90 to 20, found \"z\""},
        {"pau pause 0", "pau pause", "f:4:1: expected 33 fields, found 32"},
        {"s fric", "pau fric", "f:5:1: expected each phone once, found \"pau\""},
        {"pau pause", "pau vowel", "f:6:1: expected a phone of class pause"},
        {"- - - -9", "- q - -9", "f:6:1: expected a line for phone q, which s names"},
        {" -9 -9 -9 -9 -9 -9 -9 -9\n", " - - - - - - - -\n", "f:5:83: expected a level in dB, found \"-\""},
        {"s fric", "\xFF fric", "f:5:1: expected UTF-8, found \"\\xFF\""},
    };
    for (const auto& [what, with, message] : rows) {
        EXPECT_EQ(Refusal<PhoneTable>(Replaced(good, what, with)), message) << what;
    }
    EXPECT_EQ(Refusal<PhoneTable>(""), "f:1:1: expected a line that names the columns");
}

TEST(Speaker, SaysWhereAFileIsWrongAndKnowsThoseThatComeWithTheSystem) {
    const std::tuple<std::string, std::string> rows[] = {
        {"f0 100\n\n# x\ntilt 3\n", ""},
        {"f0 100\nf0 100\n", "f:2:1: expected each value once, found \"f0\""},
        {"f0\n", "f:1:1: expected f0 and one value"},
        {"f0 20\n", "f:1:4: expected a number from 40 to 500, found \"20\""},
        {"\nF0 100\n", "f:2:1: expected the name of a speaker's value, found \"F0\""},
    };
    for (const auto& [text, message] : rows) EXPECT_EQ(Refusal<Speaker>(text), message);
    EXPECT_THAT(Speaker::Names(), testing::ElementsAre("man", "woman", "whisper"));
    EXPECT_GT(Speaker::Find("woman")->f0, Speaker::Find("man")->f0 * 1.5);
    EXPECT_FALSE(Speaker::Find("nobody"));
}

}  // namespace
}  // namespace larynth::test
