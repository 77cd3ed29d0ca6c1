// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "engine/Component.h"
#include "engine/Constants.h"
#include "engine/Frame.h"

namespace larynth {

/// Plays a stored excitation period, one sample per Evaluate, at any pitch.
///
/// The waveform is the open phase of one period. It is laid out once in a table that holds a whole reference
/// period of 1/49 s: the waveform, stretched by linear interpolation to the open quotient's share, and
/// silence, with unit mean power. Each sample reads the table at a phase that advances by F0/49 entries and
/// wraps by the reference period, but never to below 0: the pitch is quantised to whole samples.
///
/// The table belongs to the sample frequency of its building. A later change of the frequency does not
/// rebuild it, and the pitch is exact only while both are the same.
class WaveTablePlayer final : public Component {
  public:
    /// The most entries that a table and the most samples that a waveform can have. The table has one entry
    /// per 49 Hz of sample frequency: what needs more is no sample frequency of a sound.
    static constexpr std::size_t kMostSamples = std::size_t{1} << 24;

    static constexpr Frame::Sections kSections = Frame::Sections::None;

    void Take(const Frame& frame) {
        SetF0(frame.F0);
        SetAmplitude(frame.AV);
        SetSampleFreq(frame.SampleFreq());
    }

    void SetSampleFreq(double fs);              ///< Hz.
    void SetF0(double F0);                      ///< Hz.
    void SetAmplitude(double AV) { AV_ = AV; }  ///< Linear.
    double OQ() const { return OQ_; }           ///< Share of the period that is open.

    /// Lays out `wave` with open quotient `OQ`, which is kept. Below 0.1 the table is silent.
    ///
    /// Raises Zelvani::Exception, or std::bad_alloc, with nothing changed, when OQ is not a number or the
    /// table would have less than no entries or more than kMostSamples.
    void Rebuild(std::span<const double> wave, double OQ);

    /// Takes frequencies, amplitude and the last output from `other`; open quotient, table and
    /// phase stay.
    void TakeSettingsOf(const WaveTablePlayer& other);

    /// False while F0 is 0 or not a number: then there is nothing to evaluate, and time stands still.
    bool IsSounding() const { return !IsZeroOrNan(F0_); }

    /// Advances by one sample and caches it. Outside the table the sample is 0, and the phase moves on.
    double Evaluate() { return Store(NextSample() * AV_); }

  private:
    static constexpr double kReferencePeriod = 0.02040816326530612;  // s, 1/49

    std::size_t EntryCount() const;
    void UpdateStep() { step_ = (F0_ * -kReferencePeriod) / fs_; }
    double NextSample();
    bool Covers(double position) const;
    double Interpolated(double position) const;

    double F0_ = 0.0, AV_ = 0.0;
    double fs_ = 11025.0;
    double OQ_ = 0.5;
    std::vector<double> table_;
    double phase_ = 0.0;  // s within the reference period
    double step_ = 0.0;   // s, what a sample takes from the phase: negative for a positive F0
};

inline void WaveTablePlayer::SetSampleFreq(double fs) {
    fs_ = fs;
    UpdateStep();
}

inline void WaveTablePlayer::SetF0(double F0) {
    F0_ = F0;
    UpdateStep();
}

inline double WaveTablePlayer::NextSample() {
    if (table_.empty()) return 0.0;
    double position = phase_ * fs_;
    if (position >= static_cast<double>(table_.size())) {
        phase_ = phase_ - kReferencePeriod;
        if (phase_ < 0.0) phase_ = 0.0;
        position = phase_ * fs_;
    }
    const double y = Covers(position) ? Interpolated(position) : 0.0;
    phase_ = phase_ - step_;
    return y;
}

/// Whether the position, truncated toward zero, is an entry's index; not for a NaN.
inline bool WaveTablePlayer::Covers(double position) const {
    return position > -1.0 && position < static_cast<double>(table_.size());
}

inline double WaveTablePlayer::Interpolated(double position) const {
    const auto i = static_cast<std::size_t>(static_cast<std::ptrdiff_t>(position));
    const double a = table_[i];
    if (i + 1 >= table_.size()) return a;
    return a + (table_[i + 1] - a) * (position - static_cast<double>(i));
}

}  // namespace larynth
