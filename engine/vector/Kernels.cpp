// SPDX-License-Identifier: MIT
#include "engine/vector/Kernels.h"

#include "engine/vector/FinishLoop.h"
#include "engine/vector/Loops.h"
#include "engine/vector/NoiseLoop.h"
#include "engine/vector/Sections.h"
#include "engine/vector/TractWave.h"

namespace larynth::vector {

namespace {

/// All loops, each compiled by a template of an instruction set.
template <template <auto> class Compiled, class Four>
constexpr Kernels SetOf(const char* name) {
    return {
        .name = name,
        .noise = Compiled<DrawNoise>::Run,
        .pulses = Compiled<Pulses>::Run,
        .movedPulses = Compiled<MovedPulses>::Run,
        .flutter = Compiled<MoveF0>::Run,
        .periods = Compiled<Periods>::Run,
        .tracts = Compiled<RunTracts<Four>>::Run,
        .parallel = Compiled<AddParallel<Four>>::Run,
        .finish = Compiled<FinishSamples>::Run,
        .sections = Compiled<DesignSections>::Run,
    };
}

/// A loop, compiled for any processor that the build is for.
template <auto kLoop>
struct Baseline;
template <class Result, class... Arguments, Result (*kLoop)(Arguments...)>
struct Baseline<kLoop> {
    static Result Run(Arguments... arguments) { return kLoop(arguments...); }
};

constexpr Kernels kBaseline = SetOf<Baseline, DoublePairs>("baseline");

#ifdef __x86_64__

/// A loop, compiled with the instructions of AVX2.
template <auto kLoop>
struct Avx2;
template <class Result, class... Arguments, Result (*kLoop)(Arguments...)>
struct Avx2<kLoop> {
    [[gnu::target("avx2")]] static Result Run(Arguments... arguments) { return kLoop(arguments...); }
};

/// A loop, compiled with AVX-512: twice the registers, and one instruction for a shift of four lanes. What a
/// compiler makes vectors of by itself may take 512 bits.
template <auto kLoop>
struct Avx512;
template <class Result, class... Arguments, Result (*kLoop)(Arguments...)>
struct Avx512<kLoop> {
    [[gnu::target("avx2,avx512f,avx512vl,avx512dq,avx512bw")]] static Result Run(Arguments... arguments) {
        return kLoop(arguments...);
    }
};

constexpr Kernels kAvx2 = SetOf<Avx2, Double4>("AVX2");
constexpr Kernels kAvx512 = SetOf<Avx512, Double4>("AVX-512VL");

constexpr const Kernels* kAll[] = {&kBaseline, &kAvx2, &kAvx512};

std::size_t RunnableCount() noexcept {
    if (!__builtin_cpu_supports("avx2")) return 1;
    const bool avx512 = __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512vl") &&
                        __builtin_cpu_supports("avx512dq") && __builtin_cpu_supports("avx512bw");
    return avx512 ? 3 : 2;
}

#else

constexpr const Kernels* kAll[] = {&kBaseline};

std::size_t RunnableCount() noexcept { return 1; }

#endif

}  // namespace

std::span<const Kernels* const> AvailableKernels() noexcept { return std::span(kAll).first(RunnableCount()); }

}  // namespace larynth::vector
