// SPDX-License-Identifier: MIT
/// Sentences, phones, intonation, hostile texts.
#include <algorithm>
#include <gmock/gmock.h>
#include <random>
#include <streambuf>

#include "tests/text/Said.h"
#include "text/Lexicon.h"

namespace larynth {
namespace {

using test::Said;
using test::Words;
using testing::ElementsAre;

TEST(Sentences, EndWhereAReaderWouldStop) {
    EXPECT_THAT(
        Words("Mr. A. Smith paid 3.5 dollars. No! \"Stop!\" he said. We left at 5 p.m. The\nend... or not? "
              "A title\n\nText\n* one\n* two"),
        ElementsAre("{Mr}{A}{Smith}{paid}{3.5}{dollars}", "{No}", "{Stop}{he}{said}",
                    "{We}{left}{at}{5}{p.m}", "{The}{end}{or}{not}", "{A}{title}", "{Text}", "{one}",
                    "{two}"));
}

TEST(Sentences, ThatDoNotEndAreCut) {
    std::string clause;
    for (int i = 0; i < 30; ++i) clause += "word word word, and ";
    for (const std::string& text : {clause, std::string(1000, 'q'), std::string(500, '\xC3')}) {
        const auto said = Words(text);
        EXPECT_GE(said.size(), 2U);
        for (const std::string& sentence : said) EXPECT_LE(sentence.size(), 1000U);
    }
    EXPECT_TRUE(Words(clause)[0].ends_with("{word}"));  // at a comma
    EXPECT_THAT(Words(std::string(100'000, 'q') + " end").back(),
                testing::EndsWith("q}{and}{99000}{more}{characters}{end}"));
}

// Gives a text and then fails the test instead of waiting for more.
class SlowInput : public std::streambuf {
  public:
    explicit SlowInput(std::string text) : text_(std::move(text)) {
        setg(text_.data(), text_.data(), text_.data() + text_.size());
    }
    int underflow() override { throw std::runtime_error("read too far"); }

  private:
    std::string text_;
};

TEST(Sentences, AreGivenBeforeMoreIsRead) {
    for (const auto& [text, form] : {std::pair("Hello world. ", TextForm::Text),
                                     {"<speak>Hello world. ", TextForm::Ssml},
                                     {"HH AH0 L OW1 . ", TextForm::Arpabet}}) {
        SlowInput slow(text);
        std::istream input(&slow);
        input.exceptions(std::ios::badbit);
        TextOptions options;
        options.form = form;
        UtteranceReader reader(input, "input", options);
        EXPECT_TRUE(reader.Next()) << text;
    }
}

TEST(Utterances, HavePhonesSyllablesAndStress) {
    std::istringstream pronunciations("# mine\nlarynth\tL EH1 R IH2 N TH\nGIF\tJH IH1 F\n");
    const Lexicon lexicon(pronunciations, "lexicon");
    TextOptions options;
    options.lexicon = &lexicon;
    struct Row {
        const char* text;
        const char* said;
    };
    for (const Row& row : {
             Row{"Hello, world.", "{Hello} hh ax.l1 ow1 pau{world} w1 er1 l1 d1 pau"},
             {"Smith's dog's bus's",
              "{Smith's} s1 m1 ih1 th1 s{dog's} d1 ao1 g1 z{bus's} b1 ah1 s1 ax z pau"},
             {"a Gif larynth", "{a} ax{Gif} jh1 ih1 f1{larynth} l1 eh1.r2 ih2 n2 th2 pau"},
             {"The U.S. It is.", "{The} dh ax{U.S} y1 uw1 eh1 s1 pau{It} ih1 t1{is} ih1 z1 pau"},
             {"1999", "{1999} n1 ay1 n1.t1 iy1 n1 n1 ay1 n1.t iy n1 ay1 n1 pau"},
         })
        EXPECT_THAT(Said(row.text, options), ElementsAre(row.said));
}

double LastLevel(const std::string& text) {
    std::istringstream input(text);
    UtteranceReader reader(input, "input", {});
    EXPECT_TRUE(reader.Next());
    EXPECT_TRUE(std::is_sorted(reader.Current().pitch.begin(), reader.Current().pitch.end(),
                               [](const PitchTarget& a, const PitchTarget& b) {
                                   return std::pair(a.phone, a.place) < std::pair(b.phone, b.place);
                               }));
    return reader.Current().pitch.back().level;
}

TEST(Utterances, RiseForYesOrNoAndFallOtherwise) {
    EXPECT_GT(LastLevel("Is this a test?"), 1.5);
    EXPECT_LT(LastLevel("What is this?"), 0.5);
    EXPECT_LT(LastLevel("This is a test."), 0.0);
}

TEST(PhoneInput, HasRhythmAndIntonationOfItsOwn) {
    TextOptions arpabet, ipa;
    arpabet.form = TextForm::Arpabet;
    ipa.form = TextForm::Ipa;
    EXPECT_THAT(Said("HH AH0 L OW1 | W ER1 L D . S T R EH1 NG TH ,", arpabet),
                ElementsAre("{HH AH0 L OW1} hh ax.l1 ow1{W ER1 L D} w1 er1 l1 d1 pau",
                            "{S T R EH1 NG TH} s1 t1 r1 eh1 ng1 th1 pau"));
    EXPECT_THAT(Said("həˈloʊ ˈwɜːld. ˈɛkstɹə ˌt͡ʃiː", ipa),
                ElementsAre("{həˈloʊ} hh ax.l1 ow1{ˈwɜːld} w1 er1 l1 d1 pau",
                            "{ˈɛkstɹə} eh1 k1.s t r ax{ˌt͡ʃiː} ch2 iy2 pau"));
    EXPECT_THAT(Said("T UW1\nT QQ", arpabet),
                ElementsAre("{T UW1 T} t1 uw1 t1 pau", "input:2:3: expected a phone instead of \"QQ\""));
    const PhoneSet own{{"ʏ", PhoneOfTable("ʏ", SoundClass::Vowel)}, {"t", *FindPhone("t", nullptr)}};
    arpabet.phones = ipa.phones = &own;
    EXPECT_THAT(Said("T ʏ1 hh", arpabet),
                ElementsAre("{T ʏ1} t1 ʏ1 pau", "input:1:6: expected a phone instead of \"hh\""));
    EXPECT_THAT(Said("tʏ", ipa), ElementsAre("{tʏ} t ʏ pau"));
    ipa.phones = arpabet.phones = nullptr;
    EXPECT_THAT(Said("həˈ☃", ipa), ElementsAre("input:1:4: expected a phone instead of \"☃\""));
    std::istringstream statement("AH1 N | AH1 N ."), question("AH1 N | AH1 N ?");
    UtteranceReader falls(statement, "", arpabet), rises(question, "", arpabet);
    ASSERT_TRUE(falls.Next() && rises.Next());
    EXPECT_LT(falls.Current().pitch.back().level, 0.0);
    EXPECT_GT(rises.Current().pitch.back().level, 1.0);
    EXPECT_GT(falls.Current().phones[2].duration,
              falls.Current().phones[0].duration);  // in front of the pause
}

TEST(Lexicon, RefusesLinesWithTheirPlace) {
    for (const auto& [text, message] : {
             std::pair{"# fine\nword", "lexicon:2:1: expected a word, a tabulator and phones"},
             {"word\tW ER1 QQ D", "lexicon:1:12: expected a phone of ARPAbet instead of \"QQ\""},
             {"word\t", "lexicon:1:6: expected phones"},
         }) {
        std::istringstream input(text);
        EXPECT_THAT([&] { Lexicon(input, "lexicon"); },
                    testing::ThrowsMessage<BadInput>(testing::StrEq(message)));
    }
}

TEST(HostileText, IsSaidToItsEnd) {
    std::mt19937 random(7);
    std::string bytes;
    for (int i = 0; i < 3000; ++i) bytes += static_cast<char>(random());
    std::string digits(300, '9'), marks;
    for (int i = 0; i < 2000; ++i) marks += "?! ";
    for (const std::string& text :
         {bytes, digits, marks, std::string(500, '\0') + "x", std::string(2000, '-')})
        EXPECT_FALSE(Said(text + " end.").empty());
    EXPECT_TRUE(Words(bytes + " end.").back().ends_with("{end}"));
    EXPECT_THAT(Said(""), ElementsAre());
    EXPECT_THAT(Said(" \n\n \t"), ElementsAre());
}

}  // namespace
}  // namespace larynth
