// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>

#include "engine/LFilter.h"
#include "engine/OutputSample.h"

namespace larynth {

/// One output shelf filter as a voice describes it. The filter runs only while its gain exceeds 1.
struct ShelfSettings {
    double G = 1.0;   // linear gain at the shelf's end of the band
    double F = 0.0;   // corner frequency, Hz
    double P3 = 0.0;  // shape
    double P4 = 0.0;  // shape
};

/// What happens to the sum of the tracts: gain, the two shelf filters, pre-emphasis, volume, 16 bits.
class OutputStage {
  public:
    /// Designs the shelf filters anew when the sample frequency (Hz, above 0) is another one than before.
    /// Changes nothing when memory runs out.
    void SetSampleFreq(double fs);

    /// Takes the filter settings of a voice; they are designed at once where the sample frequency is known.
    /// Changes nothing when memory runs out.
    void SetShelves(const ShelfSettings& low, const ShelfSettings& high);

    /// What a sample is behind each step; a filter that does not run passes it.
    struct Steps {
        double gained, lowShelved, highShelved, emphasised, output;
    };

    /// One sample; advances the filters and the pre-emphasis.
    Steps Advance(double tractSum) noexcept;
    std::int16_t Process(double tractSum) noexcept { return ToSample(Advance(tractSum).output); }
    /// The same for many, with the settings as they are now.
    void Process(std::span<const double> tractSums, std::int16_t* samples) noexcept;

    const ShelfSettings& LowShelf() const noexcept { return lowSettings_; }
    const ShelfSettings& HighShelf() const noexcept { return highSettings_; }

    double outputGain = 1.0;   // linear
    double volume = 1.0;       // linear
    double preEmphasis = 0.0;  // a of y[n] − a·y[n−1]

  private:
    /// Takes these settings and, where the sample frequency fs (Hz) is not 0, new filters without state.
    void Design(const ShelfSettings& low, const ShelfSettings& high, double fs);

    ShelfSettings lowSettings_, highSettings_;
    LFilter lowFilter_{0, 0}, highFilter_{0, 0};
    bool lowOn_ = false, highOn_ = false;
    double designFreq_ = 0.0;     // Hz; 0: never designed
    double previousInput_ = 0.0;  // of the pre-emphasis
};

inline OutputStage::Steps OutputStage::Advance(double tractSum) noexcept {
    Steps steps;
    double y = steps.gained = tractSum * outputGain;
    if (lowOn_) y = lowFilter_.Filter(y);
    steps.lowShelved = y;
    if (highOn_) y = highFilter_.Filter(y);
    steps.highShelved = y;
    steps.emphasised = Emphasised(y, previousInput_, preEmphasis);
    steps.output = volume * steps.emphasised;
    previousInput_ = y;
    return steps;
}

}  // namespace larynth
