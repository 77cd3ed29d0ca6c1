// SPDX-License-Identifier: MIT
#include "engine/block/Kernels.h"

#include "engine/block/Loops.h"
#include "engine/block/NoiseLoops.h"
#include "engine/block/Sections.h"
#include "engine/block/TractWave.h"

namespace larynth::block {

namespace {

/// A loop, compiled for any processor.
template <auto kLoop>
struct Plain;
template <class Result, class... Arguments, Result (*kLoop)(Arguments...)>
struct Plain<kLoop> {
    static Result Run(Arguments... arguments) { return kLoop(arguments...); }
};

constexpr Kernels kPlain{
    .name = "plain",
    .noise = Plain<NoiseOneByOne>::Run,
    .pulses = Plain<Pulses>::Run,
    .movedPulses = Plain<MovedPulses>::Run,
    .flutter = Plain<MoveF0>::Run,
    .periods = Plain<Periods>::Run,
    .tracts = Plain<TractsOneByOne>::Run,
    .parallel = Plain<ParallelOneByOne>::Run,
    .finish = Plain<FinishSamples>::Run,
    .sections = Plain<DesignSections>::Run,
};

#ifdef __x86_64__

/// A loop, compiled with the instructions of AVX2.
template <auto kLoop>
struct Avx2;
template <class Result, class... Arguments, Result (*kLoop)(Arguments...)>
struct Avx2<kLoop> {
    [[gnu::target("avx2")]] static Result Run(Arguments... arguments) { return kLoop(arguments...); }
};

constexpr Kernels kAvx2{
    .name = "AVX2",
    .noise = Avx2<NoiseByEight>::Run,
    .pulses = Avx2<Pulses>::Run,
    .movedPulses = Avx2<MovedPulses>::Run,
    .flutter = Avx2<MoveF0>::Run,
    .periods = Avx2<Periods>::Run,
    .tracts = Avx2<TractsByWave>::Run,
    .parallel = Avx2<ParallelByFour>::Run,
    .finish = Avx2<FinishSamples>::Run,
    .sections = Avx2<DesignSections>::Run,
};

constexpr const Kernels* kAll[] = {&kPlain, &kAvx2};

std::size_t RunnableCount() noexcept { return __builtin_cpu_supports("avx2") ? 2 : 1; }

#else

constexpr const Kernels* kAll[] = {&kPlain};

std::size_t RunnableCount() noexcept { return 1; }

#endif

}  // namespace

std::span<const Kernels* const> AvailableKernels() noexcept { return std::span(kAll).first(RunnableCount()); }

}  // namespace larynth::block
