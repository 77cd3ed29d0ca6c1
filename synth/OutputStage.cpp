// SPDX-License-Identifier: MIT
#include "synth/OutputStage.h"

#include <cmath>
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

std::int16_t OutputStage::Process(double tractSum) noexcept {
    double y = tractSum * outputGain;
    if (lowOn_) y = lowFilter_.Filter(y);
    if (highOn_) y = highFilter_.Filter(y);
    const double emphasised = y - preEmphasis * previousInput_;
    previousInput_ = y;
    return ToSample(volume * emphasised);
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
