// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <sstream>

#include "host/FrameTableParser.h"
#include "host/TableError.h"

namespace larynth {
namespace {

using testing::DoubleEq;
using testing::ElementsAre;
using testing::HasSubstr;

const ItemVocabulary kVocabulary({{0, "F0", 100.0}, {6, "AV", 0.0}, {1027, "F1", 500.0}});

FrameTable Parse(const std::string& text, const FrameTableDefaults& defaults = {}) {
    std::istringstream input(text);
    return FrameTableParser(kVocabulary, defaults, "t.csv").Parse(input);
}

TEST(FrameTable, AnEmptyFieldRepeatsTheFrameBeforeAndFirstTheValueOfANewPacket) {
    const FrameTable table = Parse("F1,FrameLen,F0,Marker,SampleFreq\n,10,120,a,\n600,,,,\n,20,,b,11025\n");
    EXPECT_THAT(table.items, ElementsAre(2, 0));
    ASSERT_EQ(table.frames.size(), 3u);
    EXPECT_THAT(table.frames[0].values, ElementsAre(500, 120));
    EXPECT_THAT(table.frames[1].values, ElementsAre(600, 120));
    EXPECT_THAT(table.frames[2].values, ElementsAre(600, 120));
    EXPECT_EQ(table.frames[0].length, 10);
    EXPECT_EQ(table.frames[1].length, 10);
    EXPECT_EQ(table.frames[2].length, 20);
    EXPECT_EQ(table.frames[0].marker, "a");
    EXPECT_EQ(table.frames[1].marker, "");
    EXPECT_EQ(table.frames[2].marker, "b");
    EXPECT_EQ(table.sampleFreq, 11025);
}

TEST(FrameTable, CommentsBlankLinesBlanksAndLineEndsAreNoContent) {
    const FrameTable table = Parse(
        "\xEF\xBB\xBF# F0,nonsense\r\n\r\n \t# another, one\n  F0\t, Marker ,FrameLen\r\n \t \n"
        "1, #no comment ,5\r\n#\n\t2\t,  two words\t,\t6\t");
    ASSERT_EQ(table.frames.size(), 2u);
    EXPECT_EQ(table.frames[0].marker, "#no comment");
    EXPECT_EQ(table.frames[0].length, 5);
    EXPECT_EQ(table.frames[1].marker, "two words");
    EXPECT_EQ(table.frames[1].length, 6);
    EXPECT_THAT(table.frames[1].values, ElementsAre(2));
}

TEST(FrameTable, NumbersHaveTheGrammarOfFromChars) {
    const struct {
        const char* text;
        double value;
    } rows[] = {{"12.", 12},        {".9E+2", 90},
                {"00110", 110},     {"-0.5", -0.5},
                {"1e3", 1000},      {"4.9e-324", 4.9e-324},
                {"-1.5E-1", -0.15}, {"1.7976931348623157e308", 1.7976931348623157e308}};
    for (const auto& row : rows) {
        EXPECT_THAT(Parse(std::string("F0,FrameLen\n") + row.text + ",1\n").frames[0].values,
                    ElementsAre(DoubleEq(row.value)))
            << row.text;
    }
}

TEST(FrameTable, ColumnsGoBeforeTheCommandLine) {
    const FrameTableDefaults defaults{77, 8000.0};
    const struct {
        const char* text;
        int frameLen;
        double sampleFreq;
    } rows[] = {
        {"F0\n1\n", 77, 8000},
        {"F0,FrameLen\n1,5\n", 5, 8000},
        {"F0,FrameLen\n1,\n", 0, 8000},
        {"F0,SampleFreq\n1,16000\n", 77, 16000},
        {"F0,SampleFreq\n1,\n", 77, 11025},
    };
    for (const auto& row : rows) {
        const FrameTable table = Parse(row.text, defaults);
        EXPECT_EQ(table.frames[0].length, row.frameLen) << row.text;
        EXPECT_EQ(table.sampleFreq, row.sampleFreq) << row.text;
    }
    EXPECT_EQ(Parse("F0,FrameLen\n1,1000000\n").frames[0].length, 1000000);
    EXPECT_EQ(Parse("F0,FrameLen\n1,0\n").frames[0].length, 0);
}

TEST(FrameTable, AnErrorNamesThePlaceAndWhatWasExpected) {
    const struct {
        const char* text;
        int line, column;
        const char* expected;
    } rows[] = {
        {"", 1, 1, "names of the columns"},
        {"# only\n\n", 3, 1, "names of the columns"},
        {"F0,FrameLen\n", 2, 1, "a frame"},
        {"F0,AV\n1,2\n", 1, 1, "FrameLen (or --frame-len)"},
        {"#\nF0, f1,FrameLen\n", 2, 5, "item"},
        {"F0,,FrameLen\n", 1, 4, "item"},
        {"F0,FrameLen,AV ,  F0\n", 1, 19, "every column once"},
        {"Marker,FrameLen,Marker\n", 1, 17, "every column once"},
        {"F0,FrameLen\n1\n", 2, 2, "2 fields as in the header, found 1"},
        {"F0,FrameLen\n1,2,\n", 2, 5, "2 fields as in the header, found 3"},
        {"F0,FrameLen\n1,2, 3,4\n", 2, 6, "2 fields as in the header, found 4"},
        {"F0,FrameLen\n1,2\n\n#\n x,3\n", 5, 2, "a number, found \"x\""},
        {"Marker,F0,FrameLen\n\xC3\xA9\xC5\x82,x,1\n", 2, 4, "a number"},
        {"F0,FrameLen\nnan,1\n", 2, 1, "a number"},
        {"F0,FrameLen\n-inf,1\n", 2, 1, "a number"},
        {"F0,FrameLen\n1e999,1\n", 2, 1, "a number"},
        {"F0,FrameLen\n+1,1\n", 2, 1, "a number"},
        {"F0,FrameLen\n1 2,1\n", 2, 1, "a number"},
        {"F0,FrameLen\n0x10,1\n", 2, 1, "a number"},
        {"F0,FrameLen\n1\r,1\n", 2, 1, "a number, found \"1?\""},
        {"F0,FrameLen\n1,12.5\n", 2, 3, "a whole number from 0 to 1000000"},
        {"F0,FrameLen\n1,1e2\n", 2, 3, "a whole number"},
        {"F0,FrameLen\n1,-1\n", 2, 3, "a whole number"},
        {"F0,FrameLen\n1,1000001\n", 2, 3, "a whole number"},
        {"SampleFreq,FrameLen\n0,1\n", 2, 1, "a sample frequency above 0"},
        {"SampleFreq,FrameLen\n-8000,1\n", 2, 1, "a sample frequency above 0"},
        {"SampleFreq,FrameLen\n8000,1\n,\n8000.5,1\n", 4, 1, "8000"},
        {"SampleFreq,FrameLen\n,1\n16000,1\n", 3, 1, "11025"},
        {"Marker,FrameLen\n\xE9,1\n", 2, 1, "UTF-8"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        try {
            Parse(row.text);
            ADD_FAILURE() << "was accepted";
        } catch (const TableError& error) {
            EXPECT_EQ(error.Where().line, row.line);
            EXPECT_EQ(error.Where().column, row.column);
            EXPECT_THAT(error.Expected(), HasSubstr(row.expected));
            const std::string place = "t.csv:" + std::to_string(row.line) + ":" + std::to_string(row.column);
            EXPECT_THAT(error.what(), testing::StartsWith(place + ": expected "));
        }
    }
}

TEST(FrameTable, ReadingThatBreaksOffIsAnErrorOfItsOwn) {
    struct BrokenBuffer : std::streambuf {
        int_type underflow() override { throw std::runtime_error("gone"); }
    } buffer;
    std::istream input(&buffer);
    EXPECT_THROW(FrameTableParser(kVocabulary, {}, "t.csv").Parse(input), BadInput);
}

// Any bytes at all are read or refused, never anything else.
TEST(FrameTable, DamagedTablesAreReadOrRefused) {
    const std::string whole =
        "Marker,F0,SampleFreq,FrameLen\r\n# c\n\xC3\xA9,1.5e2,8000,20\n,,,\n b ,-.5,8000,7";
    std::uint32_t state = 1;
    const auto draw = [&](std::size_t below) {
        state = state * 1664525u + 1013904223u;
        return (state >> 8) % below;
    };
    int refused = 0;
    for (int round = 0; round < 5000; ++round) {
        std::string text = whole;
        for (std::size_t n = draw(4) + 1; n > 0; --n) text[draw(text.size())] = static_cast<char>(draw(256));
        try {
            EXPECT_FALSE(Parse(text).frames.empty());
        } catch (const TableError&) {
            ++refused;
        }
    }
    EXPECT_GT(refused, 1000);
    EXPECT_LT(refused, 5000);
}

}  // namespace
}  // namespace larynth
