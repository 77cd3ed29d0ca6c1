// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

#include <larynth/Larynth.h>

#include "com/Create.h"
#include "companion/TTSObjectList.h"
#include "companion/TTSSoundData.h"
#include "companion/TTSVoice.h"
#include "packet/LarynthParams.h"
#include "synth/Larynth.h"
#include "tests/support/Code.h"
#include "tests/support/FakePacket.h"
#include "tests/support/Partners.h"

namespace larynth::test {

using Shorts = std::vector<short>;

/// Offers a class to CoCreateInstance while it lives.
class Offer final : public Fake<IClassFactory> {
  public:
    using Create = std::function<HRESULT(REFIID, void**)>;

    Offer(Script& told, REFCLSID rclsid, Create create) : Fake(told), create_(std::move(create)) {
        CoRegisterClassObject(rclsid, this, CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &cookie_);
    }
    /// Of which there is one object.
    template <class... Interfaces>
    Offer(Script& told, REFCLSID rclsid, Fake<Interfaces...>& only)
        : Offer(told, rclsid, [&](REFIID riid, void** ppv) { return only.QueryInterface(riid, ppv); }) {}
    ~Offer() override { CoRevokeClassObject(cookie_); }

    // The runtime may rely on null behind a failure.
    HRESULT LARYNTH_CALL QueryInterface(REFIID riid, void** ppv) override {
        const HRESULT hr = Fake::QueryInterface(riid, ppv);
        if (FAILED(hr)) *ppv = nullptr;
        return hr;
    }
    HRESULT LARYNTH_CALL CreateInstance(IUnknown*, REFIID riid, void** ppv) override {
        HRESULT hr = script.Next("create");
        if (SUCCEEDED(hr)) hr = create_(riid, ppv);
        if (FAILED(hr)) *ppv = nullptr;
        return hr;
    }
    HRESULT LARYNTH_CALL LockServer(BOOL) override { return S_OK; }

  private:
    Create create_;
    DWORD cookie_ = 0;
};

/// A new object as one of its interfaces.
template <class Class, class Interface>
ComPtr<Interface> New(IUnknown* outer = nullptr) {
    ComPtr<Interface> object;
    object.Query(&MakeObject<Class>(outer)->Inner());
    return object;
}

inline ComPtr<ILarynthParams> Packet(int length, double sampleFreq = 11025.0) {
    auto packet = New<LarynthParams, ILarynthParams>();
    packet->SetFrameLen(length);
    packet->SetSampleFreq(sampleFreq);
    return packet;
}

template <class Class = TTSObjectList>
ComPtr<ITTSObjectList> List(const auto&... items) {
    auto list = New<Class, ITTSObjectList>();
    (list->Add(items.Get()), ...);
    return list;
}

/// A marker with its object in front of items.
ComPtr<ITTSObjectList> Holder(IUnknown* attached, const auto&... items) {
    auto list = List<TTSStreamHolder>(items...);
    ComPtr<ITTSSyncHolder> holder;
    holder.Query(list.Get());
    holder->SetObject(attached);
    return list;
}

/// What stands in a list; nothing in what is none.
inline std::vector<ComPtr<IUnknown>> ItemsOf(IUnknown* object) {
    ComPtr<ITTSObjectList> list;
    int count = 0;
    if (list.TryQuery(object)) list->GetCount(&count);
    std::vector<ComPtr<IUnknown>> items(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        list->GetItem(i, IID_IUnknown, items[static_cast<std::size_t>(i)].PutUnknown());
    return items;
}

inline Shorts SamplesOf(IUnknown* output) {
    ComPtr<ITTSSoundData> block;
    if (!block.TryQuery(output)) return {};
    const short* samples = nullptr;
    int count = 0;
    block->GetSamples(&samples, &count);
    return {samples, samples + count};
}

/// A synthesizer whose own components are scripted: voicing source 0, aspiration 10, frication 100, filter
/// ×2, cascade ×3, parallel ×5. A sample of it is (0·2 + 10)·3 + 100·5 = 530.
class Synth : public ::testing::Test {
  protected:
    Synth() {
        process = New<Larynth, IACLIOProcess>();
        attributes.Query(process.Get());
        structure.Query(process.Get());
        EXPECT_EQ(Code(process->Initialize(nullptr, GUID_NULL)), "S_OK");
        script.Restart();
    }

    HRESULT Calculate(IUnknown* input, REFIID idOut, ComPtr<IUnknown>& output) {
        return process->Calculate(input, GUID_NULL, idOut, output.Put());
    }

    /// The samples of one packet.
    Shorts Render(const ComPtr<ILarynthParams>& packet) {
        ComPtr<IUnknown> output;
        EXPECT_EQ(Code(Calculate(packet.Get(), GUID_NULL, output)), "S_OK");
        return SamplesOf(output.Get());
    }

    Script script;
    FakeStandardSource source{script};
    FakeStage<ITTSAspirationSource> aspiration{script, "aspiration", 10.0};
    FakeStage<ITTSFricationSource> frication{script, "frication", 100.0};
    FakeVoicingFilter filter{script, "filter", 0.0, 2.0};
    FakeStage<ITTSVocalTract> cascade{script, "cascade", 0.0, 3.0};
    FakeStage<ITTSParallelTract> parallel{script, "parallel", 0.0, 5.0};
    Offer sources{script, CLSID_TTSVoicingSourceStd, source};
    Offer aspirations{script, CLSID_TTSAspirationSource, aspiration};
    Offer fricatives{script, CLSID_TTSFricationSource, frication};
    Offer filters{script, CLSID_TTSVoicingSourceFilter, filter};
    Offer cascades{script, CLSID_TTSVocalTractR, cascade};
    Offer parallels{script, CLSID_TTSParallelTract, parallel};
    Offer blocks{script, CLSID_TTSSoundData, std::bind_front(CreateInstance<TTSSoundData>, nullptr)};
    Offer lists{script, CLSID_TTSObjectList, std::bind_front(CreateInstance<TTSObjectList>, nullptr)};
    ComPtr<IACLIOProcess> process;
    ComPtr<ILarynthAttributes> attributes;
    ComPtr<ILarynthStruct> structure;
};

}  // namespace larynth::test
