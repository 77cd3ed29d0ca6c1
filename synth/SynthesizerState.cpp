// SPDX-License-Identifier: MIT
#include "synth/SynthesizerState.h"

#include <type_traits>
#include <utility>

#include <larynth/ComException.h>

namespace larynth {

void SynthesizerState::ForEachKind(const Network::Elements& own, auto& copies, auto&& action) {
    action(own.source, copies.source);
    action(own.waveSource, copies.waveSource);
    action(own.filter, copies.filter);
    action(own.aspiration, copies.aspiration);
    action(own.frication, copies.frication);
    action(own.cascade, copies.cascade);
    action(own.filterTract, copies.filterTract);
    action(own.parallel, copies.parallel);
}

void SynthesizerState::Save(const Network::Elements& own, const OutputStage& output) {
    complete_ = false;
    filterMovesSource_ = own.filterMovesSource;
    ForEachKind(own, copies_, [](const auto* element, auto& copy) {
        if (element != nullptr) {
            copy = *element;
        } else {
            copy.reset();
        }
    });
    copies_.output = output;
    noise_ = own.aspiration->Generator().State();
    complete_ = true;
}

void SynthesizerState::Restore(const Network::Elements& own, OutputStage& output) const {
    if (!complete_ || !IsOf(own)) Zelvani::CheckResult(E_FAIL);
    Copies copies = copies_;  // all that can fail, before anything changes
    ForEachKind(own, copies, [](auto* element, auto& copy) {
        static_assert(std::is_nothrow_move_assignable_v<std::remove_reference_t<decltype(*copy)>>);
        if (element != nullptr) *element = *std::move(copy);
    });
    static_assert(std::is_nothrow_move_assignable_v<OutputStage>);
    output = std::move(copies.output);
    own.aspiration->Generator().Seed(noise_);
}

bool SynthesizerState::IsOf(const Network::Elements& own) const {
    bool same = filterMovesSource_ == own.filterMovesSource;
    ForEachKind(own, copies_, [&](const auto* element, const auto& copy) {
        same = same && (element != nullptr) == copy.has_value();
    });
    return same;
}

}  // namespace larynth
