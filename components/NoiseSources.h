// SPDX-License-Identifier: MIT
#pragma once

#include <larynth/ComPtr.h>
#include <larynth/ModuleRuntime.h>
#include <larynth/Packet.h>
#include <larynth/Sources.h>

#include "com/Boundary.h"
#include "com/ComObject.h"
#include "components/ElementOutput.h"
#include "engine/NoiseSource.h"

namespace larynth {

/// A noise source as a component. Aspiration and frication differ in their interface, in the packet's
/// interface and in the getter of the amplitude, nothing else. Silent until the first SetParams.
///
/// All sources of a process draw from one generator, also while silent, so the order of calls decides who
/// gets which value.
template <class Interface, class Params, HRESULT (LARYNTH_CALL Params::*GetAmplitude)(double*)>
class NoiseSourceObject : public ComObject<Interface> {
  public:
    using ComObject<Interface>::ComObject;

    HRESULT LARYNTH_CALL CalculateNext(double* pdValue) noexcept final {
        return core_.Generator().IsAlone() ? WriteNext(pdValue) : WriteNextAmongThreads(pdValue);
    }
    HRESULT LARYNTH_CALL GetOutputValue(double* pdValue) noexcept final { return PutOutput(core_, pdValue); }

    /// The getter's code is not examined; an amplitude that it does not deliver is 0.
    HRESULT LARYNTH_CALL SetParams(IUnknown* pIParams, REFIID riid) noexcept final;

    /// The element inside, for whoever recognised the object as this module's own.
    NoiseSource& Element() noexcept { return core_; }

  private:
    HRESULT WriteNext(double* pdValue) noexcept { return WriteSample(core_.Evaluate(), pdValue); }
    /// Apart, so that a process with a single thread pays nothing for what leases need.
    [[gnu::noinline]] HRESULT WriteNextAmongThreads(double* pdValue) noexcept { return WriteNext(pdValue); }

    NoiseSource core_{0.0, *LarynthNoise()};
};

template <class Interface, class Params, HRESULT (LARYNTH_CALL Params::*GetAmplitude)(double*)>
HRESULT LARYNTH_CALL NoiseSourceObject<Interface, Params, GetAmplitude>::SetParams(IUnknown* pIParams,
                                                                                   REFIID /*riid*/) noexcept {
    return this->GuardedAlive([&]() -> HRESULT {
        ComPtr<Params> params;
        if (!params.TryQuery(pIParams)) return E_FAIL;
        double amplitude = 0.0;
        (params.Get()->*GetAmplitude)(&amplitude);
        core_.SetAmplitude(amplitude);
        return S_OK;
    });
}

extern template class NoiseSourceObject<ITTSAspirationSource, ILarynthAspirationParams,
                                        &ILarynthAspirationParams::GetAH>;

/// Aspiration noise, mixed with the voicing in front of the cascade. Amplitude: the packet's AH.
class TTSAspirationSource final : public NoiseSourceObject<ITTSAspirationSource, ILarynthAspirationParams,
                                                           &ILarynthAspirationParams::GetAH> {
  public:
    using RecognisedBy = ITTSAspirationSource;
    using NoiseSourceObject::NoiseSourceObject;
};

extern template class NoiseSourceObject<ITTSFricationSource, ILarynthFricationParams,
                                        &ILarynthFricationParams::GetAF>;

/// Frication noise, the input of the parallel tract. Amplitude: the packet's AF.
class TTSFricationSource final : public NoiseSourceObject<ITTSFricationSource, ILarynthFricationParams,
                                                          &ILarynthFricationParams::GetAF> {
  public:
    using RecognisedBy = ITTSFricationSource;
    using NoiseSourceObject::NoiseSourceObject;
};

}  // namespace larynth
