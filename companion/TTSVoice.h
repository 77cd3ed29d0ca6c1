// SPDX-License-Identifier: MIT
#pragma once

#include <larynth/ComPtr.h>
#include <larynth/Sources.h>
#include <larynth/Voice.h>

#include "com/ComObject.h"

namespace larynth {

/// A voice that a host fills. One Reserved method serves the slots of that number in all three interfaces.
class TTSVoice final
    : public ComObject<ITTSVoice, ITTSVoiceSourceParams, ITTSVoiceFilterParams, ITTSVoiceSettings> {
  public:
    using ComObject::ComObject;

    HRESULT LARYNTH_CALL Reserved3() noexcept override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL Reserved4() noexcept override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL Reserved5() noexcept override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL Reserved6() noexcept override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL Reserved7() noexcept override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL Reserved8() noexcept override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL Reserved9() noexcept override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL Reserved11() noexcept override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL Reserved12() noexcept override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL Reserved13() noexcept override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL Reserved14() noexcept override { return E_NOTIMPL; }

    HRESULT LARYNTH_CALL GetVoicingSource(REFIID riid, IUnknown** ppSource) noexcept override;
    HRESULT LARYNTH_CALL GetPreEmphasis(double* pdValue) noexcept override;
    HRESULT LARYNTH_CALL GetOpenQuotient(double* pdValue) noexcept override;

    HRESULT LARYNTH_CALL GetLowF(double* pdValue) noexcept override;
    HRESULT LARYNTH_CALL GetLowP3(double* pdValue) noexcept override;
    HRESULT LARYNTH_CALL GetLowP4(double* pdValue) noexcept override;
    HRESULT LARYNTH_CALL GetLowG(double* pdValue) noexcept override;
    HRESULT LARYNTH_CALL GetHighF(double* pdValue) noexcept override;
    HRESULT LARYNTH_CALL GetHighP3(double* pdValue) noexcept override;
    HRESULT LARYNTH_CALL GetHighP4(double* pdValue) noexcept override;
    HRESULT LARYNTH_CALL GetHighG(double* pdValue) noexcept override;

    HRESULT LARYNTH_CALL SetVoicingSource(IUnknown* pSource) noexcept override;
    HRESULT LARYNTH_CALL SetPreEmphasis(double dValue) noexcept override;
    HRESULT LARYNTH_CALL SetOpenQuotient(double dValue) noexcept override;
    HRESULT LARYNTH_CALL SetLowFilter(double dF, double dG, double dP3, double dP4) noexcept override;
    HRESULT LARYNTH_CALL SetHighFilter(double dF, double dG, double dP3, double dP4) noexcept override;

  private:
    struct Shelf {
        double F = 0.0;   ///< Corner frequency, Hz.
        double G = 1.0;   ///< Linear gain; 1 is off.
        double P3 = 0.0;  ///< Shape.
        double P4 = 0.0;  ///< Shape.
    };

    ComPtr<IUnknown> source_;  ///< Its ITTSVoicingSource.
    double preEmphasis_ = 0.0;
    double openQuotient_ = 0.5;
    Shelf low_;
    Shelf high_;
};

}  // namespace larynth
