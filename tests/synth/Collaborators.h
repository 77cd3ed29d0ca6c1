// SPDX-License-Identifier: MIT
/// Scripted stand-ins for everything that a synthesizer talks to. All of them share one script, which can
/// make any single call fail, and one count of live objects and references.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include <larynth/Larynth.h>

namespace larynth::test {

/// Which call fails, and what was called.
struct Script {
    int calls = 0;
    int failAt = 0;  // the n-th call from 1 on; 0: none
    HRESULT code = static_cast<HRESULT>(0x80041234);
    std::vector<std::string> log;

    HRESULT Next(const std::string& name) {
        log.push_back(name);
        return ++calls == failAt ? code : S_OK;
    }
};

inline Script script;           // of the running test
inline int liveReferences = 0;  // on all stand-ins together

inline HRESULT ResultThen(HRESULT hr, const std::function<void()>& effect) {
    if (SUCCEEDED(hr)) effect();
    return hr;
}

/// Base of the stand-ins: counts, answers its list, obeys the script.
template <class First, class... Others>
class StandIn : public First, public Others... {
  public:
    StandIn() { ++liveReferences; }
    virtual ~StandIn() = default;

    HRESULT LARYNTH_CALL QueryInterface(REFIID riid, void** ppv) override {
        *ppv = nullptr;
        if (const HRESULT hr = script.Next("QueryInterface"); FAILED(hr)) return hr;
        if (riid == IID_IUnknown) *ppv = static_cast<First*>(this);
        Offer<First>(riid, ppv);
        (Offer<Others>(riid, ppv), ...);
        if (*ppv == nullptr) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG LARYNTH_CALL AddRef() override {
        ++liveReferences;
        return ++count_;
    }
    ULONG LARYNTH_CALL Release() override {
        --liveReferences;
        const ULONG left = --count_;
        if (left == 0) delete this;
        return left;
    }
    ULONG Count() const { return count_; }

  private:
    template <class Interface>
    void Offer(REFIID riid, void** ppv) {
        if (riid == InterfaceId<Interface>::value) *ppv = static_cast<Interface*>(this);
    }

    ULONG count_ = 1;
};

template <class Interface, class Object>
ComPtr<Interface> Adopt(Object* object) {
    return ComPtr<Interface>::Adopt(object);
}

class FakePacket final : public StandIn<ILarynthParams> {
  public:
    HRESULT LARYNTH_CALL SetSampleFreq(double dValue) override {
        sampleFreq = dValue;
        return S_OK;
    }
    HRESULT LARYNTH_CALL GetSampleFreq(double* pdValue) override {
        return ResultThen(script.Next("GetSampleFreq"), [&] { *pdValue = sampleFreq; });
    }
    HRESULT LARYNTH_CALL SetFrameLen(int nValue) override {
        frameLength = nValue;
        return S_OK;
    }
    HRESULT LARYNTH_CALL GetFrameLen(int* pnValue) override {
        return ResultThen(script.Next("GetFrameLen"), [&] { *pnValue = frameLength; });
    }

    double sampleFreq = 11025.0;
    int frameLength = 3;
};

inline ComPtr<ILarynthParams> Packet(int frameLength = 3, double sampleFreq = 11025.0) {
    auto* packet = new FakePacket;
    packet->frameLength = frameLength;
    packet->sampleFreq = sampleFreq;
    return Adopt<ILarynthParams>(packet);
}

/// A voicing source that gives a ramp `value`, `value` + `step`, …; `Kinds` are the marks of its kind.
template <class... Kinds>
class FakeVoicingSource : public StandIn<ITTSVoicingSource, Kinds...> {
  public:
    HRESULT LARYNTH_CALL SetSampleFreq(double) override { return S_OK; }
    HRESULT LARYNTH_CALL SetF0(double) override { return S_OK; }
    HRESULT LARYNTH_CALL SetVolume(double) override { return S_OK; }
    HRESULT LARYNTH_CALL Reset() override {
        ++resets;
        return script.Next("source.Reset");
    }
    HRESULT LARYNTH_CALL CalculateNext(double* pdValue) override {
        script.log.push_back("voicing");
        *pdValue = value;
        value += step;
        return E_FAIL;  // results of the per-sample calls are not examined
    }
    HRESULT LARYNTH_CALL GetOutputValue(double*) override { return E_FAIL; }
    HRESULT LARYNTH_CALL SetParams(IUnknown*, REFIID riid) override {
        return riid == IID_ILarynthParams ? script.Next("voicing.SetParams") : E_INVALIDARG;
    }

    double value = 0.0, step = 0.0;
    int resets = 0;
};

/// The three kinds that are known, with the open quotient that reached them.
class FakeWaveSource final : public FakeVoicingSource<ITTSVoicingSourceWave> {
  public:
    HRESULT LARYNTH_CALL LoadFromTxt(LPSTR) override { return S_OK; }
    HRESULT LARYNTH_CALL SetDefaultPitch(double) override { return S_OK; }
    HRESULT LARYNTH_CALL GetDefaultPitch(double*) override { return S_OK; }
    HRESULT LARYNTH_CALL SetOQ(double dValue) override {
        openQuotient = dValue;
        return S_OK;
    }
    HRESULT LARYNTH_CALL GetOQ(double*) override { return S_OK; }

    double openQuotient = -1.0;
};

class FakeStdSource final : public FakeVoicingSource<ITTSVoicingSourceStd> {
  public:
    HRESULT LARYNTH_CALL SetOQ(double) override { return E_FAIL; }
    HRESULT LARYNTH_CALL SetFL(double) override { return S_OK; }
    HRESULT LARYNTH_CALL SetFLT(double) override { return S_OK; }
    HRESULT LARYNTH_CALL SetDI(double) override { return S_OK; }
    HRESULT LARYNTH_CALL SetTL(double) override { return S_OK; }
};

/// A noise source of constant `value`.
template <class Interface>
class FakeNoise : public StandIn<Interface> {
  public:
    explicit FakeNoise(std::string name, double constant) : name_(std::move(name)), value_(constant) {}
    HRESULT LARYNTH_CALL CalculateNext(double* pdValue) override {
        script.log.push_back(name_);
        *pdValue = value_;
        return S_OK;
    }
    HRESULT LARYNTH_CALL GetOutputValue(double*) override { return E_FAIL; }
    HRESULT LARYNTH_CALL SetParams(IUnknown*, REFIID) override { return script.Next(name_ + ".SetParams"); }

  private:
    std::string name_;
    double value_;
};

/// A tract, or the voicing filter without its source, that multiplies by `gain`.
template <class Interface>
class FakeTract : public StandIn<Interface> {
  public:
    FakeTract(std::string name, double gain) : name_(std::move(name)), gain_(gain) {}
    HRESULT LARYNTH_CALL SetParams(IUnknown*, REFIID) override { return script.Next(name_ + ".SetParams"); }
    HRESULT LARYNTH_CALL CalculateNext(double dInputValue, double* pdValue) override {
        script.log.push_back(name_);
        *pdValue = gain_ * dInputValue;
        return S_OK;
    }
    HRESULT LARYNTH_CALL GetOutputValue(double*) override { return E_FAIL; }

  private:
    std::string name_;
    double gain_;
};

class FakeVoicingFilter final : public FakeTract<ITTSVoicingSourceFilter> {
  public:
    explicit FakeVoicingFilter(double gain = 1.0) : FakeTract("filter", gain) {}
    HRESULT LARYNTH_CALL SetVoicingSource(IUnknown* pIVoicingSource, REFIID) override {
        wired = pIVoicingSource;
        return S_OK;
    }

    IUnknown* wired = nullptr;  // for comparison only
};

/// A sample block and sync element.
class FakeBlock final : public StandIn<ITTSSoundData, ITTSSyncHolder> {
  public:
    HRESULT LARYNTH_CALL SetFormat(int nFormat) override {
        format = nFormat;
        return script.Next("SetFormat");
    }
    HRESULT LARYNTH_CALL GetFormat(int*) override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL GetSamples(const short** ppSamples, int* pnCount) override {
        *ppSamples = samples.data();
        *pnCount = static_cast<int>(samples.size());
        return S_OK;
    }
    HRESULT LARYNTH_CALL AppendSamples(int nFormat, short* pSamples, int nCount) override {
        if (nFormat == 2) samples.insert(samples.end(), pSamples, pSamples + nCount);
        return E_FAIL;  // not examined
    }
    HRESULT LARYNTH_CALL SetObject(IUnknown* pObject) override {
        return ResultThen(script.Next("SetObject"), [&] {
            attached.Release();
            if (pObject != nullptr) pObject->AddRef();
            attached = ComPtr<IUnknown>::Adopt(pObject);
        });
    }
    HRESULT LARYNTH_CALL GetObject(REFIID riid, IUnknown** ppObject) override {
        *ppObject = nullptr;
        if (!attached) return script.Next("GetObject");
        return attached->QueryInterface(riid, reinterpret_cast<void**>(ppObject));
    }

    int format = 0;
    std::vector<short> samples;
    ComPtr<IUnknown> attached;
};

/// A list; with `Holder` as second interface it is the content of a marker as well.
template <class... Others>
class FakeListOf : public StandIn<ITTSObjectList, Others...> {
  public:
    HRESULT LARYNTH_CALL Clear() override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL Add(IUnknown* pItem) override {
        return ResultThen(script.Next("Add"), [&] {
            pItem->AddRef();
            items.push_back(ComPtr<IUnknown>::Adopt(pItem));
        });
    }
    HRESULT LARYNTH_CALL Insert(int, IUnknown*) override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL Remove(int) override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL GetCount(int* pnCount) override {
        return ResultThen(script.Next("GetCount"), [&] { *pnCount = static_cast<int>(items.size()); });
    }
    HRESULT LARYNTH_CALL GetItem(int nIndex, REFIID riid, IUnknown** ppItem) override {
        *ppItem = nullptr;
        const HRESULT hr = script.Next("GetItem");
        if (FAILED(hr)) return hr;
        return items[static_cast<std::size_t>(nIndex)]->QueryInterface(riid,
                                                                       reinterpret_cast<void**>(ppItem));
    }
    HRESULT LARYNTH_CALL SetItem(int, IUnknown*) override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL Lock() override {
        return ResultThen(script.Next("Lock"), [&] { ++locks; });
    }
    HRESULT LARYNTH_CALL Unlock() override {
        --locks;
        return script.Next("Unlock");
    }

    std::vector<ComPtr<IUnknown>> items;
    int locks = 0;
};

using FakeList = FakeListOf<>;

class FakeHolder final : public FakeListOf<ITTSSyncHolder> {
  public:
    HRESULT LARYNTH_CALL SetObject(IUnknown* pObject) override {
        if (pObject != nullptr) pObject->AddRef();
        attached_ = ComPtr<IUnknown>::Adopt(pObject);
        return S_OK;
    }
    HRESULT LARYNTH_CALL GetObject(REFIID riid, IUnknown** ppObject) override {
        *ppObject = nullptr;
        const HRESULT hr = script.Next("GetObject");
        if (FAILED(hr) || !attached_) return hr;
        return attached_->QueryInterface(riid, reinterpret_cast<void**>(ppObject));
    }

  private:
    ComPtr<IUnknown> attached_;
};

template <class... Items>
ComPtr<ITTSObjectList> List(const Items&... items) {
    auto* list = new FakeList;
    (list->Add(items.Get()), ...);
    return Adopt<ITTSObjectList>(list);
}

template <class... Items>
ComPtr<ITTSSyncHolder> Holder(IUnknown* attached, const Items&... items) {
    auto* holder = new FakeHolder;
    holder->SetObject(attached);
    (holder->Add(items.Get()), ...);
    return Adopt<ITTSSyncHolder>(holder);
}

/// A voice with everything, or with as much as its members say.
class FakeVoice final : public StandIn<ITTSVoice, ITTSVoiceSourceParams, ITTSVoiceFilterParams> {
  public:
    HRESULT LARYNTH_CALL Reserved3() override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL Reserved4() override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL Reserved5() override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL Reserved6() override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL Reserved7() override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL Reserved8() override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL Reserved9() override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL Reserved11() override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL Reserved12() override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL Reserved13() override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL Reserved14() override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL GetVoicingSource(REFIID riid, IUnknown** ppSource) override {
        *ppSource = nullptr;
        return source ? source->QueryInterface(riid, reinterpret_cast<void**>(ppSource)) : S_OK;
    }
    HRESULT LARYNTH_CALL GetPreEmphasis(double* pdValue) override { return Tell(pdValue, preEmphasis); }
    HRESULT LARYNTH_CALL GetOpenQuotient(double* pdValue) override { return Tell(pdValue, openQuotient); }
    HRESULT LARYNTH_CALL GetLowF(double* pdValue) override { return Tell(pdValue, 300.0); }
    HRESULT LARYNTH_CALL GetLowP3(double* pdValue) override { return Tell(pdValue, 0.75); }
    HRESULT LARYNTH_CALL GetLowP4(double* pdValue) override { return Tell(pdValue, 0.0); }
    HRESULT LARYNTH_CALL GetLowG(double* pdValue) override { return Tell(pdValue, lowGain); }
    HRESULT LARYNTH_CALL GetHighF(double* pdValue) override { return Tell(pdValue, 3000.0); }
    HRESULT LARYNTH_CALL GetHighP3(double* pdValue) override { return Tell(pdValue, 0.75); }
    HRESULT LARYNTH_CALL GetHighP4(double* pdValue) override { return Tell(pdValue, 0.0); }
    HRESULT LARYNTH_CALL GetHighG(double* pdValue) override { return Tell(pdValue, 1.0); }

    ComPtr<ITTSVoicingSource> source;
    double preEmphasis = 0.0, openQuotient = 0.5, lowGain = 1.0;

  private:
    static HRESULT Tell(double* pdValue, double value) {
        *pdValue = value;
        return S_OK;
    }
};

/// Offers stand-in objects of one class to CoCreateInstance while it lives.
class ClassOffer {
  public:
    using Make = std::function<IUnknown*()>;

    ClassOffer(REFCLSID rclsid, Make make) : factory_(new Factory(std::move(make))) {
        CoRegisterClassObject(rclsid, factory_.get(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &cookie_);
    }
    ~ClassOffer() { CoRevokeClassObject(cookie_); }
    ClassOffer(const ClassOffer&) = delete;
    ClassOffer& operator=(const ClassOffer&) = delete;

  private:
    class Factory final : public IClassFactory {
      public:
        explicit Factory(Make make) : make_(std::move(make)) {}
        HRESULT LARYNTH_CALL QueryInterface(REFIID riid, void** ppv) override {
            *ppv = riid == IID_IUnknown || riid == IID_IClassFactory ? this : nullptr;
            return *ppv != nullptr ? S_OK : E_NOINTERFACE;
        }
        ULONG LARYNTH_CALL AddRef() override { return 2; }
        ULONG LARYNTH_CALL Release() override { return 1; }
        HRESULT LARYNTH_CALL CreateInstance(IUnknown*, REFIID riid, void** ppvObject) override {
            *ppvObject = nullptr;
            if (const HRESULT hr = script.Next("CreateInstance"); FAILED(hr)) return hr;
            ComPtr<IUnknown> object = ComPtr<IUnknown>::Adopt(make_());
            return object->QueryInterface(riid, ppvObject);
        }
        HRESULT LARYNTH_CALL LockServer(BOOL) override { return S_OK; }

      private:
        Make make_;
    };

    std::unique_ptr<Factory> factory_;
    DWORD cookie_ = 0;
};

}  // namespace larynth::test
