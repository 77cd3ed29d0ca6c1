// SPDX-License-Identifier: MIT
/// What users write down: tables, voices, waveforms.
#include <gmock/gmock.h>
#include <sstream>
#include <tuple>

#include <larynth/Speech.h>

#include "input/Text.h"

namespace larynth {
namespace {

using testing::ElementsAre;

KlattUtterance Parse(const std::string& text, FrameForm form = FrameForm::Table,
                     const FrameDefaults& defaults = {}) {
    std::istringstream input(text);
    return ReadUtterance(input, "t", form, defaults);
}

Waveform ParseWave(const std::string& text) {
    std::istringstream input(text);
    return ParseWaveform(input, "t");
}

/// A text and the message that refuses it.
struct Refused {
    std::string text, message;
};

template <class Parser>
void ExpectRefusals(const std::vector<Refused>& rows, Parser parse) {
    for (const auto& [text, message] : rows) {
        try {
            parse(text);
            ADD_FAILURE() << "was accepted: " << text;
        } catch (const InputError& error) {
            EXPECT_THAT(error.what(), testing::StartsWith(message)) << text;
        }
    }
}

TEST(FrameTables, ColumnsGoBeforeTheCommandLine) {
    const std::tuple<const char*, int, double> rows[] = {
        {"F0\n1\n", 77, 8000},
        {"F0,FrameLen\n1,1000000\n", 1000000, 8000},
        {"F0,FrameLen\n1,\n", 0, 8000},
        {"F0,SampleFreq\n1,16000\n", 77, 16000},
        {"F0,SampleFreq\n1,\n", 77, 11025},
    };
    for (const auto& [text, frameLen, sampleFreq] : rows) {
        const KlattUtterance table = Parse(text, FrameForm::Table, {77, 8000.0});
        EXPECT_EQ(table.frames[0].length, frameLen) << text;
        EXPECT_EQ(table.sampleFreq, sampleFreq) << text;
    }
}

TEST(FrameTables, AnErrorNamesThePlaceAndWhatWasExpected) {
    ExpectRefusals(
        {
            {"", "t:1:1: expected a line with the names of the columns"},
            {"F0,FrameLen\n", "t:2:1: expected a frame, found the end"},
            {"F0,AV\n1,2\n", "t:1:1: expected a column FrameLen (or --frame-len)"},
            {" #\nF0, f1,FrameLen\n", "t:2:5: expected the name of an item, SampleFreq, FrameLen or"},
            {"F0,,FrameLen\n", "t:1:4: expected the name of an item"},
            {"F0,FrameLen,AV ,  F0\n", "t:1:19: expected every column once"},
            {"F0,FrameLen\n1\n", "t:2:2: expected 2 fields as in the header, found 1"},
            {"F0,FrameLen\n1,2, 3,4\n", "t:2:6: expected 2 fields as in the header, found 4"},
            {"F0,FrameLen\n1,2\n\n#\n x,3\n", "t:5:2: expected a number, found \"x\""},
            {"Marker,F0,FrameLen\n\xC3\xA9\xC5\x82,x,1\n", "t:2:4: expected a number"},
            {"F0,FrameLen\nnan,1\n", "t:2:1: expected a number"},
            {"F0,FrameLen\n1\r,1\n", "t:2:1: expected a number, found \"1\\x0D\""},
            {"F0,FrameLen\n1,1e2\n", "t:2:3: expected a frame length, a whole number from 0 to 1000000"},
            {"SampleFreq,FrameLen\n0,1\n", "t:2:1: expected a sample frequency, a number above 0"},
            {"SampleFreq,FrameLen\n8000,1\n,\n8000.5,1\n", "t:4:1: expected the sample frequency 8000 of"},
            {"SampleFreq,FrameLen\n,1\n16000,1\n", "t:3:1: expected the sample frequency 11025 of"},
            {"SampleFreq,FrameLen\n1e-310,1\n", "t:2:1: expected a sample frequency, a number above 0 (from"},
            {"Marker,FrameLen\n\xE9,1\n", "t:2:1: expected a marker in UTF-8"},
            {"FrameLen,Marker\n1,\xC3\xA9\tb\n", "t:2:4: expected a marker without control characters"},
            {std::string("FrameLen,Marker\n1,a\0b\n", 22), "t:2:4: expected a marker without control"},
            {"FrameLen,Marker\n1,\xC2\x9B"
             "2J\n",
             "t:2:3: expected a marker without control"},
            {"FrameLen,Marker\n1,ab\xE2\x80\xA8\n", "t:2:5: expected a marker without control"},
            {"FrameLen,Marker\n1,ab\xE2\x80\xA9\n", "t:2:5: expected a marker without control"},
            {"F0,FrameLen\n\xE9\xC2\x9B\x1B\xE2\x80\xAE,1\n",
             "t:2:1: expected a number, found \"\\xE9\\xC2\\x9B\\x1B\\xE2\\x80\\xAE\""},
            {"#" + std::string(1000000, '#'), "t:1:1: expected a line of at most 1000000 bytes"},
        },
        [](const std::string& text) { Parse(text); });
    ExpectRefusals(
        {
            {"#\n", "t:2:1: expected a target, found the end"},
            {"time,item,value\n0,F1\n",
             "t:2:5: expected time,item,value or time,item,value,linear|cosine, found"},
            {"0,F1,1,linear,\n", "t:1:15: expected time,item,value or"},
            {"-1,F1,1\n", "t:1:1: expected a time in seconds from 0, found \"-1\""},
            {"1, f1,1\n", "t:1:4: expected the name of an item, the nearest is F1, found \"f1\""},
            {"1,F1,x\n", "t:1:6: expected a number, found \"x\""},
            {"1,F1,1,sine\n", "t:1:8: expected linear or cosine, found \"sine\""},
            {"0,F1,1\n", "t: expected a last target behind the first sample and not later than"},
        },
        [](const std::string& text) { Parse(text, FrameForm::Targets); });
}

TEST(Texts, MalformedUtf8IsToldFromWellFormed) {
    const char* const kUpToU10FFFF = "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80\xF4\x8F\xBF\xBF";
    EXPECT_TRUE(IsUtf8(kUpToU10FFFF));
    EXPECT_EQ(CharacterCount(kUpToU10FFFF), 5u);
    // Above U+10FFFF, a surrogate, two that are longer than needed, a middle alone, three that end too soon,
    // no beginning at all.
    for (const char* text : {"\xF4\x90\x80\x80", "\xED\xA0\x80", "\xC0\xAF", "\xE0\x80\xAF", "\x80", "\xC3",
                             "\xE2\x82", "\xC3(", "\xFF"})
        EXPECT_FALSE(IsUtf8(text)) << text;
}

TEST(VoiceFiles, EveryKeyIsOptional) {
    const auto numbers = [](const VoiceSettings& v) {
        const Shelf &l = v.lowShelf, &h = v.highShelf;
        return std::vector{v.preEmphasis, v.openQuotient, l.F, l.G, l.P3, l.P4, h.F, h.G, h.P3, h.P4};
    };
    const VoiceSettings none = ParseVoice(" {} \n", "t");
    EXPECT_THAT(numbers(none), ElementsAre(0, 0.5, 0, 1, 0, 0, 0, 1, 0, 0));
    const VoiceSettings some = ParseVoice(
        R"({"high_shelf": {"G": 2, "P4": -0.05, "P3": 0.75, "F": 3e3}, "low_shelf": {"F": 250},
            "pre_emphasis": -0.5, "open_quotient": 1, "wave": [1, -2.5, 18446744073709551616]})",
        "t");
    EXPECT_THAT(numbers(some), ElementsAre(-0.5, 1, 250, 1, 0, 0, 3000, 2, 0.75, -0.05));
    EXPECT_THAT(some.wave, ElementsAre(1.0, -2.5, 18446744073709551616.0));
}

TEST(VoiceFiles, AnErrorNamesThePlaceAndWhatWasExpected) {
    ExpectRefusals(
        {
            {"{\n \"wave\": x}", "t:2:10: expected JSON"},
            {"{} {}", "t:1:4: expected JSON"},
            {" \n", "t:2:1: expected an object, found an empty file"},
            {std::string(100000, '['), "t:1:1: expected an object, found an array"},
            {"{\"wave\": [1, " + std::string(100000, '['), "t:1:14: expected a number, found an array"},
            {"{\n\"p\\u001b\": 1}",
             "t:2:1: expected one of the keys pre_emphasis, open_quotient, low_shelf, "
             "high_shelf, wave, found \"p\\x1B\""},
            {"{\"low_shelf\": {\"F\": 1, \"Q\": 1}}", "t:1:24: expected one of the keys F, G, P3, P4, found"},
            {"{\"low_shelf\": {\"G\": \"loud\"}}", "t:1:21: expected a number, found \"loud\""},
            {"{\"pre_emphasis\": 1e999}", "t:1:18: expected a number that fits a double"},
            {"{\"pre_emphasis\": {}}", "t:1:18: expected a number, found an object"},
            {"{\"wave\": 1}", "t:1:10: expected an array of numbers, found the number 1"},
            {"{\"wave\":\n[1, [2]]}", "t:2:5: expected a number, found an array"},
            {"{\"wave\": []}", "t:1:11: expected numbers, found none"},
            {"{\"wave\": [1],\n \"wave\": [2]}", "t:2:2: expected every key once, found a second \"wave\""},
        },
        [](const std::string& text) { ParseVoice(text, "t"); });
}

TEST(Waveforms, HaveOneNumberALine) {
    EXPECT_THAT(ParseWave("\xEF\xBB\xBF"
                          "1\r\n\n \t-.5e1 \n0.25"),
                ElementsAre(1.0, -5.0, 0.25));
    ExpectRefusals(
        {
            {"\n\n", "t:3:1: expected a number, found the end"},
            {"1\n  x y\n", "t:2:3: expected a number, found \"x y\""},
            {"1,2\n", "t:1:1: expected a number, found \"1,2\""},
        },
        ParseWave);
}

}  // namespace
}  // namespace larynth
