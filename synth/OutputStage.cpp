// SPDX-License-Identifier: MIT
#include "synth/OutputStage.h"

#include <vector>

#include "engine/ShelfFilter.h"
#include "engine/block/Kernels.h"

namespace larynth {

namespace {

void Design(LFilter& filter, const ShelfSettings& settings, double fs, char kind) {
    std::vector<double> feedback, feedForward;
    DesignShelfFilter(settings.G, settings.F, settings.P3, settings.P4, fs, feedback, feedForward, true,
                      kind);
    filter.SetCoefficients(feedback, feedForward);
    filter.Reset();
}

}  // namespace

void OutputStage::SetSampleFreq(double fs) {
    if (fs == designFreq_) return;
    designFreq_ = fs;
    DesignFilters();
}

void OutputStage::SetShelves(const ShelfSettings& low, const ShelfSettings& high) {
    lowSettings_ = low;
    highSettings_ = high;
    DesignFilters();
}

void OutputStage::Process(std::span<const double> tractSums, std::int16_t* samples) noexcept {
    if (lowOn_ || highOn_) {
        for (const double sum : tractSums) *samples++ = Process(sum);
    } else if (!tractSums.empty()) {
        block::FastestKernels().finish({outputGain, preEmphasis, volume}, previousInput_, tractSums.data(),
                                       samples, tractSums.size());
        previousInput_ = tractSums.back() * outputGain;
    }
}

void OutputStage::DesignFilters() {
    if (designFreq_ == 0.0) return;
    Design(lowFilter_, lowSettings_, designFreq_, 'l');
    Design(highFilter_, highSettings_, designFreq_, 'h');
    lowOn_ = lowSettings_.G > 1.0;
    highOn_ = highSettings_.G > 1.0;
}

}  // namespace larynth
