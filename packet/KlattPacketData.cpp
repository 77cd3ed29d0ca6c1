// SPDX-License-Identifier: MIT
#include "packet/KlattPacketData.h"

namespace larynth {

namespace {

/// Tells the entries of a group where they sit, and gives them their initial values.
template <class Entries>
void SetUp(Entries& entries, const ResonatorGroup& group, KlattPacketData& owner) noexcept {
    int position = 0, index = group.firstIndex;
    for (ResonatorEntry& entry : entries) {
        entry.Attach(owner, group.unitCode, position++);
        for (int k = 0; k < kValuesPerEntry; ++k) entry.Item(k) = Item(index++).initial;
    }
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
    for (int index = 0; index < kScalarCount; ++index) Item(index) = larynth::Item(index).initial;
    SetUp(cascadePoles, kCascadePoles, *this);
    SetUp(cascadeZeros, kCascadeZeros, *this);
    SetUp(parallelPoles, kParallelPoles, *this);
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
