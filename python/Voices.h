// SPDX-License-Identifier: MIT
/// A voice between the two languages: as plain numbers, which the package's class Voice takes and gives.
#pragma once

#include <array>
#include <optional>
#include <tuple>

#include <larynth/Speech.h>

namespace larynth {

/// F, G, P3 and P4.
using PlainShelf = std::array<double, 4>;
/// Pre-emphasis, open quotient, low shelf, high shelf, waveform.
using PlainVoice = std::tuple<double, double, PlainShelf, PlainShelf, Waveform>;

inline std::optional<VoiceSettings> SettingsOf(const std::optional<PlainVoice>& plain) {
    if (!plain) return std::nullopt;
    const auto& [preEmphasis, openQuotient, low, high, wave] = *plain;
    const auto shelf = [](const PlainShelf& p) { return Shelf{p[0], p[1], p[2], p[3]}; };
    return VoiceSettings{preEmphasis, openQuotient, shelf(low), shelf(high), wave};
}

inline PlainVoice PlainOf(const VoiceSettings& voice) {
    const auto shelf = [](const Shelf& s) { return PlainShelf{s.F, s.G, s.P3, s.P4}; };
    return {voice.preEmphasis, voice.openQuotient, shelf(voice.lowShelf), shelf(voice.highShelf), voice.wave};
}

}  // namespace larynth
