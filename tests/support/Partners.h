// SPDX-License-Identifier: MIT
/// Scripted components of a synthesizer.
#pragma once

#include <larynth/Sources.h>
#include <larynth/Tracts.h>

#include "tests/support/Fake.h"

namespace larynth::test {

/// A component of a role, which gives offset + gain·input. `name` is its CalculateNext, `name`.SetParams the
/// frame's packet.
template <class... Interfaces>
class FakeStage : public Fake<Interfaces...> {
  public:
    FakeStage(Script& told, std::string called, double constant = 0.0, double factor = 0.0)
        : Fake<Interfaces...>(told), name(std::move(called)), offset(constant), gain(factor) {}

    // NOLINTBEGIN(*override*): an interface has the one or the other, and a class marks all or none
    HRESULT LARYNTH_CALL CalculateNext(double* pdValue) { return CalculateNext(0.0, pdValue); }
    HRESULT LARYNTH_CALL CalculateNext(double dInputValue, double* pdValue) {
        this->script.Next(name);
        *pdValue = offset + gain * dInputValue;
        return E_FAIL;  // results of the calls for a sample are not examined
    }
    HRESULT LARYNTH_CALL GetOutputValue(double*) { return E_FAIL; }
    HRESULT LARYNTH_CALL SetParams(IUnknown*, REFIID) { return this->script.Next(name + ".SetParams"); }
    // NOLINTEND(*override*)

    std::string name;
    double offset, gain;
};

/// A voicing source; `Kinds` say of what kind it is.
template <class... Kinds>
class FakeSource : public FakeStage<ITTSVoicingSource, Kinds...> {
  public:
    explicit FakeSource(Script& told, double constant = 0.0)
        : FakeStage<ITTSVoicingSource, Kinds...>(told, "voicing", constant) {}

    HRESULT LARYNTH_CALL SetSampleFreq(double) override { return S_OK; }
    HRESULT LARYNTH_CALL SetF0(double dValue) override {
        frequencies.push_back(dValue);
        return this->script.Next("SetF0");
    }
    HRESULT LARYNTH_CALL SetVolume(double) override { return S_OK; }
    HRESULT LARYNTH_CALL Reset() override { return this->script.Next("Reset"); }

    std::vector<double> frequencies;  ///< Every F0 that was set, in order.
};

using FakeVoicingSource = FakeSource<>;

class FakeStandardSource final : public FakeSource<ITTSVoicingSourceStd> {
  public:
    using FakeSource::FakeSource;

    HRESULT LARYNTH_CALL SetOQ(double) override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL SetFL(double) override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL SetFLT(double) override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL SetDI(double) override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL SetTL(double) override { return E_NOTIMPL; }
};

class FakeVoicingFilter final : public FakeStage<ITTSVoicingSourceFilter> {
  public:
    using FakeStage::FakeStage;

    HRESULT LARYNTH_CALL SetVoicingSource(IUnknown* pIVoicingSource, REFIID) override {
        wired = pIVoicingSource;
        return S_OK;
    }

    IUnknown* wired = nullptr;  ///< For comparison only.
};

}  // namespace larynth::test
