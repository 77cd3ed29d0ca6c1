// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "host/LabelText.h"
#include "host/Numbers.h"
#include "host/Utf8.h"

namespace larynth {
namespace {

TEST(Utf8, MalformedTextIsToldFromWellFormed) {
    const struct {
        const char* text;
        bool good;
    } rows[] = {
        {"", true},
        {"plain", true},
        {"\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80", true},
        {"\xF4\x8F\xBF\xBF", true},   // U+10FFFF
        {"\xF4\x90\x80\x80", false},  // above it
        {"\xED\xA0\x80", false},      // a surrogate
        {"\xC0\xAF", false},          // longer than needed
        {"\xE0\x80\xAF", false},
        {"\x80", false},  // begins in the middle
        {"\xC3", false},  // ends in the middle
        {"\xE2\x82", false},
        {"\xC3"
         "A",
         false},
        {"\xFF", false},
    };
    for (const auto& row : rows) EXPECT_EQ(IsUtf8(row.text), row.good) << row.text;
}

TEST(Utf8, CharactersAreCountedNotBytes) {
    EXPECT_EQ(CharacterCount(""), 0u);
    EXPECT_EQ(CharacterCount("a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80"), 4u);
}

TEST(Numbers, IntegersHaveNoFractionAndStayInRange) {
    EXPECT_EQ(ParseInteger("00110", 0, 200), 110);
    EXPECT_EQ(ParseInteger("-5", -5, 0), -5);
    for (const char* text :
         {"", " 1", "1 ", "+1", "1.0", "1e1", "0x1", "201", "-1", "99999999999999999999"}) {
        EXPECT_EQ(ParseInteger(text, 0, 200), std::nullopt) << text;
    }
}

TEST(Labels, EndWhereTheNextOneStartsAndWithTheSound) {
    Sound sound;
    sound.samples.resize(11025);
    sound.labels = {{0, "a"}, {3675, "b c"}, {3675, "\xC3\xA9"}};
    EXPECT_EQ(LabelText(sound, 11025.0),
              "0.000000\t0.333333\ta\n0.333333\t0.333333\tb c\n0.333333\t1.000000\t\xC3\xA9\n");
    sound.labels.clear();
    EXPECT_EQ(LabelText(sound, 11025.0), "");
}

}  // namespace
}  // namespace larynth
