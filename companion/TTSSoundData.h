// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include <larynth/ModuleRuntime.h>

#include "com/ComObject.h"
#include "companion/AttachedObject.h"

namespace larynth {

/// A block of 16-bit samples with an attached object. Without samples it serves as a marker in an output
/// list.
class TTSSoundData final : public ComObject<ITTSSoundData, AttachedObject, ILarynthSampleRoom> {
  public:
    using ComObject::ComObject;

    HRESULT LARYNTH_CALL SetFormat(int nFormat) noexcept override;
    HRESULT LARYNTH_CALL GetFormat(int* pnFormat) noexcept override;
    HRESULT LARYNTH_CALL GetSamples(const short** ppSamples, int* pnCount) noexcept override;
    HRESULT LARYNTH_CALL AppendSamples(int nFormat, short* pSamples, int nCount) noexcept override;

    HRESULT LARYNTH_CALL Reserve(int nCount) noexcept override;

  private:
    int Room() const noexcept;  // for so many samples an int can count

    int format_ = 0;
    std::vector<short> samples_;
};

}  // namespace larynth
