// SPDX-License-Identifier: MIT
// What a synthesizer remembers, and shows of itself.
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vector>

#include <larynth/Larynth.h>

#include "tests/support/Allocations.h"
#include "tests/support/Code.h"
#include "tests/support/ForwardingOuter.h"

namespace {

constexpr int kSignals = 28, kLength = 3000;

/// A synthesizer and a packet with flutter and noise.
struct Voice {
    Voice() {
        for (const char* const module : {LARYNTH_MODULE, LARYNTH_COMPANION_MODULE}) LarynthLoadModule(module);
        process.Create(CLSID_Larynth);
        process->Initialize(nullptr, GUID_NULL);
        attributes.Query(process.Get());
        structure.Query(process.Get());
        state.Query(process.Get());
        signals.Query(process.Get());
        ComPtr<ITTSDoublePacket> items;
        items.Create(CLSID_LarynthParams);
        items->SetItemValue(2, 0.2);    // FL
        items->SetItemValue(6, 900.0);  // AV
        packet.Query(items.Get());
        packet->SetFrameLen(kLength);
    }

    ComPtr<IUnknown> NewState(bool saved) {
        ComPtr<IUnknown> made;
        EXPECT_EQ(Code(state->CreateState(made.Put())), "S_OK");
        EXPECT_EQ(Code(saved ? state->SaveState(made.Get()) : S_OK), "S_OK");
        return made;
    }
    std::string Restore(IUnknown* object) { return Code(state->RestoreState(object)); }
    std::string CalculateSignals(IUnknown* input, double* values, int rowLength) {
        return Code(signals->CalculateSignals(input, values, rowLength, output.Put()));
    }
    std::vector<short> Render(bool withSignals = false) {
        std::vector<double> rows(kSignals * kLength);
        if (withSignals) {
            EXPECT_EQ(CalculateSignals(packet.Get(), rows.data(), kLength), "S_OK");
        } else {
            process->Calculate(packet.Get(), GUID_NULL, GUID_NULL, output.Put());
        }
        ComPtr<ITTSSoundData> block;
        block.Query(output.Get());
        const short* samples = nullptr;
        int count = 0;
        block->GetSamples(&samples, &count);
        return {samples, samples + count};
    }

    ComPtr<IACLIOProcess> process;
    ComPtr<ILarynthAttributes> attributes;
    ComPtr<ILarynthStruct> structure;
    ComPtr<ILarynthState> state;
    ComPtr<ILarynthSignals> signals;
    ComPtr<ILarynthParams> packet;
    ComPtr<IUnknown> output;
};

TEST(State, PutBackHereOrElsewhereGivesTheBitsThatFollowed) {
    Voice voice, other;
    voice.attributes->SetVolume(0.7);
    voice.Render();
    const auto state = voice.NewState(true);
    const auto expected = voice.Render();
    EXPECT_GT(std::set(expected.begin(), expected.end()).size(), 100U);
    voice.attributes->SetVolume(1.0);
    for (Voice* const each : {&voice, &other, &voice, &other}) {
        EXPECT_EQ(each->Restore(state.Get()), "S_OK");
        EXPECT_EQ(each->Render(each == &other), expected);
    }
}

TEST(State, IsRefusedWhereItDoesNotBelongAndChangesNothing) {
    Voice voice, other;
    voice.Render();
    const auto state = voice.NewState(true);
    const auto expected = voice.Render();
    const auto later = voice.NewState(true);
    for (const bool saves : {false, true}) {
        int failures = 0;
        for (HRESULT hr = E_FAIL; FAILED(hr); failures += FAILED(hr) ? 1 : 0) {
            const auto empty = voice.NewState(false);
            voice.Restore(state.Get());
            {
                const AllocationFailure noMemory(failures + 1);
                hr = saves ? voice.state->SaveState(empty.Get()) : voice.state->RestoreState(later.Get());
            }
            EXPECT_EQ(voice.Restore(empty.Get()), saves && SUCCEEDED(hr) ? "S_OK" : "E_FAIL");
            EXPECT_TRUE(SUCCEEDED(hr) || voice.Render() == expected) << failures;
        }
        EXPECT_GT(failures, 4);
    }
    {
        const AllocationFailure noMemory(1);
        EXPECT_EQ(voice.state->SaveState(later.Get()), S_OK) << "once more, in the same memory";
    }
    EXPECT_EQ(voice.Restore(voice.packet.Get()), "E_INVALIDARG");
    EXPECT_EQ(voice.Restore(nullptr), "E_POINTER");
    ComPtr<ITTSVoicingSourceFilter> filter;
    voice.structure->GetComponent(6, filter.Id(), filter.PutUnknown());
    filter->SetVoicingSource(nullptr, GUID_NULL);
    EXPECT_EQ(voice.Restore(state.Get()), "E_FAIL") << "flutter moves no source";
    ComPtr<ITTSVocalTract> tract;
    tract.Create(CLSID_TTSVocalTractF);
    other.structure->SetVocalTract(tract.Get(), GUID_NULL);
    EXPECT_EQ(other.Restore(state.Get()), "E_FAIL");
}

TEST(Signals, AreRefusedWithoutRoomAndForWhatIsForeign) {
    larynth::ForwardingOuter outer;
    Voice voice;
    std::vector<double> rows(kSignals * kLength);
    IUnknown* const packet = voice.packet.Get();
    EXPECT_EQ(voice.CalculateSignals(packet, rows.data(), kLength - 1), "E_INVALIDARG");
    EXPECT_EQ(voice.CalculateSignals(packet, nullptr, kLength), "E_POINTER");
    EXPECT_EQ(voice.CalculateSignals(nullptr, rows.data(), kLength), "E_POINTER");
    EXPECT_EQ(voice.CalculateSignals(voice.process.Get(), rows.data(), kLength), "E_NOINTERFACE");
    outer.part.Create(CLSID_TTSAspirationSource, &outer);
    voice.structure->SetAspirationSource(&outer, GUID_NULL);
    EXPECT_EQ(voice.CalculateSignals(packet, rows.data(), kLength), "E_NOTIMPL");
    EXPECT_EQ(voice.Restore(voice.NewState(false).Get()), "E_NOTIMPL");
    voice.process->Uninitialize();
    EXPECT_EQ(voice.CalculateSignals(packet, rows.data(), kLength), "E_FAIL");
}

TEST(Signals, HaveNamesThatFitTheirBuffer) {
    const auto signals = Voice().signals;
    std::string names;
    char name[16] = {};
    int count = 0;
    while (signals->GetSignalName(count++, name, 16) == S_OK) names += std::string(" ") + name;
    EXPECT_EQ(
        names,
        " voicing tilted_voicing aspiration frication cascade_input cascade_nz cascade_np cascade_f1"
        " cascade_f2 cascade_f3 cascade_f4 cascade_f5 parallel_bypass parallel_f0 parallel_f1 parallel_f2"
        " parallel_f3 parallel_f4 parallel_f5 parallel_f6 cascade parallel sum gained low_shelf high_shelf"
        " pre_emphasis output");
    EXPECT_EQ(Code(signals->GetSignalsCount(&count)), "S_OK");
    EXPECT_EQ(count, kSignals);
    EXPECT_EQ(Code(signals->GetSignalName(27, name, 6)), "E_FAIL") << "output, and its end";
    EXPECT_EQ(Code(signals->GetSignalName(-1, name, 16)), "E_FAIL");
    EXPECT_EQ(Code(signals->GetSignalName(0, nullptr, 16)), "E_POINTER");
}

}  // namespace
