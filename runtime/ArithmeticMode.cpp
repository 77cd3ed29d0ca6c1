// SPDX-License-Identifier: MIT
#include <cstdint>

#include <larynth/Runtime.h>

namespace larynth {

namespace {

#if defined(__x86_64__)

constexpr unsigned kFlush = 0x8040;  // MXCSR: flush-to-zero, denormals-are-zero

unsigned Mode() noexcept { return __builtin_ia32_stmxcsr(); }
void SetMode(unsigned mode) noexcept { __builtin_ia32_ldmxcsr(mode); }

#elif defined(__aarch64__)

constexpr unsigned kFlush = 1U << 24;  // FPCR: flush-to-zero, of inputs as well

unsigned Mode() noexcept {
    std::uint64_t mode;
    asm volatile("mrs %0, fpcr" : "=r"(mode));
    return static_cast<unsigned>(mode);
}
void SetMode(unsigned mode) noexcept { asm volatile("msr fpcr, %0" : : "r"(std::uint64_t{mode})); }

#else

constexpr unsigned kFlush = 0;

unsigned Mode() noexcept { return 0; }
void SetMode(unsigned) noexcept {}

#endif

}  // namespace

}  // namespace larynth

unsigned LARYNTH_CALL LarynthFlushDenormals() {
    const unsigned mode = larynth::Mode();
    larynth::SetMode(mode | larynth::kFlush);
    return mode & larynth::kFlush;
}

// What else the mode holds, such as the direction of rounding, is left as it is now.
void LARYNTH_CALL LarynthSetArithmeticMode(unsigned nMode) {
    larynth::SetMode((larynth::Mode() & ~larynth::kFlush) | (nMode & larynth::kFlush));
}
