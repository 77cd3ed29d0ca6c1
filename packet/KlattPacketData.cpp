// SPDX-License-Identifier: MIT
#include "packet/KlattPacketData.h"

namespace larynth {

namespace {

/// The entries of a group that stand for `sections`, told where they sit.
void AttachAll(KlattPacketData& owner, const ResonatorGroup& group,
               std::span<SectionCoefficients> sections) noexcept {
    int position = 0;
    for (ResonatorEntry& entry : owner.Entries(group)) {
        entry.Attach(owner, group, position, sections[static_cast<std::size_t>(position)]);
        ++position;
    }
}

}  // namespace

KlattPacketData::KlattPacketData() noexcept {
    frame.sampleTime = 1.0 / 11025.0;
    AttachAll(*this, kCascadePoles, frame.cascadePoles);
    AttachAll(*this, kCascadeZeros, frame.cascadeZeros);
    AttachAll(*this, kParallelPoles, frame.parallelPoles);
    for (int index = 0; index < kItemCount; ++index) Item(index) = larynth::Item(index).initial;
}

void KlattPacketData::CopyFrom(const KlattPacketData& source) noexcept {
    frame = source.frame;
    validity = source.validity;
    for (std::size_t i = 0; i < entries_.size(); ++i) entries_[i].CopyFrom(source.entries_[i]);
    if (source.truWords) truWords = source.truWords;
}

double& KlattPacketData::Item(int index) noexcept {
    if (index < kScalarCount) return Scalar(static_cast<ScalarItem>(index));
    const int offset = index - kScalarCount;
    return entries_[static_cast<std::size_t>(offset / kValuesPerEntry)].Item(offset % kValuesPerEntry);
}

const Frame& KlattPacketData::Converted(Frame::Sections sections) noexcept {
    constexpr std::size_t kCascade = Frame::kCascadePoles + Frame::kCascadeZeros;
    const std::span<ResonatorEntry> entries(entries_);
    if (sections == Frame::Sections::Both) ResonatorEntry::UpdateABC(entries);
    if (sections == Frame::Sections::Cascade) ResonatorEntry::UpdateABC(entries.first(kCascade));
    if (sections == Frame::Sections::Parallel) ResonatorEntry::UpdateABC(entries.subspan(kCascade));
    return frame;
}

}  // namespace larynth
