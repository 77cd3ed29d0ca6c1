// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <cstdint>
#include <type_traits>
#include <utility>

namespace larynth {

/// The state before the first draw of a process that never seeds.
inline constexpr std::uint32_t kInitialNoiseState = 1;

/// The state after one more draw: a linear congruential generator modulo 2^32.
constexpr std::uint32_t NextNoiseState(std::uint32_t state) { return 214013U * state + 2531011U; }

/// The value of the draw that led to `state`: its bits 16 to 30, 0 to 32767.
/// `Word` is std::uint32_t or a vector of them.
template <class Word>
[[gnu::always_inline]] constexpr Word NoiseValue(const Word& state) {
    return (state >> 16) & 0x7FFFU;
}

/// The state after `count` more draws, in O(log count) steps: the map s → m·s + c composed with itself by
/// repeated squaring (Brown 1994, random number generation with arbitrary strides). The lower half of a wider
/// word goes the same way, as nothing above it reaches down.
template <class Word = std::uint32_t>
constexpr Word JumpNoiseState(std::type_identity_t<Word> state, std::uint64_t count) {
    Word m = 214013U;
    Word c = 2531011U;
    for (; count != 0; count >>= 1) {
        if ((count & 1U) != 0) state = m * state + c;
        c = (m + 1U) * c;
        m = m * m;
    }
    return state;
}

/// Draws that a thread has claimed ahead of using them, so that threads meet once in many draws. Plain data
/// without a destructor: nothing is to be done when a thread ends, and what is left then is never drawn.
struct NoiseLease {
    static constexpr std::uint32_t kDraws = 64;

    bool open = false;           ///< The thread's draws come from here.
    std::uint32_t left = 0;      ///< Draws.
    std::uint64_t word = 0;      ///< Before the next of them.
    std::uint32_t seedings = 0;  ///< The generator's when they were claimed, or before.
};

/// One sequence for all who draw. Draws of several threads interleave; none is given twice. A thread that
/// draws alone gets them in the order of the sequence, with a lease or without.
///
/// The state is the lower half of a word whose upper half differs from one seeding to the next: a lease can
/// give back its rest by exchanging the word that it left for the one before, and does not mistake a new
/// sequence for its own.
class NoiseGenerator {
  public:
    /// The calling thread's lease, which lives as long as the thread.
    using LeaseOfThread = NoiseLease& (*)() noexcept;

    /// Without leases and for any number of threads.
    constexpr NoiseGenerator() = default;
    /// Where the byte `alone` is not 0 the process has a single thread, and a draw needs no locked operation.
    constexpr NoiseGenerator(const char& alone, LeaseOfThread lease) : alone_(&alone), lease_(lease) {}

    /// Puts the generator into `state`, for the next draw of every thread.
    void Seed(std::uint32_t state);

    /// The state behind all draws and leases.
    std::uint32_t State() const { return StateIn(word_.load(std::memory_order_relaxed)); }

    /// True while the process is known to have a single thread.
    bool IsAlone() const { return *alone_ != 0; }

    /// The next value, 0 to 32767.
    int Draw();

    /// Takes the next `count` draws at once and returns the state before the first of them.
    std::uint32_t Claim(std::uint64_t count);

  private:
    friend class LeasedDraws;

    static constexpr char kPerhapsNotAlone = 0;
    static constexpr std::uint32_t StateIn(std::uint64_t word) { return static_cast<std::uint32_t>(word); }
    static constexpr std::uint64_t Jump(std::uint64_t word, std::uint64_t count) {
        return JumpNoiseState<std::uint64_t>(word, count);
    }

    /// The word before `count` draws that are taken from it.
    std::uint64_t Take(std::uint64_t count);
    int DrawFrom(NoiseLease& lease);
    /// Gives back what is left. Where others have drawn meanwhile it stays, and is drawn when the thread has
    /// an open lease again.
    void GiveBack(NoiseLease& lease);

    std::atomic<std::uint64_t> word_ = kInitialNoiseState;
    std::atomic<std::uint32_t> seedings_ = 0;
    const char* alone_ = &kPerhapsNotAlone;
    LeaseOfThread lease_ = nullptr;
};

/// While it lives, the calling thread draws from its lease of a generator that has leases. Nested ones are as
/// good as the outermost alone.
class LeasedDraws {
  public:
    explicit LeasedDraws(NoiseGenerator& generator)
        : generator_(generator), lease_(generator.lease_()), openBefore_(std::exchange(lease_.open, true)) {}
    ~LeasedDraws() {
        generator_.GiveBack(lease_);
        lease_.open = openBefore_;
    }
    LeasedDraws(const LeasedDraws&) = delete;
    LeasedDraws& operator=(const LeasedDraws&) = delete;

  private:
    NoiseGenerator& generator_;
    NoiseLease& lease_;
    bool openBefore_;
};

inline void NoiseGenerator::Seed(std::uint32_t state) {
    // Counted last: whoever sees the count sees the state, and a lease that took from it too early gives
    // back.
    const std::uint64_t upper = seedings_.load(std::memory_order_relaxed) + 1;
    word_.store(upper << 32 | state, std::memory_order_relaxed);
    seedings_.fetch_add(1, std::memory_order_release);
}

inline int NoiseGenerator::Draw() {
    if (!IsAlone() && lease_ != nullptr) {
        if (NoiseLease& lease = lease_(); lease.open) return DrawFrom(lease);
    }
    return static_cast<int>(NoiseValue(NextNoiseState(StateIn(Take(1)))));
}

inline std::uint32_t NoiseGenerator::Claim(std::uint64_t count) {
    if (!IsAlone() && lease_ != nullptr) {
        if (NoiseLease& lease = lease_(); lease.open) GiveBack(lease);
    }
    return StateIn(Take(count));
}

inline std::uint64_t NoiseGenerator::Take(std::uint64_t count) {
    std::uint64_t before = word_.load(std::memory_order_relaxed);
    if (IsAlone()) {
        word_.store(Jump(before, count), std::memory_order_relaxed);
        return before;
    }
    while (!word_.compare_exchange_weak(before, Jump(before, count), std::memory_order_relaxed)) {
    }
    return before;
}

inline int NoiseGenerator::DrawFrom(NoiseLease& lease) {
    const std::uint32_t seedings = seedings_.load(std::memory_order_acquire);
    if (lease.left == 0 || lease.seedings != seedings) {
        GiveBack(lease);
        lease.word = Take(NoiseLease::kDraws);
        lease.left = NoiseLease::kDraws;
        lease.seedings = seedings;
    }
    --lease.left;
    lease.word = Jump(lease.word, 1);
    return static_cast<int>(NoiseValue(StateIn(lease.word)));
}

inline void NoiseGenerator::GiveBack(NoiseLease& lease) {
    if (lease.left == 0) return;
    std::uint64_t end = Jump(lease.word, lease.left);
    if (word_.compare_exchange_strong(end, lease.word, std::memory_order_relaxed)) lease.left = 0;
}

}  // namespace larynth
