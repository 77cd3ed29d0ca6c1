// SPDX-License-Identifier: MIT
#include "synth/BlockFactory.h"

#include <larynth/Classes.h>

namespace larynth {

ComPtr<ITTSSoundData> BlockFactory::New() {
    ComPtr<ITTSSoundData> block;
    Zelvani::CheckResult(Create(block));
    if (!block) Zelvani::CheckResult(E_FAIL);
    return block;
}

HRESULT BlockFactory::Create(ComPtr<ITTSSoundData>& block) {
    if (LarynthClassObjectCount() != 0) return block.Create(CLSID_TTSSoundData);
    if (!kept_) {
        const HRESULT hr =
            CoGetClassObject(CLSID_TTSSoundData, CLSCTX_INPROC_SERVER, nullptr, kept_.Id(), kept_.PutVoid());
        if (FAILED(hr)) return hr;
        if (!kept_) return E_FAIL;
    }
    return kept_->CreateInstance(nullptr, block.Id(), block.PutVoid());
}

}  // namespace larynth
