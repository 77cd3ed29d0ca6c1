// SPDX-License-Identifier: MIT
#pragma once

#include <larynth/Packet.h>
#include <larynth/Resonators.h>

#include "tests/support/Fake.h"

namespace larynth::test {

inline std::string Numbered(std::string name, int n) { return name.append(std::to_string(n)); }

/// A packet's view of one section: "R2.A", "Z0.C", "P6.B" are its values.
template <class Interface>
class FakeView final : public Fake<Interface> {
  public:
    FakeView(Script& told, std::string name) : Fake<Interface>(told), name_(std::move(name)) {}

#define COEFFICIENT(X)                                                                          \
    HRESULT LARYNTH_CALL Get##X(double* pd) override { return this->Give(name_ + "." #X, pd); } \
    HRESULT LARYNTH_CALL Set##X(double) override { return E_NOTIMPL; }                          \
    HRESULT LARYNTH_CALL GetID##X(int*) override { return E_NOTIMPL; }
    COEFFICIENT(A)
    COEFFICIENT(B)
    COEFFICIENT(C)
#undef COEFFICIENT

    HRESULT LARYNTH_CALL SetState(int) override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL GetState(int*) override { return E_NOTIMPL; }

  private:
    std::string name_;
};

/// Hands out views "R0" … "R5" (cascade), "Z0" or "P0" … "P6" (parallel). Without a value a section is an
/// identity. Nobody who is given a packet asks for counts.
template <class Tract>
class FakeTract : public Tract {
  public:
    using Interface = Tract;

    HRESULT LARYNTH_CALL GetResonatorsCount(int*) override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL GetResonator(int n, IUnknown** pp, REFIID riid) override {
        return HandOut(poles_, Numbered(std::is_same_v<Tract, ILarynthVocalTractParams> ? "R" : "P", n), pp,
                       riid);
    }

  protected:
    virtual Script& Told() = 0;

    template <class View>
    HRESULT HandOut(std::map<std::string, FakeView<View>>& views, const std::string& name, IUnknown** ppView,
                    REFIID riid) {
        *ppView = nullptr;
        const HRESULT code = Told().Next(name);
        if (FAILED(code) || Told().values.contains(name + " is null")) return code;
        Told().values.try_emplace(name + ".A", 1.0);
        auto& view = views.try_emplace(name, Told(), name).first->second;
        const HRESULT query = view.QueryInterface(riid, reinterpret_cast<void**>(ppView));
        return FAILED(query) ? query : code;
    }

  private:
    std::map<std::string, FakeView<ITTSResonatorABCParams>> poles_;
};

class FakeCascade : public FakeTract<ILarynthVocalTractParams> {
  public:
    HRESULT LARYNTH_CALL GetAntiResonatorsCount(int*) override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL GetAntiResonator(int n, IUnknown** pp, REFIID riid) override {
        return HandOut(zeros_, Numbered("Z", n), pp, riid);
    }
    HRESULT LARYNTH_CALL IsResDataValid(LONG*) override { return E_NOTIMPL; }

  private:
    std::map<std::string, FakeView<ITTSAntiResonatorABCParams>> zeros_;
};

/// A scripted parameter packet. Its calls and values are "SampleFreq" (11025 Hz unless told), "FrameLen",
/// "F0", "AB", "AlphaDegree", "Alpha3", "Beta0" and those of its views.
class FakePacket final
    : public Fake<ILarynthParams, ILarynthVoiceParams, ILarynthAspirationParams, ILarynthFricationParams,
                  FakeCascade, FakeTract<ILarynthParallelTractParams>, ILarynthVocalTractFilterParams> {
  public:
    explicit FakePacket(Script& told, std::map<std::string, double> values = {}) : Fake(told) {
        script.values.merge(std::move(values));
        script.values.try_emplace("SampleFreq", 11025.0);
    }

    HRESULT LARYNTH_CALL GetSampleFreq(double* pd) override { return Give("SampleFreq", pd); }
    HRESULT LARYNTH_CALL GetFrameLen(int* pn) override { return Give("FrameLen", pn); }
// A value that can be got alone.
#define SCALAR(X)                                                             \
    HRESULT LARYNTH_CALL Get##X(double* pd) override { return Give(#X, pd); } \
    HRESULT LARYNTH_CALL Set##X(double) override { return E_NOTIMPL; }        \
    HRESULT LARYNTH_CALL GetID##X(int*) override { return E_NOTIMPL; }
    SCALAR(AV)
    SCALAR(F0)
    SCALAR(OQ)
    SCALAR(FL)
    SCALAR(FLT)
    SCALAR(DI)
    SCALAR(TL)
    SCALAR(AH)
    SCALAR(AF)
    SCALAR(AB)
#undef SCALAR
    HRESULT LARYNTH_CALL GetAlphaDegree(int* pn) override { return Give("AlphaDegree", pn); }
    HRESULT LARYNTH_CALL GetBetaDegree(int* pn) override { return Give("BetaDegree", pn); }
    HRESULT LARYNTH_CALL GetAlpha(int n, double* pd) override { return Give(Numbered("Alpha", n), pd); }
    HRESULT LARYNTH_CALL GetBeta(int n, double* pd) override { return Give(Numbered("Beta", n), pd); }

    // Nobody who is given a packet writes to it or asks for items.
    HRESULT LARYNTH_CALL SetSampleFreq(double) override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL SetFrameLen(int) override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL SetAlpha(int, double) override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL SetBeta(int, double) override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL ConvertFromFilter() override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL ConvertToFilter() override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL IsFilterDataValid(LONG*) override { return E_NOTIMPL; }

  protected:
    Script& Told() override { return script; }
};

}  // namespace larynth::test
