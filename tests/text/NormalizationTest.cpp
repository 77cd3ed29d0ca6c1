// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <sstream>

#include "text/Normalization.h"

namespace larynth {
namespace {

std::string WordsFor(const std::string& text, const TextOptions& options = {}) {
    std::vector<Token> tokens;
    std::istringstream input(text);
    for (std::string token; input >> token;) tokens.push_back({token, std::make_shared<const Style>()});
    std::string words;
    for (const SpokenWord& word : Normalized(tokens, options)) {
        words += (words.empty() ? "" : " ") + word.text;
        if (word.punctuation != 0) words += word.punctuation;
    }
    return words;
}

struct Row {
    const char* text;
    const char* words;
};

TEST(Normalization, SaysWhatStandsThere) {
    for (const Row& row : {
             // letters of every kind
             Row{"naïve Łódź façade e\u0301 ﬁne", "naive Lodz facade e fine"},
             {"Straße Ærø", "Strasse AEro"},
             {"“Hello”, it’s ‘so’—well…", "Hello, it's so, well,"},
             {"so\u00ADft", "soft"},
             {"\x93quoted\x94 caf\xE9", "quoted cafe"},  // Windows-1252
             {"Привет 漢字 α ☃", "six Cyrillic letters two Chinese characters alpha unknown character"},
             {"👍👍👍 🚀", "three thumbs up rocket"},
             // numbers
             {"1,234 12,345,678.90",
              "one thousand two hundred thirty four twelve million three hundred forty five "
              "thousand six hundred seventy eight point nine zero"},
             {"1999 007 B12 80s", "1999 007 B12 80s"},
             {"-5 -0.5 .5 +3", "minus five minus zero point five point five plus three"},
             {"2.5x 3× 1920×1080", "two point five times three times 1920 by 1080"},
             {"1.2.3 192.168.0.1 v1.5", "1 point 2 point 3 192 dot 168 dot 0 dot 1 v1 point 5"},
             {"1st 22nd 1,000th 40th", "first twenty second one thousandth fortieth"},
             {"½ 2½ 3/4 1/2 24/7", "one half two and a half three quarters one half twenty four slash 7"},
             {"10-20 1990–1995 5-10% 2:30-3:05",
              "10 to 20 1990 to 1995 5 to ten percent two thirty to three oh five"},
             {"555-1234 1-800-555-1234",
              "five five five, one two three four one, eight zero zero, five five five, one "
              "two three four"},
             // dates and times
             {"3/4/2026 13/4/2005 2026-11-23",
              "March fourth, twenty twenty six April thirteenth, two thousand five "
              "November twenty third, twenty twenty six"},
             {"3 1/2 1.5e-3 6.02e23",
              "three and one half one point five times ten to the minus three six point zero two times ten "
              "to the twenty three"},
             {"3/45/2026 1900-01-01", "3 slash forty five slash 2026 January first, nineteen hundred"},
             {"3:45 12:00 14:00 3:05pm 25:00",
              "three forty five twelve o'clock fourteen hundred three oh five P M twenty five: zero zero"},
             // money and measures
             {"$5 $1 $0.99 £1.01 €1,000 ¥500 US$5",
              "five dollars one dollar ninety nine cents one pound and one penny one "
              "thousand euros five hundred yen five U S dollars"},
             {"$3.5 million, -$5 $1.5bn",
              "three point five million dollars, minus five dollars one point five billion "
              "dollars"},
             {"50% 20°C 1 km 5 km. 10kg",
              "fifty percent twenty degrees Celsius one kilometer five kilometers ten "
              "kilograms"},
             // abbreviations by what stands around them
             {"Dr. Smith of Elm Dr. near St. James St.",
              "doctor Smith of Elm drive near saint James street."},
             {"e.g. this, etc.; No. 5 No.", "for example this, et cetera; number 5 No."},
             {"U.S. Ph.D. The U.S. Army foo:bar p.m.", "U S P H D, The U S Army foo: bar p m."},
             // signs
             {"R&D a+b=c #5 #tag C++ 3*z y^2",
              "R and D a plus b equals c number 5 hash tag C plus plus 3 star z y caret 2"},
             {"me@example.com https://a.org/b_c",
              "me at example dot com https colon slash slash a dot org slash b "
              "underscore c"},
             {"(so) [it] *is* -- \"fine\"", "so, it is, fine"},
             {"well-known and/or file.txt", "well known and slash or file dot txt"},
             // what would be silent is named
             {"...", "three dot,"},
             {"?", "question mark?"},
         })
        EXPECT_EQ(WordsFor(row.text), row.words) << row.text;
}

TEST(Normalization, NamesPunctuationAndCapitalsAndSpellsWhereAsked) {
    struct Asked {
        TextOptions options;
        const char* words;
    };
    const std::string text = "Hi, (a_b): 5%!";
    TextOptions some, most, all, capitals, spell;
    some.punctuation = Punctuation::Some;
    most.punctuation = Punctuation::Most;
    all.punctuation = Punctuation::All;
    capitals.capitals = Capitals::Spell;
    spell.spell = true, spell.capitals = Capitals::Spell;
    for (const Asked& row : {
             Asked{some, "Hi, a underscore b, five percent!"},
             {most, "Hi, left paren a underscore b right paren, colon: five percent!"},
             {all, "Hi comma, left paren a underscore b right paren, colon: five percent exclamation mark!"},
             {capitals, "capital Hi, a underscore b, five percent!"},
             {spell,
              "capital H i comma left paren a underscore b right paren colon 5 percent exclamation mark"},
         })
        EXPECT_EQ(WordsFor(text, row.options), row.words);
}

}  // namespace
}  // namespace larynth
