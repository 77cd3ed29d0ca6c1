// SPDX-License-Identifier: MIT
#include "tests/packet/Packet.h"

namespace larynth::test {
namespace {

using Words = std::array<unsigned short, 41>;

// The samples of whole packets, odd words among them, are golden.

TEST(TruPacket, AConversionSetsScalarsAndFrameLength) {
    const auto packet = NewPacket<ITTSTruKlattParams>();
    for (int index = 0; index < 10; ++index) As<ITTSDoublePacket>(packet)->SetItemValue(index, -1.0);
    As<ILarynthParams>(packet)->SetSampleFreq(16000.0);
    As<ILarynthVocalTractFilterParams>(packet)->SetAlpha(0, 1.0);
    Words words{};
    words[17] = words[35] = 16384;
    words[29] = 4096;
    words[32] = 220;
    ASSERT_EQ(Code(packet->SetTruPacket(words.data(), 1)), "S_OK");
    const double expected[] = {22050.0 / 220, 0.5, 0.0, 0.0, 0.0, 0.0, 0.5, 0.1, 0x1.370cdc8754f38p+0, 0.5};
    for (int index = 0; index < 10; ++index) EXPECT_EQ(ItemValue(packet, index), expected[index]) << index;
    EXPECT_EQ(ItemValue(packet, 10), 300.0) << "old numbers stay in the items";
    EXPECT_EQ(Get(As<ILarynthParams>(packet), &ILarynthParams::GetFrameLen), 110);
    EXPECT_EQ(Get(As<ILarynthParams>(packet), &ILarynthParams::GetSampleFreq), 16000.0);
    EXPECT_EQ(Validity(packet), std::pair(1, 0));
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
