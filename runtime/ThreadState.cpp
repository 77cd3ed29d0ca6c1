// SPDX-License-Identifier: MIT
// What the runtime keeps for each thread.
#include <atomic>
#include <bit>
#include <cstdarg>
#include <cstdint>
#include <cstdio>

#include <larynth/ModuleRuntime.h>

#include "runtime/Failure.h"

namespace larynth {

namespace {

// A plain buffer: nothing to allocate when memory is out, nothing to destroy when the thread ends.
constinit thread_local char lastError[512] = "";

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

constexpr unsigned kUnknown = ~0U;
static_assert(kLarynthThreadNumbers == 64, "a bit for each number");
constinit std::atomic<std::uint64_t> numbersTaken = 1;  // 0 is nobody's own
// Reached without a call of the loader: this is part of every creation of an object.
[[gnu::tls_model("initial-exec")]] constinit thread_local unsigned ownNumber = kUnknown;

/// Takes the lowest free number; 0 when there is none.
unsigned TakeNumber() noexcept {
    std::uint64_t taken = numbersTaken.load();
    while (taken != ~std::uint64_t{0}) {
        if (numbersTaken.compare_exchange_weak(taken, taken | (taken + 1))) {
            return static_cast<unsigned>(std::countr_one(taken));
        }
    }
    return 0;
}

/// Gives the thread its number for as long as it lives.
struct NumberOfThread {
    NumberOfThread() noexcept { ownNumber = TakeNumber(); }
    ~NumberOfThread() {
        const unsigned number = ownNumber;
        ownNumber = 0;
        if (number != 0) numbersTaken.fetch_and(~(std::uint64_t{1} << number));
    }
};

[[gnu::noinline]] unsigned NumberNewThread() noexcept {
    static thread_local const NumberOfThread number;
    return ownNumber;
}

}  // namespace

HRESULT Fail(HRESULT code, const char* format, ...) noexcept {
    std::va_list values;
    va_start(values, format);
    std::vsnprintf(lastError, sizeof(lastError), format, values);
    va_end(values);
    return code;
}

}  // namespace larynth

LPCSTR LARYNTH_CALL LarynthLastError() { return larynth::lastError; }

unsigned LARYNTH_CALL LarynthFlushDenormals() {
    const unsigned mode = larynth::Mode();
    larynth::SetMode(mode | larynth::kFlush);
    return mode & larynth::kFlush;
}

// What else the mode holds, such as the direction of rounding, is left as it is now.
void LARYNTH_CALL LarynthSetArithmeticMode(unsigned nMode) {
    larynth::SetMode((larynth::Mode() & ~larynth::kFlush) | (nMode & larynth::kFlush));
}

unsigned LARYNTH_CALL LarynthThreadNumber() {
    const unsigned number = larynth::ownNumber;
    return number != larynth::kUnknown ? number : larynth::NumberNewThread();
}
