// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <gtest/gtest.h>
#include <memory>

#include "com/Create.h"
#include "com/ModuleLock.h"
#include "synth/Larynth.h"
#include "tests/synth/Collaborators.h"

namespace larynth::test {

/// A synthesizer whose every collaborator is a stand-in: voicing source a ramp from `voicing`, aspiration 10,
/// frication 100, filter ×2, cascade ×3, parallel ×5.
class SynthFixture : public ::testing::Test {
  protected:
    SynthFixture() {
        script = Script{};
        CreateInstance<Larynth>(nullptr, IID_IACLIOProcess, process.PutVoid());
        attributes.TryQuery(process.Get());
        structure.TryQuery(process.Get());
    }

    ~SynthFixture() override {
        structure.Release();
        attributes.Release();
        process.Release();
        EXPECT_EQ(liveReferences, 0) << "a reference was not given back";
        EXPECT_EQ(ModuleLock::Count(), 0);
        liveReferences = 0;
    }

    /// Initializes and forgets what was called until now.
    void Initialize() {
        ASSERT_EQ(process->Initialize(nullptr, GUID_NULL), S_OK);
        script = Script{};
    }

    HRESULT Calculate(IUnknown* input, REFIID idOut, ComPtr<IUnknown>& output) {
        return process->Calculate(input, GUID_NULL, idOut, output.Put());
    }

    /// The samples of one packet.
    std::vector<short> Render(const ComPtr<ILarynthParams>& packet) {
        ComPtr<IUnknown> output;
        EXPECT_EQ(Calculate(packet.Get(), GUID_NULL, output), S_OK);
        return Samples(output.Get());
    }

    static std::vector<short> Samples(IUnknown* output) {
        ComPtr<ITTSSoundData> block;
        if (!block.TryQuery(output)) return {};
        const short* samples = nullptr;
        int count = 0;
        block->GetSamples(&samples, &count);
        return std::vector<short>(samples, samples + count);
    }

    static long Times(const std::string& name) {
        return std::count(script.log.begin(), script.log.end(), name);
    }

    /// The number of the `occurrence`-th call of that name, where no samples were rendered.
    static int CallNumber(const std::string& name, int occurrence) {
        for (std::size_t i = 0; i < script.log.size(); ++i) {
            if (script.log[i] == name && --occurrence == 0) return static_cast<int>(i) + 1;
        }
        return 0;
    }

    ClassOffer blocks{CLSID_TTSSoundData, [] { return static_cast<ITTSSoundData*>(new FakeBlock); }};
    ClassOffer lists{CLSID_TTSObjectList, [] { return static_cast<IUnknown*>(new FakeList); }};
    ClassOffer sources{CLSID_TTSVoicingSourceStd,
                       [] { return static_cast<ITTSVoicingSource*>(new FakeStdSource); }};
    ClassOffer aspirations{
        CLSID_TTSAspirationSource,
        [] { return static_cast<IUnknown*>(new FakeNoise<ITTSAspirationSource>("aspiration", 10.0)); }};
    ClassOffer frications{
        CLSID_TTSFricationSource,
        [] { return static_cast<IUnknown*>(new FakeNoise<ITTSFricationSource>("frication", 100.0)); }};
    ClassOffer cascades{CLSID_TTSVocalTractR,
                        [] { return static_cast<IUnknown*>(new FakeTract<ITTSVocalTract>("cascade", 3.0)); }};
    ClassOffer parallels{CLSID_TTSParallelTract, [] {
                             return static_cast<IUnknown*>(new FakeTract<ITTSParallelTract>("parallel", 5.0));
                         }};
    ClassOffer filters{CLSID_TTSVoicingSourceFilter,
                       [] { return static_cast<IUnknown*>(new FakeVoicingFilter(2.0)); }};

    ComPtr<IACLIOProcess> process;
    ComPtr<ILarynthAttributes> attributes;
    ComPtr<ILarynthStruct> structure;
};

}  // namespace larynth::test
