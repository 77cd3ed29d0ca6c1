// SPDX-License-Identifier: MIT
#include <larynth/ModuleRuntime.h>

#include "engine/NoiseGenerator.h"

#if __has_include(<sys/single_threaded.h>)
#include <sys/single_threaded.h>
#endif

namespace larynth {
namespace {

#if __has_include(<sys/single_threaded.h>)
// Threads that are made without the C library are not seen by its byte.
constexpr const char& kAlone = __libc_single_threaded;
#else
constexpr char kAlone = 0;  // nobody tells
#endif

NoiseLease& LeaseOfThread() noexcept {
    [[gnu::tls_model("initial-exec")]] static constinit thread_local NoiseLease lease;
    return lease;
}

// The one of the process: a copy in each module would split the sequence.
constinit NoiseGenerator generator(kAlone, LeaseOfThread);

}  // namespace
}  // namespace larynth

void LARYNTH_CALL LarynthSeedNoise(unsigned nSeed) { larynth::generator.Seed(nSeed); }

larynth::NoiseGenerator* LARYNTH_CALL LarynthNoise() { return &larynth::generator; }
