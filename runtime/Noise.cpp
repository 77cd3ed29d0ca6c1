// SPDX-License-Identifier: MIT
#include <atomic>
#include <sys/single_threaded.h>

#include <larynth/ModuleRuntime.h>

#include "engine/NoiseGenerator.h"

namespace {
// The one word of the process: a copy in each module would split the sequence.
alignas(std::atomic_ref<std::uint32_t>::required_alignment) constinit std::uint32_t state =
    larynth::kInitialNoiseState;
}  // namespace

void LARYNTH_CALL LarynthSeedNoise(unsigned nSeed) { larynth::NoiseGenerator(state).Seed(nSeed); }

std::uint32_t* LARYNTH_CALL LarynthNoiseState() { return &state; }

const char* LARYNTH_CALL LarynthSingleThreaded() { return &__libc_single_threaded; }
