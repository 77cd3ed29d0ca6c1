// SPDX-License-Identifier: MIT
/// The parts of the extension module `larynth._larynth`. It takes arrays and plain values that the package's
/// modules in Python have looked at, and does with them what the face does.
#pragma once

#include <pybind11/pybind11.h>

namespace larynth {

// Each adds its functions and classes.
void BindEditing(pybind11::module_& module);
void BindErrors(pybind11::module_& module);
void BindFiles(pybind11::module_& module);
void BindFrames(pybind11::module_& module);
void BindSections(pybind11::module_& module);
void BindSpeaking(pybind11::module_& module);
void BindSynthesizing(pybind11::module_& module);

}  // namespace larynth
