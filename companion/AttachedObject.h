// SPDX-License-Identifier: MIT
#pragma once

#include <larynth/ComPtr.h>
#include <larynth/Streams.h>

namespace larynth {

/// One attached object, or none: the face that sample blocks and stream holders share.
class AttachedObject : public ITTSSyncHolder {
  public:
    using Interface = ITTSSyncHolder;

    HRESULT LARYNTH_CALL SetObject(IUnknown* pObject) noexcept override;
    HRESULT LARYNTH_CALL GetObject(REFIID riid, IUnknown** ppObject) noexcept override;

  protected:
    AttachedObject() = default;
    ~AttachedObject() = default;

  private:
    ComPtr<IUnknown> object_;
};

}  // namespace larynth
