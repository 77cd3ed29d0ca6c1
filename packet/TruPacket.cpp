// SPDX-License-Identifier: MIT
#include "packet/TruPacket.h"

#include <algorithm>
#include <bit>
#include <cstddef>

#include "packet/ResonatorEntry.h"

namespace larynth {

namespace {

constexpr int kFrameLen = 110;
constexpr double kClock = 22050.0;  // Hz
constexpr double kOpenQuotient = 0.5;

// No word carries AF. This is not the double nearest to 1.21504 but the next one above.
constexpr double kFrication = 1.2150400000000001;
static_assert(std::bit_cast<std::uint64_t>(kFrication) == 0x3FF370CDC8754F38);

constexpr double kScaleA = 0x1p-13;
constexpr double kScaleB = 0x1p-14;
constexpr double kScaleC = 0x1p-15;
constexpr double kScaleVoicing = 0x1p-15;
constexpr double kScaleAspiration = 6.103515625e-6;  // 2^-15 / 5

constexpr std::size_t kAspirationWord = 17, kBypassWord = 29, kVoicingWord = 35;
constexpr std::size_t kPeriodWords[] = {31, 32};  // the period is their sum
constexpr std::size_t kZeroWordB = 33, kZeroWordC = 34;

/// The words of one resonator.
struct PoleRow {
    int position;
    std::size_t wordA, wordB, wordC;
    double scaleA;
};

constexpr PoleRow kCascadeRows[] = {
    {0, 30, 13, 14, kScaleA}, {1, 37, 15, 16, 0x1p-17}, {2, 28, 11, 12, kScaleA},
    {3, 26, 9, 10, kScaleA},  {4, 24, 7, 8, kScaleA},   {5, 22, 5, 6, kScaleA},
};

// Poles that have words; they share B and C with the cascade's. The others become silent.
constexpr PoleRow kParallelRows[] = {
    {2, 27, 11, 12, kScaleA},
    {3, 25, 9, 10, kScaleA},
    {4, 23, 7, 8, kScaleA},
    {5, 21, 5, 6, kScaleA},
};

/// Reads words as numbers.
class Words {
  public:
    explicit Words(const TruWords& words) noexcept : words_(words) {}

    int Signed(std::size_t k) const noexcept { return static_cast<std::int16_t>(words_[k]); }

    /// Negated in 16 bits: −32768 stays what it is.
    int Negated(std::size_t k) const noexcept { return static_cast<std::int16_t>(-Signed(k)); }

    SectionCoefficients Pole(const PoleRow& row) const noexcept {
        return {Signed(row.wordA) * row.scaleA, Signed(row.wordB) * kScaleB, Negated(row.wordC) * kScaleC};
    }

    /// The nasal zero; its C is the only one that is not negated.
    SectionCoefficients Zero() const noexcept {
        return {1.0, Signed(kZeroWordB) * kScaleB, Signed(kZeroWordC) * kScaleC};
    }

    /// Hz; 0 for a period below one.
    double F0() const noexcept {
        const int period = Signed(kPeriodWords[0]) + Signed(kPeriodWords[1]);
        return period >= 1 ? kClock / period : 0.0;
    }

  private:
    const TruWords& words_;
};

/// Fills a packet from the words: resonators in coefficient form, amplitudes as fractions of full scale,
/// pitch as a period of a 22050 Hz clock. The packet's sample time is not changed.
void ConvertTruWords(const TruWords& words, KlattPacketData& packet) noexcept {
    const Words w(words);
    Frame& frame = packet.frame;
    frame.length = kFrameLen;
    frame.F0 = w.F0();
    frame.OQ = kOpenQuotient;
    frame.FL = frame.FLT = frame.DI = frame.TL = 0.0;
    frame.AV = w.Signed(kVoicingWord) * kScaleVoicing;
    frame.AH = w.Signed(kAspirationWord) * kScaleAspiration;
    frame.AF = kFrication;
    frame.AB = w.Signed(kBypassWord) * kScaleA;

    const auto set = [&](const ResonatorGroup& group, int position, const SectionCoefficients& abc) {
        ResonatorEntry(packet, group, position).SetABC(abc);
    };
    set(kCascadeZeros, 0, w.Zero());
    for (const PoleRow& row : kCascadeRows) set(kCascadePoles, row.position, w.Pole(row));
    for (int i = 0; i < kParallelPoles.count; ++i) set(kParallelPoles, i, {});
    for (const PoleRow& row : kParallelRows) set(kParallelPoles, row.position, w.Pole(row));
}

}  // namespace

HRESULT TruFace::SetTruPacket(unsigned short* pnPacket, LONG bConvert) noexcept {
    if (pnPacket == nullptr) return E_POINTER;
    TruWords& words = Data().truWords.emplace();
    std::copy_n(pnPacket, words.size(), words.begin());
    if (bConvert != 0) static_cast<void>(ConvertFromTru());
    return S_OK;
}

HRESULT TruFace::GetTruPacket(unsigned short* pnPacket, LONG bConvert) noexcept {
    if (bConvert != 0) static_cast<void>(ConvertToTru());
    const std::optional<TruWords>& words = Data().truWords;
    if (!words) return E_FAIL;
    if (!CanWriteBytes(pnPacket, sizeof(TruWords))) return E_POINTER;
    std::copy(words->begin(), words->end(), pnPacket);
    return S_OK;
}

HRESULT TruFace::ConvertFromTru() noexcept {
    const std::optional<TruWords>& words = Data().truWords;
    if (!words) return E_FAIL;
    ConvertTruWords(*words, Data());
    return S_OK;
}

}  // namespace larynth
