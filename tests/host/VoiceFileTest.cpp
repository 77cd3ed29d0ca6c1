// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <sstream>

#include "host/PacketFile.h"
#include "host/TableError.h"
#include "host/VoiceFile.h"

namespace larynth {
namespace {

using testing::ElementsAre;

void ExpectShelf(const Shelf& shelf, double F, double G, double P3, double P4) {
    EXPECT_EQ(shelf.F, F);
    EXPECT_EQ(shelf.G, G);
    EXPECT_EQ(shelf.P3, P3);
    EXPECT_EQ(shelf.P4, P4);
}

TEST(VoiceFile, EveryKeyIsOptional) {
    const VoiceSettings none = ParseVoice(" {} \n", "v.json");
    EXPECT_EQ(none.preEmphasis, 0.0);
    EXPECT_EQ(none.openQuotient, 0.5);
    ExpectShelf(none.lowShelf, 0, 1, 0, 0);
    ExpectShelf(none.highShelf, 0, 1, 0, 0);
    EXPECT_TRUE(none.wave.empty());

    const VoiceSettings some = ParseVoice(
        R"({"high_shelf": {"G": 2, "P4": -0.05, "P3": 0.75, "F": 3e3}, "low_shelf": {"F": 250},
            "pre_emphasis": -0.5, "open_quotient": 1, "wave": [1, -2.5, 18446744073709551616]})",
        "v.json");
    EXPECT_EQ(some.preEmphasis, -0.5);
    EXPECT_EQ(some.openQuotient, 1.0);
    ExpectShelf(some.lowShelf, 250, 1, 0, 0);
    ExpectShelf(some.highShelf, 3000, 2, 0.75, -0.05);
    EXPECT_THAT(some.wave, ElementsAre(1.0, -2.5, 18446744073709551616.0));
}

TEST(VoiceFile, AnErrorNamesThePlaceAndWhatWasExpected) {
    const struct {
        const char* text;
        const char* message;
    } rows[] = {
        {"", "v.json:1:1: expected JSON"},
        {"{\n \"\xC3\xA9\": x}", "v.json:2:7: expected JSON"},
        {"{\"pre_emphasis\": nan}", "v.json:1:19: expected JSON"},
        {"{} {}", "v.json:1:4: expected JSON"},
        {"{\"wave\": [1,", "v.json:1:13: expected JSON"},
        {"[1]", "v.json: expected an object, found \"[1]\""},
        {"{\"preemphasis\": 1}",
         "v.json: /preemphasis: expected one of the keys pre_emphasis, open_quotient, low_shelf, high_shelf, "
         "wave"},
        {"{\"low_shelf\": {\"F\": 1, \"Q\": 1}}",
         "v.json: /low_shelf/Q: expected one of the keys F, G, P3, P4"},
        {"{\"low_shelf\": {\"G\": \"loud\"}}", "v.json: /low_shelf/G: expected a number, found \"loud\""},
        {"{\"high_shelf\": 2}", "v.json: /high_shelf: expected an object, found \"2\""},
        {"{\"open_quotient\": null}", "v.json: /open_quotient: expected a number, found \"null\""},
        {"{\"pre_emphasis\": true}", "v.json: /pre_emphasis: expected a number, found \"true\""},
        {"{\"pre_emphasis\": 1e999}", "v.json: expected numbers that fit a double"},
        {"{\"wave\": 1}", "v.json: /wave: expected an array of numbers, found \"1\""},
        {"{\"wave\": [1, [2]]}", "v.json: /wave/1: expected a number, found \"[2]\""},
        {"{\"wave\": []}", "v.json: /wave: expected numbers, found none"},
        {"{\"wave\": [1], \"low_shelf\": {}, \"wave\": [2]}",
         "v.json: expected every key once, found a second \"wave\""},
    };
    for (const auto& row : rows) {
        try {
            ParseVoice(row.text, "v.json");
            ADD_FAILURE() << "was accepted: " << row.text;
        } catch (const BadInput& error) {
            EXPECT_STREQ(error.what(), row.message) << row.text;
        }
    }
    EXPECT_NO_THROW(ParseVoice(R"({"low_shelf": {"F": 1}, "high_shelf": {"F": 1}})", "v.json"));
}

TEST(WaveformFile, HasOneNumberALine) {
    std::istringstream input(
        "\xEF\xBB\xBF"
        "1\r\n\n \t-.5e1 \n0.25");
    EXPECT_THAT(ParseWaveform(input, "w.txt"), ElementsAre(1.0, -5.0, 0.25));
    const struct {
        const char* text;
        const char* message;
    } rows[] = {
        {"", "w.txt:1:1: expected a number, found the end"},
        {"\n\n", "w.txt:3:1: expected a number, found the end"},
        {"1\n  x y\n", "w.txt:2:3: expected a number, found \"x y\""},
        {"1,2\n", "w.txt:1:1: expected a number, found \"1,2\""},
        {"inf\n", "w.txt:1:1: expected a number"},
        {"1\n# 2\n", "w.txt:2:1: expected a number"},
        {"1e999\n", "w.txt:1:1: expected a number"},
    };
    for (const auto& row : rows) {
        std::istringstream bad(row.text);
        try {
            ParseWaveform(bad, "w.txt");
            ADD_FAILURE() << "was accepted: " << row.text;
        } catch (const TableError& error) {
            EXPECT_THAT(error.what(), testing::StartsWith(row.message)) << row.text;
        }
    }
}

TEST(PacketFile, HoldsWordsOfTwoBytesLowByteFirst) {
    std::string bytes(2 * 82, '\0');
    bytes[0] = '\x34';
    bytes[1] = '\x12';
    bytes[81] = '\x80';
    bytes[82] = '\xFF';
    const std::vector<PacketWords> packets = ParsePackets(bytes, "p");
    ASSERT_EQ(packets.size(), 2u);
    EXPECT_EQ(packets[0][0], 0x1234);
    EXPECT_EQ(packets[0][1], 0);
    EXPECT_EQ(packets[0][40], 0x8000);
    EXPECT_EQ(packets[1][0], 0x00FF);
    EXPECT_TRUE(ParsePackets("", "p").empty());
    for (const std::size_t size : {1u, 81u, 83u}) {
        try {
            ParsePackets(bytes.substr(0, size), "p");
            ADD_FAILURE() << size;
        } catch (const BadInput& error) {
            EXPECT_EQ(error.what(),
                      "p: expected packets of 82 bytes each, found " + std::to_string(size) + " bytes");
        }
    }
}

}  // namespace
}  // namespace larynth
