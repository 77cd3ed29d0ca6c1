// SPDX-License-Identifier: MIT
#include "bench/StraightRendering.h"

#include <algorithm>
#include <optional>

#include "com/FlushDenormals.h"

namespace larynth::bench {

StraightRendering::StraightRendering(const Case& one, bool flushing)
    : case_(one), flushing_(flushing), kept_(ConvertSections(one.frames.front())) {
    std::size_t longest = 0;
    for (const auto* frames : {&one.lead, &one.frames}) {
        for (const PlainFrame& frame : *frames)
            longest = std::max(longest, static_cast<std::size_t>(frame.length));
    }
    block_.resize(longest);
}

void StraightRendering::Prepare(Samples* samples) {
    std::optional<FlushDenormals> mode;
    if (flushing_) mode.emplace();
    for (const PlainFrame& frame : case_.lead) RenderFrame(frame, ConvertSections(frame), samples);
}

void StraightRendering::Render(std::size_t count, Samples* samples) {
    std::optional<FlushDenormals> mode;
    if (flushing_) mode.emplace();
    for (std::size_t i = 0; i < count; ++i) {
        const PlainFrame& frame = case_.Frame(i);
        if (case_.feeding == Feeding::Fresh) {
            RenderFrame(frame, ConvertSections(frame), samples);
        } else {
            RenderFrame(frame, kept_, samples);
        }
    }
}

void StraightRendering::RenderFrame(const PlainFrame& frame, const Sections& sections, Samples* samples) {
    loop_.Render(frame, sections, block_.data());
    if (samples != nullptr) samples->insert(samples->end(), block_.begin(), block_.begin() + frame.length);
}

}  // namespace larynth::bench
