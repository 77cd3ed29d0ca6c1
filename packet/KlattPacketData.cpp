// SPDX-License-Identifier: MIT
#include "packet/KlattPacketData.h"

namespace larynth {

namespace {

template <class Entries>
void AttachAll(Entries& entries, const ResonatorGroup& group, KlattPacketData& owner) noexcept {
    int position = 0;
    for (ResonatorEntry& entry : entries) entry.Attach(owner, group.unitCode, position++);
}

template <class Entries>
void CopyAll(Entries& entries, const Entries& sources) noexcept {
    for (std::size_t i = 0; i < entries.size(); ++i) entries[i].CopyFrom(sources[i]);
}

template <class Entries>
double& ItemInGroup(Entries& entries, int offset) noexcept {
    return entries[static_cast<std::size_t>(offset / kValuesPerEntry)].Item(offset % kValuesPerEntry);
}

}  // namespace

KlattPacketData::KlattPacketData() noexcept {
    AttachAll(cascadePoles, kCascadePoles, *this);
    AttachAll(cascadeZeros, kCascadeZeros, *this);
    AttachAll(parallelPoles, kParallelPoles, *this);
    for (int index = 0; index < kItemCount; ++index) Item(index) = larynth::Item(index).initial;
}

void KlattPacketData::CopyFrom(const KlattPacketData& source) noexcept {
    scalars = source.scalars;
    validity = source.validity;
    alpha = source.alpha;
    beta = source.beta;
    CopyAll(cascadePoles, source.cascadePoles);
    CopyAll(cascadeZeros, source.cascadeZeros);
    CopyAll(parallelPoles, source.parallelPoles);
    sampleTime = source.sampleTime;
    frameLen = source.frameLen;
    if (source.truWords) truWords = source.truWords;
}

double& KlattPacketData::Item(int index) noexcept {
    if (index < kScalarCount) return scalars[static_cast<std::size_t>(index)];
    if (index < kCascadePoles.EndIndex()) return ItemInGroup(cascadePoles, index - kCascadePoles.firstIndex);
    if (index < kCascadeZeros.EndIndex()) return ItemInGroup(cascadeZeros, index - kCascadeZeros.firstIndex);
    return ItemInGroup(parallelPoles, index - kParallelPoles.firstIndex);
}

}  // namespace larynth
