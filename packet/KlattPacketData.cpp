// SPDX-License-Identifier: MIT
#include "packet/KlattPacketData.h"

#include "engine/vector/Kernels.h"

namespace larynth {

namespace {

/// A bit for each place of a group.
constexpr unsigned PlacesOf(const ResonatorGroup& group) noexcept {
    return ((1U << group.count) - 1U) << group.firstEntry;
}

constexpr unsigned PlacesOf(Frame::Sections sections) noexcept {
    constexpr unsigned kCascade = PlacesOf(kCascadePoles) | PlacesOf(kCascadeZeros);
    switch (sections) {
        case Frame::Sections::Cascade:
            return kCascade;
        case Frame::Sections::Parallel:
            return PlacesOf(kParallelPoles);
        case Frame::Sections::Both:
            return Frame::kAllSections;
        case Frame::Sections::None:
            break;
    }
    return 0;
}

}  // namespace

KlattPacketData::KlattPacketData() noexcept {
    frame.sampleTime = 1.0 / 11025.0;
    for (int index = 0; index < kItemCount; ++index) Item(index) = larynth::Item(index).initial;
}

void KlattPacketData::CopyFrom(const KlattPacketData& source) noexcept {
    frame = source.frame;
    frequencies = source.frequencies;
    userStates = source.userStates;
    validity = source.validity;
    staleABC_ = source.staleABC_;
    staleFB_ = source.staleFB_;
    truWords = source.truWords;
}

double& KlattPacketData::Item(int index) noexcept {
    if (index < kScalarCount) return Scalar(static_cast<ScalarItem>(index));
    constexpr SectionRow FrequencyRows::*kRows[kValuesPerEntry] = {&FrequencyRows::F, &FrequencyRows::BW,
                                                                   &FrequencyRows::G};
    const int offset = index - kScalarCount;
    return (frequencies.*kRows[offset % kValuesPerEntry])[static_cast<std::size_t>(offset / kValuesPerEntry)];
}

const Frame& KlattPacketData::Converted(Frame::Sections sections) noexcept {
    UpdateABC(PlacesOf(sections));
    return frame;
}

void KlattPacketData::UpdateABC(unsigned places) noexcept {
    const unsigned stale = staleABC_ & places;
    if (stale == 0) return;
    vector::FastestKernels().sections({frequencies, frame.sampleTime, stale, frame.sections});
    constexpr std::size_t kZero = Frame::kFirstCascadeZero;
    const bool isComputedAtEveryRead = frequencies.F[kZero] == 0.0;
    staleABC_ &= ~(isComputedAtEveryRead ? stale & ~(1U << kZero) : stale);
}

}  // namespace larynth
