// SPDX-License-Identifier: MIT
#include "tests/packet/Packet.h"

namespace larynth::test {
namespace {

using Words = std::array<unsigned short, 41>;

// The samples of whole packets, odd words among them, are golden.

TEST(TruPacket, StoredWordsStayAsTheyWereSet) {
    const auto packet = NewPacket<ITTSTruKlattParams>();
    Words words{}, stored{};
    EXPECT_EQ(Code(packet->GetTruPacket(words.data(), 1)), "E_FAIL");
    EXPECT_EQ(Code(packet->ConvertFromTru()), "E_FAIL");

    for (std::size_t k = 0; k < 41; ++k) words[k] = static_cast<unsigned short>(65535 - k);
    words[31] = 0;
    words[32] = 147;
    EXPECT_EQ(Code(packet->SetTruPacket(words.data(), 0)), "S_OK");
    EXPECT_EQ(ItemValue(packet, 0), 100.0) << "not converted";
    EXPECT_EQ(Code(packet->ConvertFromTru()), "S_OK");
    EXPECT_EQ(ItemValue(packet, 0), 150.0);
    EXPECT_EQ(Code(packet->ConvertToTru()), "S_OK");
    EXPECT_EQ(Code(packet->GetTruPacket(stored.data(), 1)), "S_OK");
    EXPECT_EQ(stored, words);
}

}  // namespace
}  // namespace larynth::test
