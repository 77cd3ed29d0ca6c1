// SPDX-License-Identifier: MIT
#include "python/Module.h"

PYBIND11_MODULE(_larynth, module) {
    larynth::BindErrors(module);
    larynth::BindFrames(module);
    larynth::BindFiles(module);
    larynth::BindSections(module);
    larynth::BindEditing(module);
    larynth::BindSynthesizing(module);
#if LARYNTH_SPEECH
    larynth::BindSpeaking(module);
#endif
}
