// SPDX-License-Identifier: MIT
// A host that knows a class identifier and nothing else: no module is linked or loaded by it.
#include <larynth/Larynth.h>

int main() {
    ComPtr<IACLIOProcess> synthesizer;
    if (FAILED(synthesizer.Create(CLSID_Larynth))) return 1;
    // Creates its parts and the first block through the store as well.
    return synthesizer->Initialize(nullptr, GUID_NULL) == S_OK ? 0 : 2;
}
