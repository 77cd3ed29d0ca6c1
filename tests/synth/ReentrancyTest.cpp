// SPDX-License-Identifier: MIT
/// Partners that change the synthesizer, or give it back, from within the calls that they get.
#include "components/TTSVoicingSourceFilter.h"
#include "tests/support/Allocations.h"
#include "tests/synth/Synth.h"

namespace larynth::test {
namespace {

class Reentrancy : public Synth {
  protected:
    Reentrancy() {
        voice->SetVoicingSource(voiced.Unknown());
        packet->SetFrameLen(2);
        ComPtr<ITTSDoublePacket> items;
        items.Query(packet.Get());
        items->SetItemValue(0, 100.0);  // F0
        items->SetItemValue(2, 0.1);    // FL: our own filter calls the source
    }

    ~Reentrancy() override {
        output.Release();
        GiveBack();
        voice->SetVoicingSource(nullptr);
    }

    void NewSynthesizer() {
        process = New<Larynth, IACLIOProcess>();
        attributes.Query(process.Get());
        structure.Query(process.Get());
    }
    /// With our own voicing filter, which nobody else holds.
    void Prepare() {
        NewSynthesizer();
        const auto own = New<TTSVoicingSourceFilter, ITTSVoicingSourceFilter>();
        own->SetVoicingSource(source.Unknown(), GUID_NULL);
        LONG number = 0;
        structure->AddComponent(own.Get(), IID_ITTSVoicingSourceFilter, &number);
        process->Initialize(nullptr, GUID_NULL);
    }
    void GiveBack() {
        process.Release();
        attributes.Release();
        structure.Release();
    }
    /// A packet into a block, a list or a holder into a list.
    HRESULT Render(IUnknown* input) {
        output.Release();
        ComPtr<ITTSObjectList> list;
        return Calculate(input, list.TryQuery(input) ? IID_IUnknown : GUID_NULL, output);
    }

    /// Offered in places of others.
    FakeVoicingSource voiced{script, 1.0};
    FakeStage<ITTSParallelTract> other{script, "other", 7.0};
    ComPtr<ITTSVoiceSettings> voice = New<TTSVoice, ITTSVoiceSettings>();
    ComPtr<ILarynthParams> packet = Packet(2);
    ComPtr<IUnknown> output;
};

TEST_F(Reentrancy, NothingThatIsCalledGoesBeforeTheCallEnds) {
    LONG number = 0;
    const auto plug = [&](REFIID role, IUnknown* component) {
        if (structure) structure->AddComponent(component, role, &number);
    };
    const std::pair<const char*, std::function<void()>> actions[] = {
        {"the source goes", [&] { plug(IID_ITTSVoicingSource, packet.Get()); }},
        {"the source comes", [&] { plug(IID_ITTSVoicingSource, voiced.Unknown()); }},
        {"the aspiration goes", [&] { plug(IID_ITTSAspirationSource, packet.Get()); }},
        {"the frication goes", [&] { plug(IID_ITTSFricationSource, packet.Get()); }},
        {"the cascade goes", [&] { plug(IID_ITTSVocalTract, packet.Get()); }},
        {"the parallel tract comes", [&] { plug(IID_ITTSParallelTract, other.Unknown()); }},
        {"the filter goes", [&] { return structure ? structure->RemoveComponent(6) : S_OK; }},
        {"the voice goes", [&] { return attributes ? attributes->SetVoice(nullptr, GUID_NULL) : S_OK; }},
        {"the voice comes", [&] { return attributes ? attributes->SetVoice(voice.Get(), GUID_NULL) : S_OK; }},
        {"another packet",
         [&] {
             ComPtr<IUnknown> block;
             if (process) static_cast<void>(Calculate(packet.Get(), GUID_NULL, block));
         }},
        {"the synthesizer goes", [&] { GiveBack(); }},
    };
    const std::pair<const char*, std::function<HRESULT()>> calls[] = {
        {"packet", [&] { return Render(packet.Get()); }},
        {"list", [&] { return Render(List(packet, Holder(voice.Get(), packet), packet).Get()); }},
        {"SetVoice", [&] { return attributes->SetVoice(voice.Get(), GUID_NULL); }},
        {"SetVoicingSource", [&] { return structure->SetVoicingSource(voiced.Unknown(), GUID_NULL); }},
        {"AddComponent",
         [&] { return structure->AddComponent(filter.Unknown(), IID_ITTSVoicingSourceFilter, &number); }},
        {"Initialize",
         [&] {
             NewSynthesizer();
             return process->Initialize(nullptr, GUID_NULL);
         }},
    };
    int points = 0;
    for (const auto& [what, call] : calls) {
        for (const auto& [happens, action] : actions) {
            SCOPED_TRACE(std::string(what) + ": " + happens);
            for (int step = 1, last = 1; step <= last; ++step, ++points) {
                Prepare();
                script.Do(step, action);
                static_cast<void>(call());
                last = std::max(last, script.steps);
                if (process) {
                    EXPECT_EQ(Code(process->Initialize(nullptr, GUID_NULL)), "S_OK") << step;
                    EXPECT_EQ(Code(Render(packet.Get())), "S_OK") << "step " << step;
                }
                output.Release();
                GiveBack();
                ASSERT_EQ(cascade.references + parallel.references + aspiration.references, 0) << step;
            }
        }
    }
    EXPECT_GT(points, 1000);
}

TEST_F(Reentrancy, AReplacedComponentActsFromTheNextSampleAndAnEmptiedRoleEndsThePacket) {
    for (const char* const who : {"voicing", "aspiration", "frication", "filter", "cascade", "parallel"}) {
        script.Do(who, [&] { structure->SetParallelTract(other.Unknown(), GUID_NULL); });
        EXPECT_EQ(Synth::Render(Packet(3)), (Shorts{530, 37, 37})) << who;
        structure->SetParallelTract(parallel.Unknown(), GUID_NULL);
        for (const std::string& call : {std::string(who), who + std::string(".SetParams")}) {
            script.Do(call, [&] { structure->SetParallelTract(packet.Get(), GUID_NULL); });
            EXPECT_EQ(Code(Render(Packet(1).Get())), "E_FAIL") << call;
            EXPECT_FALSE(output) << call;
            structure->SetParallelTract(parallel.Unknown(), GUID_NULL);
        }
    }
}

TEST_F(Reentrancy, WhatAClassFactoryPlugsInStays) {
    NewSynthesizer();
    script.Do("create", [&] { structure->SetVoicingSource(voiced.Unknown(), GUID_NULL); });
    EXPECT_EQ(Code(process->Initialize(nullptr, GUID_NULL)), "S_OK");
    EXPECT_EQ(Synth::Render(Packet(1)), Shorts{536});  // (1·2 + 10)·3 + 500
}

TEST_F(Reentrancy, HoldersAreRenderedToABoundedDepth) {
    auto holder = Holder(nullptr, packet);
    for (int depth = 1; depth < 256; ++depth) holder = Holder(nullptr, holder);
    EXPECT_EQ(Code(Render(holder.Get())), "S_OK");
    EXPECT_EQ(Code(Render(Holder(nullptr, holder).Get())), "E_FAIL");
    auto own = List<TTSStreamHolder>(packet);
    own->Add(own.Get());
    EXPECT_EQ(Code(Render(own.Get())), "E_FAIL");
    own->Clear();
}

TEST_F(Reentrancy, WithoutMemoryACallFailsAndCanBeRepeatedAndNoSampleIsLostInSilence) {
    voice->SetLowFilter(300.0, 2.0, 0.75, 0.0);
    ComPtr<IACLClone> original;
    original.Query(packet.Get());
    const auto list = List(packet, Holder(voice.Get(), packet), packet);
    const std::pair<const char*, std::function<HRESULT()>> calls[] = {
        {"Initialize", [&] { return process->Initialize(nullptr, GUID_NULL); }},
        {"Calculate", [&] { return Render(packet.Get()); }},
        {"SetVoice", [&] { return attributes->SetVoice(voice.Get(), GUID_NULL); }},
        {"list", [&] { return Render(list.Get()); }},
        {"Clone", [&] { return original->Clone(IID_IUnknown, output.Put()); }},
    };
    for (const auto& [what, call] : calls) {
        int failures = 0;
        for (bool failed = true; failed; ++failures) {
            Prepare();
            if (what == calls[0].first) NewSynthesizer();
            if (what == calls[2].first) Render(packet.Get());  // the filters are designed at once
            HRESULT hr = S_OK;
            {
                AllocationFailure failure(failures + 1);
                hr = call();
                failed = failure.Happened();
            }
            const bool isList = what == calls[3].first;
            EXPECT_TRUE(FAILED(hr) == failed || isList) << what << ", allocation " << failures + 1;
            std::size_t samples = 0;  // in a list's blocks
            for (const auto& block : ItemsOf(output.Get())) samples += SamplesOf(block.Get()).size();
            EXPECT_EQ(samples, isList && SUCCEEDED(hr) ? 6U : 0U) << failures + 1;
            EXPECT_EQ(Code(call()), "S_OK") << what;
            EXPECT_EQ(Code(process->Initialize(nullptr, GUID_NULL)), "S_OK");
            EXPECT_EQ(Code(Render(packet.Get())), "S_OK") << what;
        }
        EXPECT_GT(failures, 1) << what;
    }
}

}  // namespace
}  // namespace larynth::test
