// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <cstdint>

namespace larynth {

/// The state before the first draw of a process that never seeds.
inline constexpr std::uint32_t kInitialNoiseState = 1;

/// The largest value of a draw; the smallest is 0.
inline constexpr int kMaxNoiseValue = 32767;

/// The state after one more draw: a linear congruential generator modulo 2^32.
constexpr std::uint32_t NextNoiseState(std::uint32_t state) { return 214013U * state + 2531011U; }

/// The value of the draw that led to `state`: its bits 16 to 30, 0 … kMaxNoiseValue.
/// `Word` is std::uint32_t or a vector of them.
template <class Word>
[[gnu::always_inline]] constexpr Word NoiseValue(const Word& state) {
    return (state >> 16) & 0x7FFFU;
}

/// The state after `count` more draws, in O(log count) steps: the map s → m·s + c composed with itself by
/// repeated squaring (Brown 1994, random number generation with arbitrary strides).
constexpr std::uint32_t JumpNoiseState(std::uint32_t state, std::uint64_t count) {
    std::uint32_t m = 214013U;
    std::uint32_t c = 2531011U;
    for (; count != 0; count >>= 1) {
        if ((count & 1U) != 0) state = m * state + c;
        c = (m + 1U) * c;
        m = m * m;
    }
    return state;
}

/// A view on a generator whose single word of state lives elsewhere, so that all sources of a process share
/// one sequence. Draws of several threads interleave; none is lost and none is given twice.
class NoiseGenerator {
  public:
    /// `word` must outlive the view; it is touched through generators only. Where the byte `alone` is not 0
    /// the process has a single thread, and a draw needs no locked operation.
    explicit NoiseGenerator(std::uint32_t& word, const char& alone = kPerhapsNotAlone)
        : word_(&word), alone_(&alone) {}

    /// Puts the generator into `state`.
    void Seed(std::uint32_t state) { std::atomic_ref(*word_).store(state, std::memory_order_relaxed); }

    /// The next value, 0 … kMaxNoiseValue.
    int Draw() { return static_cast<int>(NoiseValue(NextNoiseState(Claim(1)))); }

    /// Takes the next `count` draws at once and returns the state before the first of them.
    std::uint32_t Claim(std::uint64_t count);

  private:
    static constexpr char kPerhapsNotAlone = 0;

    std::uint32_t* word_;
    const char* alone_;
};

inline std::uint32_t NoiseGenerator::Claim(std::uint64_t count) {
    const std::atomic_ref<std::uint32_t> word(*word_);
    std::uint32_t before = word.load(std::memory_order_relaxed);
    if (*alone_ != 0) {
        word.store(JumpNoiseState(before, count), std::memory_order_relaxed);
        return before;
    }
    while (!word.compare_exchange_weak(before, JumpNoiseState(before, count), std::memory_order_relaxed)) {
    }
    return before;
}

}  // namespace larynth
