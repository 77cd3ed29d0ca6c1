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
    if (!ProcessInOneGo(tractSums, samples)) {
        for (const double sum : tractSums) *samples++ = Process(sum);
    }
}

bool OutputStage::ProcessInOneGo(std::span<const double> tractSums, std::int16_t* samples) noexcept {
    if (tractSums.empty() || lowOn_ || highOn_) return false;
    const block::Finish finish{outputGain, preEmphasis, volume};
    if (!block::FastestKernels().finish(finish, previousInput_, tractSums.data(), samples,
                                        tractSums.size())) {
        return false;
    }
    previousInput_ = tractSums.back() * outputGain;
    return true;
}

void OutputStage::DesignFilters() {
    if (designFreq_ == 0.0) return;
    Design(lowFilter_, lowSettings_, designFreq_, 'l');
    Design(highFilter_, highSettings_, designFreq_, 'h');
    lowOn_ = lowSettings_.G > 1.0;
    highOn_ = highSettings_.G > 1.0;
}

}  // namespace larynth
