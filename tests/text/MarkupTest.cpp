// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include "tests/text/Said.h"

namespace larynth {
namespace {

using testing::ElementsAre;

TextOptions Ssml() {
    TextOptions options;
    options.form = TextForm::Ssml;
    return options;
}

std::vector<std::string> Words(const std::string& text) { return test::Words(text, Ssml()); }
std::vector<std::string> Said(const std::string& text) { return test::Said(text, Ssml()); }

Utterance Only(const std::string& text) {
    std::istringstream input(text);
    UtteranceReader reader(input, "input", Ssml());
    EXPECT_TRUE(reader.Next()) << text;
    return reader.Current();
}

TEST(Markup, MarksStandBetweenWordsAndChangeNothing) {
    const std::string text =
        "<speak><mark name='0'/>Is <mark name='1'/>this, <mark name='2'/>a te<mark name='3'/>st?<mark "
        "name='4'/></speak>";
    EXPECT_THAT(Words(text), ElementsAre("<0>{Is}<1>{this}<2>{a}<3>{test}<4>"));
    const Utterance marked = Only(text), plain = Only("<speak>Is this, a test?</speak>");
    ASSERT_EQ(marked.phones.size(), plain.phones.size());
    for (std::size_t i = 0; i < plain.phones.size(); ++i)
        EXPECT_EQ(marked.phones[i].duration, plain.phones[i].duration);
    ASSERT_EQ(marked.pitch.size(), plain.pitch.size());
    for (std::size_t i = 0; i < plain.pitch.size(); ++i)
        EXPECT_EQ(marked.pitch[i].level, plain.pitch[i].level);
}

TEST(Markup, SaysWhatItAsksFor) {
    struct Row {
        const char* text;
        std::vector<std::string> said;
    };
    for (const Row& row : {
             Row{"<p>One</p><p><s>Two</s>One</p>",
                 {"{One} w1 ah1 n1 pau", "{Two} t1 uw1 pau", "{One} w1 ah1 n1 pau"}},
             {"<sub alias='two'>II</sub>, <foo:bar>one</foo:bar>", {"{two} t1 uw1 pau{one} w1 ah1 n1 pau"}},
             {"<phoneme ph='ˈtuː tə'>x, y</phoneme>", {"{x, y} t1 uw1.t ax pau"}},
             {"<phoneme alphabet='x-arpabet' ph='K AE1 T'/>", {"{K AE1 T} k1 ae1 t1 pau"}},
             {"<say-as interpret-as='characters'>Ab</say-as>", {"{Ab} ey1 b1 iy1 pau"}},
             {"<say-as interpret-as='ordinal'>2</say-as>", {"{2} s1 eh1.k ax n d pau"}},
             {"<say-as interpret-as='digits'>21</say-as>", {"{21} t1 uw1 w1 ah1 n1 pau"}},
             {"one<break time='1s'/>&amp;<!-- not --> two",
              {"{one} w1 ah1 n1 pau{&} ae1 n1 d1{two} t1 uw1 pau"}},
             {"<mark name='a'/>", {"<a>"}},
             {"", {}},
         })
        EXPECT_THAT(Said("<speak>" + std::string(row.text) + "</speak>"), testing::ElementsAreArray(row.said))
            << row.text;
}

TEST(Markup, PausesAsLongAsItSays) {
    for (const auto& [text, seconds] :
         {std::pair{"one <break time='750ms'/> two", 0.75},
          {"one, <break strength='x-strong'/> two", 1.0},
          {"one <prosody rate='fast'>one,</prosody><break time='2s'/> two", 2.0},
          {"one <break time='3600s'/> two", 60.0}}) {
        const Utterance utterance = Only("<speak>" + std::string(text) + "</speak>");
        const auto pause = std::find_if(utterance.phones.begin(), utterance.phones.end(),
                                        [](const Phone& p) { return p.name == "pau"; });
        EXPECT_DOUBLE_EQ(pause->duration, seconds) << text;
        EXPECT_DOUBLE_EQ(pause->prosody.rate, 1.0) << text;
    }
}

TEST(Markup, ChangesProsodyByFactors) {
    struct Row {
        const char* attributes;
        Prosody inside;
    };
    for (const Row& row : {
             Row{"rate='x-fast' volume='soft'", {2.0, 1.0, 1.0, 0.5}},
             {"rate='50%' pitch='+10%'", {0.5, 1.1, 1.0, 1.0}},
             {"rate='+20%' range='-50%'", {1.2, 1.0, 0.5, 1.0}},
             {"pitch='+12st' volume='-20dB'", {1.0, 2.0, 1.0, 0.1}},
             {"pitch='220Hz' volume='30'", {1.0, 2.0, 1.0, 0.3}},
             {"pitch='-55Hz' range='x-high'", {1.0, 0.5, 1.8, 1.0}},
             {"volume='silent' rate='0%'", {0.1, 1.0, 1.0, 0.0}},
         }) {
        const Utterance utterance =
            Only("<speak>a <prosody " + std::string(row.attributes) + ">b</prosody> c</speak>");
        const Prosody& inside = utterance.phones[1].prosody;
        EXPECT_NEAR(inside.rate, row.inside.rate, 1e-9) << row.attributes;
        EXPECT_NEAR(inside.pitch, row.inside.pitch, 1e-9) << row.attributes;
        EXPECT_NEAR(inside.range, row.inside.range, 1e-9) << row.attributes;
        EXPECT_NEAR(inside.volume, row.inside.volume, 1e-9) << row.attributes;
        EXPECT_DOUBLE_EQ(utterance.phones.front().prosody.rate * utterance.phones.back().prosody.rate, 1.0);
    }
}

TEST(Markup, ThatIsBrokenIsRefusedWhereItStandsAfterWhatCameBefore) {
    for (const auto& [text, message] : {
             std::pair{"", "expected the end of every element"},
             {"</p>", "expected well-formed XML (mismatched tag)"},
             {"<break time='x'/>",
              R"(expected a break with a time like "250ms" or a strength like "strong")"},
             {"<prosody rate='quick'>", R"(expected a rate like "+10%" or "medium" instead of "quick")"},
             {"<phoneme ph='☃'>", R"(expected phones instead of "☃")"},
         })
        EXPECT_THAT(Words("<speak>One.\nTwo" + std::string(text)),
                    ElementsAre("{One}", "{Two}",
                                testing::AllOf(testing::StartsWith("input:2:"), testing::EndsWith(message))));
    EXPECT_THAT(Words("<speak>\nÖné <bad>x</worse>").back(), testing::StartsWith("input:2:13: expected"));
    EXPECT_THAT(Words("plain"), ElementsAre("input:1:1: expected well-formed XML (syntax error)"));
    EXPECT_THAT(Words(" "), ElementsAre("input:1:2: expected a document with a <speak> element"));
}

TEST(Markup, ThatIsHostileHasAnEnd) {
    std::string deep = "<speak>", marks = "<speak>";
    for (int i = 0; i < 100'000; ++i) deep += "<a>";
    for (int i = 0; i < 3000; ++i) marks += "<mark name='" + std::to_string(i) + "'/>";
    EXPECT_THAT(Words(deep).back(), testing::HasSubstr("at most 10000 elements inside each other"));
    EXPECT_THAT(Words(marks + "x</speak>"),
                ElementsAre(testing::StartsWith("<0><1>"), testing::_, testing::EndsWith("<2999>"), "{x}"));
    EXPECT_THAT(Words("<speak a='" + std::string(2'000'000, 'x') + "'/>").back(),
                testing::HasSubstr("a million bytes"));
    EXPECT_THAT(Words("<!DOCTYPE speak [<!ENTITY a 'b'><!ENTITY c '&a;&a;'>]><speak>&c;</speak>").back(),
                testing::HasSubstr("without entities of its own"));
    EXPECT_THAT(Words("<speak>bad \xFF\x01 bytes</speak>"), ElementsAre("{bad}{ÿ}{bytes}"));
}

}  // namespace
}  // namespace larynth
