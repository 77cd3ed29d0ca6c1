// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include <larynth/Packet.h>

#include "tests/support/FakeSection.h"

namespace larynth {

/// A scripted parameter packet: gives the values, codes and interfaces that a test tells it to, notes every
/// call, and counts references. It lives where the test puts it.
///
/// A call is named after what it asks for: "SampleFreq", "F0", "AB", "AlphaDegree", "Alpha3", "Beta0"; views
/// are "R0" … "R5" (cascade), "Z0" (its antiresonator) and "P0" … "P6" (parallel), their coefficients "R0.A",
/// "Z0.C" and so on. The name is the key for values and codes. What has no value is 0, except that sections
/// are identities and the sample frequency is 11025 Hz. Setters write the same values.
class FakePacket final : public ILarynthParams,
                         public ILarynthVoiceParams,
                         public ILarynthAspirationParams,
                         public ILarynthFricationParams,
                         public ILarynthVocalTractParams,
                         public ILarynthVocalTractFilterParams {
  public:
    FakePacket() : parallel_(*this) {}
    virtual ~FakePacket() = default;
    FakePacket(const FakePacket&) = delete;
    FakePacket& operator=(const FakePacket&) = delete;

    /// The packet as the argument of SetParams.
    IUnknown* Unknown() { return static_cast<ILarynthParams*>(this); }

    HRESULT Set(const std::string& call, double value);

    /// Makes the call return `code` from its `from`th time on, counted from 1. A failing code writes nothing.
    void Script(const std::string& call, HRESULT code, int from = 1) { codes_[call] = {code, from}; }

    /// Makes queries for `id` return `code`; a success hands the interface out as usual.
    void ScriptQuery(REFIID id, HRESULT code) { queryCodes_.emplace_back(id, code); }

    /// Makes the call for this view succeed without giving one.
    void Withhold(const std::string& view) { withheld_ = view; }

    /// Every call so far but queries, in order.
    const std::vector<std::string>& Calls() const { return calls_; }

    /// References that are out on the packet, those on its views among them.
    int References() const { return references_; }

    /// Notes the call and answers it as scripted.
    template <class T>
    HRESULT Give(const std::string& call, T* target);

    HRESULT LARYNTH_CALL QueryInterface(REFIID riid, void** ppv) noexcept override;
    ULONG LARYNTH_CALL AddRef() noexcept override { return static_cast<ULONG>(++references_); }
    ULONG LARYNTH_CALL Release() noexcept override { return static_cast<ULONG>(--references_); }

    HRESULT LARYNTH_CALL SetSampleFreq(double d) noexcept override { return Set("SampleFreq", d); }
    HRESULT LARYNTH_CALL GetSampleFreq(double* pd) noexcept override { return Give("SampleFreq", pd); }
    HRESULT LARYNTH_CALL SetFrameLen(int n) noexcept override { return Set("FrameLen", n); }
    HRESULT LARYNTH_CALL GetFrameLen(int* pn) noexcept override { return Give("FrameLen", pn); }

    HRESULT LARYNTH_CALL SetAV(double d) noexcept override { return Set("AV", d); }
    HRESULT LARYNTH_CALL GetAV(double* pd) noexcept override { return Give("AV", pd); }
    HRESULT LARYNTH_CALL GetIDAV(int*) noexcept override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL SetF0(double d) noexcept override { return Set("F0", d); }
    HRESULT LARYNTH_CALL GetF0(double* pd) noexcept override { return Give("F0", pd); }
    HRESULT LARYNTH_CALL GetIDF0(int*) noexcept override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL SetOQ(double d) noexcept override { return Set("OQ", d); }
    HRESULT LARYNTH_CALL GetOQ(double* pd) noexcept override { return Give("OQ", pd); }
    HRESULT LARYNTH_CALL GetIDOQ(int*) noexcept override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL SetFL(double d) noexcept override { return Set("FL", d); }
    HRESULT LARYNTH_CALL GetFL(double* pd) noexcept override { return Give("FL", pd); }
    HRESULT LARYNTH_CALL GetIDFL(int*) noexcept override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL SetFLT(double d) noexcept override { return Set("FLT", d); }
    HRESULT LARYNTH_CALL GetFLT(double* pd) noexcept override { return Give("FLT", pd); }
    HRESULT LARYNTH_CALL GetIDFLT(int*) noexcept override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL SetDI(double d) noexcept override { return Set("DI", d); }
    HRESULT LARYNTH_CALL GetDI(double* pd) noexcept override { return Give("DI", pd); }
    HRESULT LARYNTH_CALL GetIDDI(int*) noexcept override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL SetTL(double d) noexcept override { return Set("TL", d); }
    HRESULT LARYNTH_CALL GetTL(double* pd) noexcept override { return Give("TL", pd); }
    HRESULT LARYNTH_CALL GetIDTL(int*) noexcept override { return E_NOTIMPL; }

    HRESULT LARYNTH_CALL SetAH(double d) noexcept override { return Set("AH", d); }
    HRESULT LARYNTH_CALL GetAH(double* pd) noexcept override { return Give("AH", pd); }
    HRESULT LARYNTH_CALL GetIDAH(int*) noexcept override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL SetAF(double d) noexcept override { return Set("AF", d); }
    HRESULT LARYNTH_CALL GetAF(double* pd) noexcept override { return Give("AF", pd); }
    HRESULT LARYNTH_CALL GetIDAF(int*) noexcept override { return E_NOTIMPL; }

    /// The packet's own counts are no components' business: none may ask for them.
    HRESULT LARYNTH_CALL GetResonatorsCount(int*) noexcept override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL GetAntiResonatorsCount(int*) noexcept override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL GetResonator(int n, IUnknown** pp, REFIID riid) noexcept override {
        return GiveView<ITTSResonatorABCParams>(Numbered("R", n), pp, riid);
    }
    HRESULT LARYNTH_CALL GetAntiResonator(int n, IUnknown** pp, REFIID riid) noexcept override {
        return GiveView<ITTSAntiResonatorABCParams>(Numbered("Z", n), pp, riid);
    }
    HRESULT LARYNTH_CALL IsResDataValid(LONG*) noexcept override { return E_NOTIMPL; }

    HRESULT LARYNTH_CALL GetAlphaDegree(int* pn) noexcept override { return Give("AlphaDegree", pn); }
    HRESULT LARYNTH_CALL GetBetaDegree(int* pn) noexcept override { return Give("BetaDegree", pn); }
    HRESULT LARYNTH_CALL SetAlpha(int n, double d) noexcept override { return Set(Numbered("Alpha", n), d); }
    HRESULT LARYNTH_CALL GetAlpha(int n, double* pd) noexcept override {
        return Give(Numbered("Alpha", n), pd);
    }
    HRESULT LARYNTH_CALL SetBeta(int n, double d) noexcept override { return Set(Numbered("Beta", n), d); }
    HRESULT LARYNTH_CALL GetBeta(int n, double* pd) noexcept override {
        return Give(Numbered("Beta", n), pd);
    }
    HRESULT LARYNTH_CALL ConvertFromFilter() noexcept override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL ConvertToFilter() noexcept override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL IsFilterDataValid(LONG*) noexcept override { return E_NOTIMPL; }

  private:
    /// The parallel tract's methods have the names of the cascade's, so they need a class of their own.
    class Parallel final : public ILarynthParallelTractParams {
      public:
        explicit Parallel(FakePacket& packet) : packet_(packet) {}
        virtual ~Parallel() = default;

        HRESULT LARYNTH_CALL QueryInterface(REFIID riid, void** ppv) noexcept override {
            return packet_.QueryInterface(riid, ppv);
        }
        ULONG LARYNTH_CALL AddRef() noexcept override { return packet_.AddRef(); }
        ULONG LARYNTH_CALL Release() noexcept override { return packet_.Release(); }

        HRESULT LARYNTH_CALL GetResonatorsCount(int*) noexcept override { return E_NOTIMPL; }
        HRESULT LARYNTH_CALL GetResonator(int n, IUnknown** pp, REFIID riid) noexcept override {
            return packet_.GiveView<ITTSResonatorABCParams>(Numbered("P", n), pp, riid);
        }
        HRESULT LARYNTH_CALL SetAB(double d) noexcept override { return packet_.Set("AB", d); }
        HRESULT LARYNTH_CALL GetAB(double* pd) noexcept override { return packet_.Give("AB", pd); }
        HRESULT LARYNTH_CALL GetIDAB(int*) noexcept override { return E_NOTIMPL; }

      private:
        FakePacket& packet_;
    };

    struct Scripted {
        HRESULT code;
        int from;
    };

    static std::string Numbered(std::string name, int n) { return name.append(std::to_string(n)); }
    HRESULT Note(const std::string& call);
    double ValueOf(const std::string& call) const;
    HRESULT CodeOfQuery(REFIID riid) const;
    template <class Interface>
    HRESULT GiveView(const std::string& call, IUnknown** ppView, REFIID riid);
    template <class Interface>
    bool TryAnswer(REFIID riid, Interface* face, void** ppv);

    Parallel parallel_;
    std::map<std::string, double> values_;
    std::map<std::string, Scripted> codes_;
    std::vector<std::pair<IID, HRESULT>> queryCodes_;
    std::string withheld_;
    std::map<std::string, int> counts_;
    std::vector<std::string> calls_;
    int references_ = 0;
};

inline HRESULT FakePacket::Set(const std::string& call, double value) {
    values_[call] = value;
    return S_OK;
}

template <class T>
HRESULT FakePacket::Give(const std::string& call, T* target) {
    const HRESULT code = Note(call);
    if (SUCCEEDED(code)) *target = static_cast<T>(ValueOf(call));
    return code;
}

template <class Interface>
HRESULT FakePacket::GiveView(const std::string& call, IUnknown** ppView, REFIID riid) {
    *ppView = nullptr;
    const HRESULT code = Note(call);
    if (FAILED(code) || call == withheld_) return code;
    auto* view = new FakeSection<Interface, FakePacket>(*this, call);
    view->AddRef();
    const HRESULT query = view->QueryInterface(riid, reinterpret_cast<void**>(ppView));
    view->Release();
    return FAILED(query) ? query : code;
}

inline HRESULT FakePacket::Note(const std::string& call) {
    calls_.push_back(call);
    const int count = ++counts_[call];
    const auto found = codes_.find(call);
    return found != codes_.end() && count >= found->second.from ? found->second.code : S_OK;
}

inline double FakePacket::ValueOf(const std::string& call) const {
    if (const auto found = values_.find(call); found != values_.end()) return found->second;
    if (call == "SampleFreq") return 11025.0;
    return call.ends_with(".A") ? 1.0 : 0.0;
}

inline HRESULT FakePacket::CodeOfQuery(REFIID riid) const {
    for (const auto& [id, code] : queryCodes_) {
        if (id == riid) return code;
    }
    return S_OK;
}

template <class Interface>
bool FakePacket::TryAnswer(REFIID riid, Interface* face, void** ppv) {
    if (!(riid == InterfaceId<Interface>::value)) return false;
    *ppv = face;
    AddRef();
    return true;
}

inline HRESULT LARYNTH_CALL FakePacket::QueryInterface(REFIID riid, void** ppv) noexcept {
    *ppv = nullptr;
    const HRESULT code = CodeOfQuery(riid);
    if (FAILED(code)) return code;
    const bool known = TryAnswer<IUnknown>(riid, Unknown(), ppv) ||
                       TryAnswer<ILarynthParams>(riid, this, ppv) ||
                       TryAnswer<ILarynthVoiceParams>(riid, this, ppv) ||
                       TryAnswer<ILarynthAspirationParams>(riid, this, ppv) ||
                       TryAnswer<ILarynthFricationParams>(riid, this, ppv) ||
                       TryAnswer<ILarynthVocalTractParams>(riid, this, ppv) ||
                       TryAnswer<ILarynthVocalTractFilterParams>(riid, this, ppv) ||
                       TryAnswer<ILarynthParallelTractParams>(riid, &parallel_, ppv);
    return known ? code : E_NOINTERFACE;
}

}  // namespace larynth
