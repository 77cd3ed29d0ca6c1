// SPDX-License-Identifier: MIT
#include "synth/OutputStage.h"

#include <type_traits>
#include <utility>
#include <vector>

#include "engine/ShelfFilter.h"
#include "engine/vector/Kernels.h"

namespace larynth {

namespace {

static_assert(std::is_nothrow_move_assignable_v<LFilter>);

LFilter Designed(const ShelfSettings& settings, double fs, char kind) {
    std::vector<double> feedback, feedForward;
    DesignShelfFilter(settings.G, settings.F, settings.P3, settings.P4, fs, feedback, feedForward, kind);
    LFilter filter(0, 0);
    filter.SetCoefficients(feedback, feedForward);
    return filter;
}

}  // namespace

void OutputStage::SetSampleFreq(double fs) {
    if (fs != designFreq_) Design(lowSettings_, highSettings_, fs);
}

void OutputStage::SetShelves(const ShelfSettings& low, const ShelfSettings& high) {
    Design(low, high, designFreq_);
}

void OutputStage::Process(std::span<const double> tractSums, std::int16_t* samples) noexcept {
    if (lowOn_ || highOn_) {
        for (const double sum : tractSums) *samples++ = Process(sum);
    } else if (!tractSums.empty()) {
        vector::FastestKernels().finish({outputGain, preEmphasis, volume}, previousInput_, tractSums.data(),
                                        samples, tractSums.size());
        previousInput_ = tractSums.back() * outputGain;
    }
}

void OutputStage::Design(const ShelfSettings& low, const ShelfSettings& high, double fs) {
    if (fs != 0.0) {
        LFilter lowFilter = Designed(low, fs, 'l');  // all that can fail, before anything changes
        highFilter_ = Designed(high, fs, 'h');
        lowFilter_ = std::move(lowFilter);
        lowOn_ = low.G > 1.0;
        highOn_ = high.G > 1.0;
    }
    lowSettings_ = low;
    highSettings_ = high;
    designFreq_ = fs;
}

}  // namespace larynth
