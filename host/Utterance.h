// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <variant>

#include "host/FrameTable.h"
#include "host/PacketFile.h"

namespace larynth {

/// What an input file holds, in one of the forms that the command reads.
using Utterance = std::variant<FrameTable, PacketFile>;

/// Hz.
inline double SampleFreqOf(const Utterance& utterance) {
    return std::visit([](const auto& form) { return form.sampleFreq; }, utterance);
}

inline std::size_t CountOf(const FrameTable& table) { return table.frames.size(); }
inline std::size_t CountOf(const PacketFile& file) { return file.packets.size(); }

inline std::size_t FrameCountOf(const Utterance& utterance) {
    return std::visit([](const auto& form) { return CountOf(form); }, utterance);
}

}  // namespace larynth
