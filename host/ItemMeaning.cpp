// SPDX-License-Identifier: MIT
#include "host/ItemMeaning.h"

#include <array>

namespace larynth {
namespace {

// By ID, which for the scalar items is also their index. Ranges and units as in Klatt and Klatt 1990;
// amplitudes and gains are linear factors here, not decibels.
constexpr std::array kScalars{
    ItemMeaning{"Hz", "fundamental frequency; 0 is unvoiced"},
    ItemMeaning{"factor", "open quotient: open phase as a fraction of the period"},
    ItemMeaning{"factor", "flutter depth as a fraction of F0"},
    ItemMeaning{"10us", "flutter time step of one sample; 100000 / sample frequency is real time"},
    ItemMeaning{"factor", "diplophonia, 0 (none) to 1"},
    ItemMeaning{"dB", "spectral tilt at 3 kHz, 0 to 41; used truncated"},
    ItemMeaning{"factor", "amplitude of voicing"},
    ItemMeaning{"factor", "amplitude of aspiration"},
    ItemMeaning{"factor", "amplitude of frication"},
    ItemMeaning{"factor", "gain of the parallel branch's bypass"},
};

// A resonator has three items in this order, in each group.
constexpr int kValuesOfResonator = 3;
using ResonatorMeanings = std::array<ItemMeaning, kValuesOfResonator>;

constexpr ResonatorMeanings kNasalPole{
    ItemMeaning{"Hz", "frequency of the nasal pole"},
    ItemMeaning{"Hz", "bandwidth of the nasal pole"},
    ItemMeaning{"factor", "gain of the nasal pole"},
};
constexpr ResonatorMeanings kFormant{
    ItemMeaning{"Hz", "frequency of a cascade formant"},
    ItemMeaning{"Hz", "bandwidth of a cascade formant"},
    ItemMeaning{"factor", "gain of a cascade formant"},
};
constexpr ResonatorMeanings kNasalZero{
    ItemMeaning{"Hz", "frequency of the nasal zero"},
    ItemMeaning{"Hz", "bandwidth of the nasal zero"},
    ItemMeaning{"factor", "gain of the nasal zero"},
};
constexpr ResonatorMeanings kParallel{
    ItemMeaning{"Hz", "frequency of a parallel resonator"},
    ItemMeaning{"Hz", "bandwidth of a parallel resonator"},
    ItemMeaning{"factor", "gain of a parallel resonator"},
};

const ResonatorMeanings* MeaningsOfUnit(int unit, int position) {
    switch (unit) {
        case 1:
            return position == 0 ? &kNasalPole : &kFormant;
        case 2:
            return &kNasalZero;
        case 3:
            return &kParallel;
        default:
            return nullptr;
    }
}

}  // namespace

std::optional<ItemMeaning> MeaningOfItem(int id) {
    if (id >= 0 && id < static_cast<int>(kScalars.size())) return kScalars[static_cast<std::size_t>(id)];
    // An ID holds the group above bit 10 and the offset in the group below.
    const int offset = id & 0x3FF;
    const ResonatorMeanings* meanings = MeaningsOfUnit(id >> 10, offset / kValuesOfResonator);
    if (meanings == nullptr) return std::nullopt;
    return (*meanings)[static_cast<std::size_t>(offset % kValuesOfResonator)];
}

}  // namespace larynth
