// SPDX-License-Identifier: MIT
/// The values of attributes in speech markup.
#pragma once

#include <optional>
#include <string_view>

#include "text/Sentences.h"

namespace larynth {

/// "250ms", "1.5s" in s, up to a minute; nothing for any other text.
std::optional<double> ParseDuration(std::string_view text);

/// The pause of a break by its strength, s; nothing for an unknown one.
std::optional<double> PauseOfStrength(std::string_view strength);

/// What the attribute `name` of a prosody element does to the prosody around it: labels, percents, and for
/// the pitch semitones and Hz, absolute ones against the speaker's mean; for the volume dB and the 0 to 100
/// of the older version. False for a value that is none of these; the prosody is unchanged then.
bool ApplyProsody(std::string_view name, std::string_view value, double meanPitch, Prosody& prosody);

/// The `interpret-as` of a say-as element; ordinary text for what is unknown.
SayAs ParseSayAs(std::string_view text);

}  // namespace larynth
