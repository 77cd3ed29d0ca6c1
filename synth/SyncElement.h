// SPDX-License-Identifier: MIT
#pragma once

#include <larynth/Classes.h>
#include <larynth/ComPtr.h>
#include <larynth/Streams.h>

namespace larynth {

/// Adds a sync element to `output`: a sample block without samples that carries `object` (or none). The code
/// of the first call that fails.
inline HRESULT AddSyncElement(ITTSObjectList& output, IUnknown* object) {
    ComPtr<ITTSSyncHolder> element;
    HRESULT hr = element.Create(CLSID_TTSSoundData);
    if (SUCCEEDED(hr)) hr = element->SetObject(object);
    return SUCCEEDED(hr) ? output.Add(element.Get()) : hr;
}

}  // namespace larynth
