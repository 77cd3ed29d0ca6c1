// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "com/OutPointer.h"
#include "engine/Frame.h"
#include "packet/ItemTable.h"

namespace larynth {

/// One frame as 41 words; each is read as a signed integer in two's complement.
using TruWords = std::array<std::uint16_t, 41>;

/// The stored values of a packet. All sizes are fixed, so that a packet is one block of memory and an item is
/// found by arithmetic.
class KlattPacketData {
  public:
    /// Bits of `validity`: which form of the cascade tract was written last. A conversion adds the filter's.
    static constexpr int kResonatorDataValid = 1;
    static constexpr int kFilterDataValid = 2;

    KlattPacketData() noexcept;
    KlattPacketData(const KlattPacketData&) = delete;
    KlattPacketData& operator=(const KlattPacketData&) = delete;
    virtual ~KlattPacketData() = default;

    /// Takes over all values.
    void CopyFrom(const KlattPacketData& source) noexcept;

    /// Storage of an item, as it stands; the index must be one.
    double& Item(int index) noexcept;
    double& Scalar(ScalarItem item) noexcept;

    /// The frame with the coefficients of these sections up to date; the others stand as they were.
    const Frame& Converted(Frame::Sections sections) noexcept;

    /// Brings the coefficients of these sections (a bit for each place) up to date.
    void UpdateABC(unsigned places) noexcept;

    /// These sections' coefficients, or frequencies, were written and are the form that counts.
    void WrittenABC(unsigned places) noexcept;
    void WrittenFB(unsigned places) noexcept;

    /// Whether this section's frequencies were out of date; from now on they count as up to date.
    bool TakeStaleFB(unsigned place) noexcept;

    Frame frame{};
    FrequencyRows frequencies{};
    std::array<int, kEntryCount> userStates{};
    int validity = kResonatorDataValid;
    std::optional<TruWords> truWords;  ///< The 16-bit packet, once one was set.

  private:
    unsigned staleABC_ = Frame::kAllSections, staleFB_ = 0;  // a bit for each place
};

/// Base of the packet's faces: each implements one interface over the values that all of them share. The
/// packet lists its faces and supplies the data once for all.
template <class PacketInterface>
class PacketFace : public PacketInterface {
  public:
    using Interface = PacketInterface;

  protected:
    virtual KlattPacketData& Data() noexcept = 0;

    HRESULT Store(ScalarItem item, double dValue) noexcept {
        Data().Scalar(item) = dValue;
        return S_OK;
    }
    HRESULT Read(ScalarItem item, double* pdValue) noexcept { return Put(pdValue, Data().Scalar(item)); }
    static HRESULT ReadID(ScalarItem item, int* pnID) noexcept { return Put(pnID, static_cast<int>(item)); }
};

inline double& KlattPacketData::Scalar(ScalarItem item) noexcept {
    constexpr std::array<double Frame::*, kScalarCount> kPlaces = {
        &Frame::F0, &Frame::OQ, &Frame::FL, &Frame::FLT, &Frame::DI,
        &Frame::TL, &Frame::AV, &Frame::AH, &Frame::AF,  &Frame::AB};  // in the order of ScalarItem
    return frame.*kPlaces[static_cast<std::size_t>(item)];
}

inline void KlattPacketData::WrittenABC(unsigned places) noexcept {
    staleABC_ &= ~places;
    staleFB_ |= places;
    validity = kResonatorDataValid;
}

inline void KlattPacketData::WrittenFB(unsigned places) noexcept {
    staleFB_ &= ~places;
    staleABC_ |= places;
    validity = kResonatorDataValid;
}

inline bool KlattPacketData::TakeStaleFB(unsigned place) noexcept {
    const bool stale = (staleFB_ & place) != 0;
    staleFB_ &= ~place;
    return stale;
}

}  // namespace larynth
