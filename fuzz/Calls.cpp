// SPDX-License-Identifier: MIT
// Any calls that keep the rules of reference counting are done or fail, whatever partners do from within the
// calls that they get, and leave nothing behind.
#include <array>
#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <span>
#include <utility>
#include <vector>

#include <larynth/Larynth.h>

#include "fuzz/HostFile.h"
#include "tests/support/BadPointer.h"

namespace {

using larynth::Expect;
using Object = ComPtr<IUnknown>;

// clang-format off
constexpr CLSID kClasses[] = {
    CLSID_LarynthParams, CLSID_TTSObjectList, CLSID_TTSStreamHolder, CLSID_TTSSoundData, CLSID_TTSVoice,
    CLSID_TTSVoicingSourceStd, CLSID_TTSVoicingSourceFilter, CLSID_TTSAspirationSource,
    CLSID_TTSFricationSource, CLSID_TTSVocalTractR, CLSID_TTSVocalTractF, CLSID_TTSParallelTract};
constexpr IID kRoles[] = {
    IID_ITTSVoicingSource, IID_ITTSAspirationSource, IID_ITTSFricationSource, IID_ITTSVocalTract,
    IID_ITTSParallelTract, IID_ITTSVoicingSourceFilter, IID_ITTSSoundData, IID_IUnknown, GUID_NULL};
constexpr double kValues[] = {0.0, 0.5, 1.0, 100.0, 11025.0, -1.0, 1e-310, 1e308, INFINITY, NAN};
// clang-format on

/// Makes the calls that the bytes say, on one synthesizer and eight objects.
class Calls {
  public:
    explicit Calls(std::span<const std::uint8_t> bytes) : bytes_(bytes) {
        std::size_t count = 0;
        for (const std::size_t kind : {0U, 1U, 2U, 4U, 12U, 12U, 12U}) Keep(Made(kind), ++count);
        Call(0, &ILarynthParams::SetFrameLen, 8);
        Call(0, &ITTSDoublePacket::SetItemValue, 2, 0.5);  // flutter: the filter calls the source
        while (!bytes_.empty()) Do();
    }
    ~Calls() {
        for (const Object& container : containers_) {  // some hold each other
            if (ComPtr<ITTSObjectList> list; list.TryQuery(container.Get())) list->Clear();
            if (ComPtr<ITTSSyncHolder> holder; holder.TryQuery(container.Get())) holder->SetObject(nullptr);
        }
    }

    /// Within a call of a partner: now and then, the next call is made.
    HRESULT Step() {
        if (bytes_.empty() || --until_ > 0) return S_OK;
        until_ = Byte() % 64;
        Do();
        return Byte() % 4 == 1 ? E_FAIL : S_OK;
    }

  private:
    int Byte() {
        if (bytes_.empty()) return 0;
        const int byte = bytes_.front();
        bytes_ = bytes_.subspan(1);
        return byte;
    }
    const auto& Of(const auto& choices) {
        return choices[static_cast<std::size_t>(Byte()) % std::size(choices)];
    }
    template <class T>
    T* Out(T* good) {
        T* const bad[] = {nullptr, ReadOnly<T>(), reinterpret_cast<T*>(64)};
        return Byte() % 8 == 1 ? Of(bad) : good;
    }

    /// The first object from some on that has the interface; null when none has. Partners wait meanwhile.
    Object Find(int from, const IID& id) {
        const int until = std::exchange(until_, std::numeric_limits<int>::max());
        void* answer = nullptr;
        for (int i = from; answer == nullptr && i < from + 8; ++i) {
            const Object& object = objects_[static_cast<std::size_t>(i % 8)];
            if (object) object->QueryInterface(id, &answer);
        }
        until_ = until;
        return Object::Adopt(static_cast<IUnknown*>(answer));
    }
    template <class Interface, class... Parameters>
    void Call(int from, HRESULT (Interface::*method)(Parameters...),
              std::type_identity_t<Parameters>... arguments) {
        const Object object = Find(from, larynth::InterfaceId<Interface>::value);
        if (object) (static_cast<Interface*>(object.Get())->*method)(arguments...);
    }

    void Do();
    Object Made(std::size_t kind);
    void Keep(Object made, std::size_t at) {
        for (const IID& id : {IID_ITTSObjectList, IID_ITTSSyncHolder}) {
            void* container = nullptr;
            if (made && SUCCEEDED(made->QueryInterface(id, &container)))
                containers_.push_back(Object::Adopt(static_cast<IUnknown*>(container)));
        }
        objects_[at % objects_.size()] = std::move(made);
    }

    std::span<const std::uint8_t> bytes_;
    int until_ = 1, items_ = 0;
    std::vector<Object> containers_;
    std::array<Object, 8> objects_;
    ComPtr<IACLIOProcess> process_;
    ComPtr<ILarynthAttributes> attributes_;
    ComPtr<ILarynthStruct> structure_;
};

template <class First, class... Others>
class Counted : public First, public Others... {
  public:
    explicit Counted(Calls& calls) : calls_(calls) { ++alive; }
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;

    HRESULT LARYNTH_CALL QueryInterface(REFIID riid, void** ppv) override {
        *ppv = nullptr;
        if (const HRESULT hr = calls_.Step(); FAILED(hr)) return hr;
        if (riid == IID_IUnknown || riid == larynth::InterfaceId<First>::value)
            *ppv = static_cast<First*>(this);
        ((riid == larynth::InterfaceId<Others>::value ? * ppv = static_cast<Others*>(this) : nullptr), ...);
        if (*ppv == nullptr) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG LARYNTH_CALL AddRef() override {
        const ULONG count = ++count_;
        calls_.Step();
        return count;
    }
    ULONG LARYNTH_CALL Release() override {
        calls_.Step();  // with the reference still counted
        const ULONG count = --count_;
        if (count == 0) delete this;
        return count;
    }

    static inline int alive = 0;

  protected:
    virtual ~Counted() { --alive; }

    Calls& calls_;

  private:
    ULONG count_ = 1;
};

using Partners = Counted<ITTSVoicingSource, ITTSVoicingSourceFilter, ITTSAspirationSource,
                         ITTSFricationSource, ITTSVocalTract, ITTSParallelTract>;

/// In any role.
class Partner final : public Partners {
  public:
    using Partners::Partners;
    HRESULT LARYNTH_CALL CalculateNext(double*) override { return calls_.Step(); }
    HRESULT LARYNTH_CALL CalculateNext(double, double*) override { return calls_.Step(); }
    HRESULT LARYNTH_CALL GetOutputValue(double*) override { return calls_.Step(); }
    HRESULT LARYNTH_CALL SetParams(IUnknown*, REFIID) override { return calls_.Step(); }
    HRESULT LARYNTH_CALL SetSampleFreq(double) override { return calls_.Step(); }
    HRESULT LARYNTH_CALL SetF0(double) override { return calls_.Step(); }
    HRESULT LARYNTH_CALL SetVolume(double) override { return calls_.Step(); }
    HRESULT LARYNTH_CALL Reset() override { return calls_.Step(); }
    HRESULT LARYNTH_CALL SetVoicingSource(IUnknown*, REFIID) override { return calls_.Step(); }
};

Object Calls::Made(std::size_t kind) {
    const auto partner = std::size(kClasses);
    if (kind == partner + 1)
        return Object::Adopt(larynth::MakeWaveSource({0.0, 1.0, 0.5}, Of(kValues)).Detach());
    if (kind >= partner) return Object::Adopt(static_cast<ITTSVoicingSource*>(new Partner(*this)));
    Object made;
    Expect(SUCCEEDED(made.Create(kClasses[kind])));
    return made;
}

void Calls::Do() try {
    // Whoever calls an object, or hands it over, holds it; but partners may give back the synthesizer.
    const int a = Byte() % 8;
    const Object b = Of(objects_);
    if (!process_) {
        Expect(SUCCEEDED(process_.Create(CLSID_Larynth)));
        attributes_.Query(process_.Get());
        structure_.Query(process_.Get());
        process_->Initialize(nullptr, GUID_NULL);
        return;
    }
    const IID& id = Of(kRoles);
    IUnknown* got = nullptr;
    LONG number = 0;
    double value = 0.0;
    const auto calculate = [&](const Object& input, REFIID idOut) {
        Expect(SUCCEEDED(process_->Calculate(input.Get(), id, idOut, Out(&got))) == (got != nullptr));
    };
    const std::function<void()> calls[] = {
        [&] { Keep(Made(static_cast<std::size_t>(Byte()) % 20), static_cast<std::size_t>(Byte())); },
        [&] { calculate(b, id); },
        [&] { calculate(Find(a, IID_ILarynthParams), GUID_NULL); },
        [&] { calculate(Find(a, IID_ITTSObjectList), IID_IUnknown); },
        [&] { calculate(Find(a, IID_ITTSSyncHolder), IID_IUnknown); },
        [&] { structure_->AddComponent(b.Get(), id, Out(&number)); },
        [&] { structure_->AddComponent(Find(a, id).Get(), id, Out(&number)); },
        [&] { structure_->AddComponent(Find(a, id).Get(), id, &number); },
        [&] { structure_->RemoveComponent(Byte() % 8); },
        [&] { structure_->GetComponent(6, id, Out(&got)); },
        [&] { attributes_->SetVoice(b.Get(), id); },
        [&] { attributes_->GetVoice(id, Out(&got)); },
        [&] { attributes_->SetPacketSyncPointState(Byte() % 2); },
        [&] { attributes_->SetOutputGain(Of(kValues)); },
        [&] { Byte() % 4 == 1 ? process_->Uninitialize() : process_->Initialize(nullptr, id); },
        [&] { process_.Release(), attributes_.Release(), structure_.Release(); },
        // Few, as each level of holders multiplies them.
        [&] {
            if (++items_ < 16) Call(a, &ITTSObjectList::Add, b.Get());
        },
        [&] { Call(a, &ITTSObjectList::SetItem, Byte() % 4, b.Get()); },
        [&] { Call(a, &ITTSObjectList::GetItem, Byte() % 4, id, Out(&got)); },
        [&] { Call(a, &ITTSObjectList::Remove, Byte() % 4); },
        [&] { Call(a, &ITTSObjectList::Clear); },
        [&] { Call(a, &ITTSSyncHolder::SetObject, b.Get()); },
        [&] { Call(a, &ITTSSyncHolder::GetObject, id, Out(&got)); },
        [&] { Call(a, &ILarynthParams::SetFrameLen, Byte() % 64 - 1); },
        [&] { Call(a, &ILarynthParams::SetSampleFreq, Of(kValues)); },
        [&] { Call(a, &ITTSDoublePacket::SetItemValue, Byte() % 53, Of(kValues)); },
        [&] { Call(a, &ITTSDoublePacket::GetItemValue, Byte() % 53, Out(&value)); },
        [&] { Call(a, &IACLClone::Clone, id, Out(&got)); },
        [&] { Call(a, &ITTSVoiceSettings::SetVoicingSource, b.Get()); },
        [&] { Call(a, &ITTSVoiceSettings::SetHighFilter, Of(kValues), Of(kValues), 0.5, 0.5); },
        [&] { Call(a, &ITTSVoicingSource::SetF0, Of(kValues)); },
        [&] { Call(a, &ITTSVoicingSource::CalculateNext, nullptr); },
        [&] { Call(a, &ITTSVoicingSourceFilter::SetVoicingSource, b.Get(), id); },
        [&] { Call(a, &ITTSVocalTract::SetParams, b.Get(), id); },
    };
    Of(calls)();
    if (got != nullptr) Keep(Object::Adopt(got), static_cast<std::size_t>(Byte()));
} catch (const std::runtime_error&) {
    // Of a source that cannot be made.
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    [[maybe_unused]] static const bool loaded = (larynth::LoadModules(), true);
    { const Calls calls({data, std::min<std::size_t>(size, 400)}); }
    Expect(Partners::alive == 0);
    return 0;
}
