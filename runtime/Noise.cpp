// SPDX-License-Identifier: MIT
#include <sys/single_threaded.h>

#include <larynth/ModuleRuntime.h>

#include "engine/NoiseGenerator.h"

namespace larynth {
namespace {

NoiseLease& LeaseOfThread() noexcept {
    [[gnu::tls_model("initial-exec")]] static constinit thread_local NoiseLease lease;
    return lease;
}

// The one of the process: a copy in each module would split the sequence. Threads that are made without the C
// library are not seen by its byte.
constinit NoiseGenerator generator(__libc_single_threaded, LeaseOfThread);

}  // namespace
}  // namespace larynth

void LARYNTH_CALL LarynthSeedNoise(unsigned nSeed) { larynth::generator.Seed(nSeed); }

larynth::NoiseGenerator* LARYNTH_CALL LarynthNoise() { return &larynth::generator; }
