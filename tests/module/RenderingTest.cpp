// SPDX-License-Identifier: MIT
/// Whole utterances through both modules as built.
#include <cmath>
#include <random>
#include <string>
#include <vector>

#include <larynth/ModuleRuntime.h>

#include "tests/module/ModuleUnderTest.h"
#include "tests/support/ForwardingOuter.h"

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

    static std::vector<short> Render(const ComPtr<IACLIOProcess>& synthesizer,
                                     const ComPtr<ILarynthParams>& packet = Packet()) {
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

void Prepare(const ComPtr<IACLIOProcess>& synthesizer, double volume, double preEmphasis, double shelfGain) {
    ComPtr<ITTSVoice> voice;
    EXPECT_EQ(Code(voice.Create(CLSID_TTSVoice)), Code(S_OK));
    ComPtr<ITTSVoiceSettings> settings;
    settings.Query(voice.Get());
    settings->SetPreEmphasis(preEmphasis);
    settings->SetLowFilter(300.0, shelfGain, 0.75, 0.0);
    settings->SetHighFilter(3000.0, shelfGain, 0.75, 0.0);
    ComPtr<ILarynthAttributes> attributes;
    attributes.Query(synthesizer.Get());
    EXPECT_EQ(Code(attributes->SetVoice(voice.Get(), GUID_NULL)), Code(S_OK));
    attributes->SetVolume(volume);
}

/// A packet with random values by their items; AB is one of the given gains.
void Vary(const ComPtr<ILarynthParams>& packet, std::mt19937& random, const std::vector<double>& AB) {
    packet->SetFrameLen(static_cast<int>(random() % 300 + (random() % 20 == 0 ? 1500 : 0)));
    ComPtr<ITTSDoublePacket> items;
    items.Query(packet.Get());
    const struct {
        const char* name;
        double low, high;
    } ranges[] = {{"F0", 70, 300},  {"TL", -20, 30},    {"FL", -0.2, 0.2}, {"DI", -0.3, 0.3},
                  {"AF", 0, 200},   {"F1", 200, 900},   {"BW1", 40, 400},  {"F2", 900, 3000},
                  {"BW2", 40, 400}, {"F4", 3000, 5000}, {"BW4", 100, 400}, {"PF1", 200, 5000},
                  {"PBW1", 40, 400}};
    const auto set = [&](std::string name, double value) {
        int index = -1;
        EXPECT_EQ(Code(items->GetIndexFromName(name.data(), &index)), Code(S_OK)) << name;
        items->SetItemValue(index, value);
    };
    for (const auto& [name, low, high] : ranges) {
        set(name, std::uniform_real_distribution<double>(low, high)(random));
    }
    set("AB", AB[random() % AB.size()]);
}

TEST_F(Rendering, InBlocksAndByTheSampleIsTheSame) {
    const struct {
        const char* what;
        double volume, preEmphasis, shelfGain;
        std::vector<double> AB;
    } rows[] = {{"plain", 1.0, 0.0, 1.0, {0.0, 1.0}},
                {"beyond 16 bits", 70.0, 0.95, 2.0, {1.0, 3.0}},
                {"beyond 32 bits through the shelves", 2e5, 0.9, 3.0, {0.0, 50.0}},
                {"now and then no number", 1.0, 0.5, 1.0, {0.5, 1.0, 2.0, 1e7, 1e300, std::nan("")}}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        larynth::ForwardingOuter outer;  // its part has to be called for each sample
        const auto inBlocks = Synthesizer(), bySample = Synthesizer();
        EXPECT_EQ(Code(outer.part.Create(CLSID_TTSParallelTract, &outer)), Code(S_OK));
        ComPtr<ILarynthStruct> structure;
        structure.Query(bySample.Get());
        ASSERT_EQ(Code(structure->SetParallelTract(&outer, GUID_NULL)), Code(S_OK));
        for (const auto& each : {inBlocks, bySample}) {
            Prepare(each, row.volume, row.preEmphasis, row.shelfGain);
        }
        std::mt19937 random(21);
        std::size_t sounding = 0, rendered = 0;
        for (int frame = 0; frame < 300; ++frame) {
            const auto packet = Packet(random() % 30 == 0 ? 22050.0 : 11025.0);
            Vary(packet, random, row.AB);
            const std::uint32_t noise = *LarynthNoiseState();
            const std::vector<short> samples = Render(inBlocks, packet);
            LarynthSeedNoise(noise);
            ASSERT_EQ(Render(bySample, packet), samples) << "frame " << frame;
            for (const short sample : samples) sounding += sample != 0;
            rendered += samples.size();
        }
        EXPECT_GT(sounding, rendered / 2) << "silence shows no difference";
    }
}

}  // namespace
