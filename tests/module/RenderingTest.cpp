// SPDX-License-Identifier: MIT
/// Whole utterances through both modules as built.
#include <vector>

#include "tests/module/ModuleUnderTest.h"

namespace {

class Rendering : public ::testing::Test {
  protected:
    ~Rendering() override {
        EXPECT_EQ(Code(larynth_.CanUnload()), Code(S_OK));
        EXPECT_EQ(Code(companion_.CanUnload()), Code(S_OK));
    }

    static ComPtr<ILarynthParams> Packet(double sampleFreq = 11025.0) {
        ComPtr<ILarynthParams> packet;
        EXPECT_EQ(Code(packet.Create(CLSID_LarynthParams)), Code(S_OK));
        packet->SetFrameLen(700);
        packet->SetSampleFreq(sampleFreq);
        ComPtr<ILarynthVoiceParams> voice;
        voice.Query(packet.Get());
        voice->SetAV(800.0);
        voice->SetFL(0.1);
        voice->SetFLT(9.07);
        voice->SetTL(12.0);
        return packet;
    }

    static ComPtr<IACLIOProcess> Synthesizer() {
        ComPtr<IACLIOProcess> synthesizer;
        EXPECT_EQ(Code(synthesizer.Create(CLSID_Larynth)), Code(S_OK));
        EXPECT_EQ(Code(synthesizer->Initialize(nullptr, GUID_NULL)), Code(S_OK));
        return synthesizer;
    }

    static std::vector<short> Render(const ComPtr<IACLIOProcess>& synthesizer) {
        const auto packet = Packet();
        ComPtr<ITTSSoundData> block;
        EXPECT_EQ(Code(synthesizer->Calculate(packet.Get(), GUID_NULL, GUID_NULL, block.PutUnknown())),
                  Code(S_OK));
        const short* samples = nullptr;
        int count = 0;
        block->GetSamples(&samples, &count);
        EXPECT_EQ(packet->AddRef(), 2U) << "the packet's count is back where it was";
        packet->Release();
        return std::vector<short>(samples, samples + count);
    }

  private:
    ModuleUnderTest larynth_{LARYNTH_MODULE}, companion_{LARYNTH_COMPANION_MODULE};
};

TEST_F(Rendering, OfTheSameSeedGivesTheSameBits) {
    LarynthSeedNoise(99);
    const std::vector<short> first = Render(Synthesizer());
    const std::vector<short> unseeded = Render(Synthesizer());
    LarynthSeedNoise(99);
    EXPECT_EQ(Render(Synthesizer()), first);
    EXPECT_NE(unseeded, first) << "the noise runs on from one rendering to the next";
    EXPECT_EQ(first.size(), 700U);
}

TEST_F(Rendering, ThatFailsGivesEverythingBack) {
    const auto synthesizer = Synthesizer();
    const auto bad = Packet(0.0);
    ComPtr<ITTSObjectList> list;
    ASSERT_EQ(Code(list.Create(CLSID_TTSObjectList)), Code(S_OK));
    list->Add(Packet().Get());
    list->Add(bad.Get());
    IUnknown* output = list.Get();
    EXPECT_EQ(Code(synthesizer->Calculate(list.Get(), GUID_NULL, IID_ITTSObjectList, &output)), Code(E_FAIL));
    EXPECT_EQ(output, nullptr);
    EXPECT_EQ(Code(list->Clear()), Code(S_OK)) << "the list is unlocked again";
    EXPECT_EQ(bad->AddRef(), 2U);
    bad->Release();
    EXPECT_EQ(Render(synthesizer).size(), 700U);
}

}  // namespace
