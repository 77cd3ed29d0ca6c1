// SPDX-License-Identifier: MIT
#include "tests/packet/Packet.h"

namespace larynth::test {
namespace {

using Words = std::array<unsigned short, 41>;

/// Words that are zero but for those given.
Words Given(std::initializer_list<std::pair<std::size_t, int>> given) {
    Words words{};
    for (const auto& [k, value] : given) words[k] = static_cast<unsigned short>(value);
    return words;
}

ComPtr<ITTSTruKlattParams> Converted(Words words) {
    const auto packet = NewPacket<ITTSTruKlattParams>();
    EXPECT_EQ(Code(packet->SetTruPacket(words.data(), -1)), "S_OK");
    return packet;
}

TEST(TruPacket, EveryWordReachesItsSection) {
    Words numbered;  // 100, 200, …, 4100: each is told from all others
    for (std::size_t k = 0; k < 41; ++k) numbered[k] = static_cast<unsigned short>(100 * (k + 1));
    const auto packet = Converted(numbered);
    const double cascadeA[] = {3100 / 8192.0, 3800 / 131072.0, 2900 / 8192.0,
                               2700 / 8192.0, 2500 / 8192.0,   2300 / 8192.0};
    const double parallelA[] = {0, 0, 2800 / 8192.0, 2600 / 8192.0, 2400 / 8192.0, 2200 / 8192.0, 0};
    const double B[] = {1400, 1600, 1200, 1000, 800, 600};  // the next word is C's
    for (int i = 0; i < 6; ++i) {
        const Three pole = {cascadeA[i], B[i] / 16384.0, -(B[i] + 100) / 32768.0};
        EXPECT_EQ(Form(Cascade<ITTSResonatorABCParams>(packet, i)), pole) << i;
    }
    for (int i = 0; i < 7; ++i) {
        Three pole{};
        if (parallelA[i] != 0.0) pole = {parallelA[i], B[i] / 16384.0, -(B[i] + 100) / 32768.0};
        EXPECT_EQ(Form(Parallel<ITTSResonatorABCParams>(packet, i)), pole) << i;
    }
    EXPECT_EQ(Form(Zero<ITTSAntiResonatorABCParams>(packet)), (Three{1.0, 3400 / 16384.0, 3500 / 32768.0}));
    EXPECT_EQ(ItemValue(packet, 10), 300.0) << "old numbers stay in the items";
    EXPECT_EQ(Validity(packet), std::pair(1, 0));
}

TEST(TruPacket, ScalarsAndTiming) {
    const auto packet = NewPacket<ITTSTruKlattParams>();
    for (int index = 0; index < 10; ++index) As<ITTSDoublePacket>(packet)->SetItemValue(index, -1.0);
    As<ILarynthParams>(packet)->SetSampleFreq(16000.0);
    As<ILarynthVocalTractFilterParams>(packet)->SetAlpha(0, 1.0);
    auto words = Given({{17, 16384}, {35, 16384}, {29, 4096}, {31, 100}, {32, 120}});
    ASSERT_EQ(Code(packet->SetTruPacket(words.data(), 1)), "S_OK");
    const double expected[] = {22050.0 / 220, 0.5, 0.0, 0.0, 0.0, 0.0, 0.5, 0.1, 0x1.370cdc8754f38p+0, 0.5};
    for (int index = 0; index < 10; ++index) EXPECT_EQ(ItemValue(packet, index), expected[index]) << index;
    EXPECT_EQ(Get(As<ILarynthParams>(packet), &ILarynthParams::GetFrameLen), 110);
    EXPECT_EQ(Get(As<ILarynthParams>(packet), &ILarynthParams::GetSampleFreq), 16000.0);
    EXPECT_EQ(Validity(packet), std::pair(1, 0));
}

TEST(TruPacket, WordsAreSigned) {
    const int rows[][2] = {{100, 120}, {0, 0}, {-5, 3}, {-5, 6}, {32767, 32767}};
    const double F0[] = {22050.0 / 220, 0.0, 0.0, 22050.0, 22050.0 / 65534};
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(ItemValue(Converted(Given({{31, rows[i][0]}, {32, rows[i][1]}})), 0), F0[i]) << i;
    const auto pole = [](int A, int B, int C) {
        return Form(Cascade<ITTSResonatorABCParams>(Converted(Given({{30, A}, {13, B}, {14, C}})), 0));
    };
    EXPECT_EQ(pole(0, 16384, 8192), (Three{0.0, 1.0, -0.25}));
    EXPECT_EQ(pole(-32768, -16384, -8192), (Three{-4.0, -1.0, 0.25}));
    EXPECT_EQ(pole(0, 0, -32768), (Three{0.0, 0.0, -1.0})) << "its own negative in 16 bits";
}

TEST(TruPacket, StoredWordsStayAsTheyWereSet) {
    const auto packet = NewPacket<ITTSTruKlattParams>();
    Words words{}, stored{};
    EXPECT_EQ(Code(packet->GetTruPacket(words.data(), 1)), "E_FAIL");
    EXPECT_EQ(Code(packet->GetTruPacket(nullptr, 0)), "E_FAIL");
    EXPECT_EQ(Code(packet->ConvertFromTru()), "E_FAIL");

    for (std::size_t k = 0; k < 41; ++k) words[k] = static_cast<unsigned short>(65535 - k);
    words[31] = 0;
    words[32] = 147;
    EXPECT_EQ(Code(packet->SetTruPacket(words.data(), 0)), "S_OK");
    EXPECT_EQ(ItemValue(packet, 0), 100.0) << "not converted";
    for (int times = 0; times < 2; ++times) {
        EXPECT_EQ(Code(packet->ConvertFromTru()), "S_OK");
        EXPECT_EQ(ItemValue(packet, 0), 150.0);
        As<ITTSDoublePacket>(packet)->SetItemValue(0, 1.0);
    }
    EXPECT_EQ(Code(packet->ConvertToTru()), "S_OK");
    EXPECT_EQ(Code(packet->GetTruPacket(stored.data(), 1)), "S_OK");
    EXPECT_EQ(stored, words);
}

}  // namespace
}  // namespace larynth::test
