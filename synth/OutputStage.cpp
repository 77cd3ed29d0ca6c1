// SPDX-License-Identifier: MIT
#include "synth/OutputStage.h"

#include <cmath>
#include <utility>
#include <vector>

#include "block/Kernels.h"
#include "engine/ShelfFilter.h"

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

std::int16_t ToSample(double value) noexcept {
    constexpr double kIntegerLimit = 9223372036854775808.0;  // 2^63
    if (!(std::fabs(value) < kIntegerLimit)) return 0;
    return static_cast<std::int16_t>(static_cast<std::int64_t>(value));
}

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

void OutputStage::Process(std::span<double> tractSums, std::int16_t* samples) noexcept {
    if (tractSums.empty()) return;
    double gain = outputGain;
    if (lowOn_ || highOn_) {
        RunShelves(tractSums);
        gain = 1.0;
    }
    const block::Finish finish{gain, preEmphasis, volume};
    const double previous = std::exchange(previousInput_, tractSums.back() * gain);
    if (block::FastestKernels().finish(finish, previous, tractSums.data(), samples, tractSums.size())) return;
    double before = previous;
    for (const double sum : tractSums) {
        const double y = sum * gain;
        *samples++ = ToSample(volume * (y - preEmphasis * before));
        before = y;
    }
}

/// Gain and shelves, in place.
void OutputStage::RunShelves(std::span<double> sums) noexcept {
    for (double& sum : sums) {
        sum = sum * outputGain;
        if (lowOn_) sum = lowFilter_.Filter(sum);
        if (highOn_) sum = highFilter_.Filter(sum);
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
