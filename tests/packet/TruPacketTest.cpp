// SPDX-License-Identifier: MIT
#include <array>
#include <tuple>

#include "tests/packet/NewPacket.h"

namespace larynth::test {

namespace {

using Words = std::array<unsigned short, 41>;

/// A packet filled from words that are zero but for those given.
ComPtr<ITTSTruKlattParams> Converted(std::initializer_list<std::pair<std::size_t, int>> given) {
    Words words{};
    for (const auto& [k, value] : given) words[k] = static_cast<unsigned short>(value);
    const auto packet = NewPacket<ITTSTruKlattParams>();
    EXPECT_EQ(packet->SetTruPacket(words.data(), 1), S_OK);
    return packet;
}

void ExpectABC(const ComPtr<ITTSResonatorABCParams>& view, double A, double B, double C) {
    EXPECT_EQ(Get(view, &ITTSResonatorABCParams::GetA), A);
    EXPECT_EQ(Get(view, &ITTSResonatorABCParams::GetB), B);
    EXPECT_EQ(Get(view, &ITTSResonatorABCParams::GetC), C);
}

/// The packet of words 1, 2, … 41 times 100: each is told from all others.
ComPtr<ITTSTruKlattParams> Numbered() {
    Words words;
    int value = 0;
    for (unsigned short& word : words) word = static_cast<unsigned short>(100 * ++value);
    const auto packet = NewPacket<ITTSTruKlattParams>();
    EXPECT_EQ(packet->SetTruPacket(words.data(), -1), S_OK);
    return packet;
}

}  // namespace

TEST(TruPacketTest, EveryWordReachesItsResonator) {
    const auto packet = Numbered();
    struct {
        int index;
        double A, B, C;
    } const cascade[] = {{0, 3100 / 8192.0, 1400 / 16384.0, -1500 / 32768.0},
                         {1, 3800 / 131072.0, 1600 / 16384.0, -1700 / 32768.0},
                         {2, 2900 / 8192.0, 1200 / 16384.0, -1300 / 32768.0},
                         {3, 2700 / 8192.0, 1000 / 16384.0, -1100 / 32768.0},
                         {4, 2500 / 8192.0, 800 / 16384.0, -900 / 32768.0},
                         {5, 2300 / 8192.0, 600 / 16384.0, -700 / 32768.0}},
            parallel[] = {{0, 0.0, 0.0, 0.0},
                          {1, 0.0, 0.0, 0.0},
                          {2, 2800 / 8192.0, 1200 / 16384.0, -1300 / 32768.0},
                          {3, 2600 / 8192.0, 1000 / 16384.0, -1100 / 32768.0},
                          {4, 2400 / 8192.0, 800 / 16384.0, -900 / 32768.0},
                          {5, 2200 / 8192.0, 600 / 16384.0, -700 / 32768.0},
                          {6, 0.0, 0.0, 0.0}};
    for (const auto& row : cascade) {
        SCOPED_TRACE(testing::Message() << "cascade " << row.index);
        ExpectABC(Cascade<ITTSResonatorABCParams>(packet, row.index), row.A, row.B, row.C);
    }
    for (const auto& row : parallel) {
        SCOPED_TRACE(testing::Message() << "parallel " << row.index);
        ExpectABC(Parallel<ITTSResonatorABCParams>(packet, row.index), row.A, row.B, row.C);
    }
    const auto zero = Zero<ITTSAntiResonatorABCParams>(packet);
    EXPECT_EQ(Get(zero, &ITTSAntiResonatorABCParams::GetA), 1.0);
    EXPECT_EQ(Get(zero, &ITTSAntiResonatorABCParams::GetB), 3400 / 16384.0);
    EXPECT_EQ(Get(zero, &ITTSAntiResonatorABCParams::GetC), 3500 / 32768.0);
}

TEST(TruPacketTest, ScalarsAndTiming) {
    const auto packet = NewPacket<ITTSTruKlattParams>();
    const auto items = As<ITTSDoublePacket>(packet);
    for (int index = 0; index < 10; ++index) items->SetItemValue(index, -1.0);
    As<ILarynthParams>(packet)->SetSampleFreq(16000.0);
    Words words{};
    words[17] = words[35] = 16384;
    words[29] = 4096;
    words[31] = 100;
    words[32] = 120;
    ASSERT_EQ(packet->SetTruPacket(words.data(), 1), S_OK);

    constexpr double kExpected[] = {22050.0 / 220,        0.5, 0.0, 0.0, 0.0, 0.0, 0.5, 0.1,
                                    0x1.370cdc8754f38p+0, 0.5};
    for (int index = 0; index < 10; ++index) EXPECT_EQ(ItemValue(items, index), kExpected[index]) << index;
    EXPECT_EQ(Get(As<ILarynthParams>(packet), &ILarynthParams::GetFrameLen), 110);
    EXPECT_EQ(Get(As<ILarynthParams>(packet), &ILarynthParams::GetSampleFreq), 16000.0);
}

TEST(TruPacketTest, WordsAreSigned) {
    for (const auto& [first, second, F0] : {std::tuple{100, 120, 22050.0 / 220},
                                            {0, 0, 0.0},
                                            {-5, 3, 0.0},
                                            {-5, 6, 22050.0},
                                            {32767, 32767, 22050.0 / 65534}}) {
        const auto packet = Converted({{31, first}, {32, second}});
        EXPECT_EQ(ItemValue(As<ITTSDoublePacket>(packet), 0), F0) << first << " + " << second;
    }
    ExpectABC(Cascade<ITTSResonatorABCParams>(Converted({{13, 16384}, {14, 8192}}), 0), 0.0, 1.0, -0.25);
    ExpectABC(Cascade<ITTSResonatorABCParams>(Converted({{13, -16384}, {14, -8192}}), 0), 0.0, -1.0, 0.25);
    // −32768 is its own negative in 16 bits
    ExpectABC(Cascade<ITTSResonatorABCParams>(Converted({{30, -32768}, {14, -32768}}), 0), -4.0, 0.0, -1.0);
}

TEST(TruPacketTest, AConversionLeavesCoefficientsCurrentAndOldNumbersInTheItems) {
    const auto packet = NewPacket<ITTSTruKlattParams>();
    As<ILarynthVocalTractFilterParams>(packet)->SetAlpha(0, 1.0);
    Words words{};
    words[30] = 8192;  // nasal pole: A = 1, B = C = 0
    ASSERT_EQ(packet->SetTruPacket(words.data(), 1), S_OK);
    EXPECT_EQ(Validity(packet), std::pair(1, 0));

    const auto items = As<ITTSDoublePacket>(packet);
    EXPECT_EQ(ItemValue(items, 10), 300.0);
    EXPECT_EQ(Get(Cascade(packet, 0), &ITTSResonatorFBParams::GetFreq), 0.0);
    EXPECT_EQ(ItemValue(items, 10), 0.0);
}

TEST(TruPacketTest, StoredWordsStayAsTheyWereSet) {
    const auto packet = NewPacket<ITTSTruKlattParams>();
    Words words{};
    EXPECT_EQ(packet->GetTruPacket(words.data(), 1), E_FAIL);
    EXPECT_EQ(packet->GetTruPacket(nullptr, 0), E_FAIL);
    EXPECT_EQ(packet->ConvertFromTru(), E_FAIL);

    for (std::size_t k = 0; k < words.size(); ++k) words[k] = static_cast<unsigned short>(65535 - k);
    words[31] = 0;
    words[32] = 147;
    EXPECT_EQ(packet->SetTruPacket(words.data(), 0), S_OK);
    const auto items = As<ITTSDoublePacket>(packet);
    EXPECT_EQ(ItemValue(items, 0), 100.0) << "not converted";
    EXPECT_EQ(Get(As<ILarynthParams>(packet), &ILarynthParams::GetFrameLen), 0);

    for (int times = 0; times < 2; ++times) {
        EXPECT_EQ(packet->ConvertFromTru(), S_OK);
        EXPECT_EQ(ItemValue(items, 0), 150.0);
        items->SetItemValue(0, 1.0);
    }
    Words stored{};
    EXPECT_EQ(packet->ConvertToTru(), S_OK);
    EXPECT_EQ(packet->GetTruPacket(stored.data(), 1), S_OK);
    EXPECT_EQ(stored, words);
}

}  // namespace larynth::test
