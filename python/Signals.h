// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include <larynth/Speech.h>

#include "python/Interrupts.h"

namespace larynth {

std::vector<std::string> SignalNames(const Synthesizer& synthesizer);

/// Renders the frames and gives the signals inside, a row for each name, one behind the other. InputError,
/// which names frame and item, as Synthesizer::Render.
std::vector<double> RenderSignals(Synthesizer& synthesizer, TractForm tract,
                                  const std::vector<KlattFrame>& frames, Interrupts& interrupts);

}  // namespace larynth
