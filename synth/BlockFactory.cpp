// SPDX-License-Identifier: MIT
#include "synth/BlockFactory.h"

#include <larynth/Classes.h>

namespace larynth {

using Zelvani::CheckResult;

ComPtr<ITTSSoundData> BlockFactory::New() {
    if (!factory_ || changes_ != LarynthClassObjectChanges()) LookUp();
    ComPtr<ITTSSoundData> block;
    CheckResult(factory_->CreateInstance(nullptr, block.Id(), block.PutVoid()));
    if (!block) CheckResult(E_FAIL);
    return block;
}

void BlockFactory::LookUp() {
    changes_ = LarynthClassObjectChanges();  // before the look-up, which may see a later state
    CheckResult(CoGetClassObject(CLSID_TTSSoundData, CLSCTX_INPROC_SERVER, nullptr, factory_.Id(),
                                 factory_.PutVoid()));
    if (!factory_) CheckResult(E_FAIL);
}

}  // namespace larynth
