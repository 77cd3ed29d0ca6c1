// SPDX-License-Identifier: MIT
#pragma once

#include "speech/SpokenPhone.h"

namespace larynth {

/// Words a minute, between the first and the last sound of a sentence, of the front end's own durations.
inline constexpr double kUsualRate = 258.0;

/// Puts the phones, whose durations stand in `end`, one behind the other at `tempo` times the usual rate.
///
/// When speech is faster, vowels give most and closures and bursts little (Gay 1981); when it is slower, what
/// can be held takes most: vowels and frication, but not reduced vowels, glides and closures. Each duration
/// goes with a power of the tempo that belongs to the phone's class, and none goes below the table's
/// shortest. The speech between the pauses is as long as the tempo asks; where all phones are as short as
/// they can be it stays longer.
void PutInTime(std::span<SpokenPhone> phones, double tempo);

}  // namespace larynth
