// SPDX-License-Identifier: MIT
#include "speech/FramePlanner.h"

#include <algorithm>
#include <cmath>
#include <deque>

#include "engine/Exponential.h"
#include "engine/Trigonometry.h"
#include "speech/Allophones.h"
#include "speech/FormantPath.h"
#include "speech/Gestures.h"
#include "speech/Pauses.h"
#include "speech/PitchContour.h"
#include "speech/Timing.h"

namespace larynth {
namespace {

constexpr double kLn2 = 0.693147180559945309;
constexpr double kTwoPi = 6.28318530717958648;

// Amplitudes of a stressed vowel's voicing and of the noise of s that fill about a third of 16 bits.
constexpr double kVoicingAmplitude = 1100.0, kFricationAmplitude = 3800.0;
constexpr double kFloor = -46.0;  // dB; a faint even noise where there is none other, as in any room
constexpr NoiseBands kFloorColour{-60, -60, -60, -60, -60, -60, -60, -12};
constexpr double kSilence = -60.0;  // dB

constexpr double kVelarPole = 250.0, kNasalBandwidth = 90.0;  // Hz; after Klatt 1980
constexpr double kOpenGlottisBandwidth = 350.0;               // Hz, of F1
constexpr double kTail = 0.02;                                // s behind the last phone, for what rings on

// The parallel branch: resonator 1 stands low, 2 to 4 on F2 to F4, the others in the bands of frication.
constexpr double kLowBand = 700.0;                                                       // Hz
constexpr std::array kHighBands{4500.0, 5600.0, 6900.0};                                 // Hz
constexpr std::array kBandBandwidths{400.0, 250.0, 300.0, 400.0, 700.0, 900.0, 1000.0};  // Hz

// Of y[n] = a·x[n] + b·y[n−1] + c·y[n−2] with gain 1 at 0 Hz, the gain at its own frequency (Hz): what makes
// a band's level a level.
double PeakGain(double frequency, double bandwidth) {
    const double r = Exponential(-0.5 * kTwoPi * bandwidth / kSpeechSampleFreq);
    const double angle = kTwoPi * frequency / kSpeechSampleFreq;
    const double b = 2.0 * r * Cosine(angle), c = -r * r;
    const double real = 1.0 - b * Cosine(angle) - c * Cosine(2.0 * angle);
    const double imaginary = b * Sine(angle) + c * Sine(2.0 * angle);
    return (1.0 - b - c) / std::sqrt(real * real + imaginary * imaginary);
}

SpokenPhones Spoken(const PhoneTable& table, const PausedUtterance& paused) {
    std::vector<SpokenPhone> phones = Allophones(paused.utterance, table);
    PutInTime(phones, paused.tempo);
    return {std::move(phones), table.Pause()};
}

}  // namespace

class FramePlanner::Implementation {
  public:
    Implementation(const PhoneTable& table, const Speaker& speaker, const SpeechSettings& settings,
                   const PausedUtterance& paused)
        : speaker_(speaker),
          settings_(settings),
          phones_(Spoken(table, paused)),
          path_(phones_),
          pitch_(paused.utterance, phones_),
          marks_(paused.utterance.marks.begin(), paused.utterance.marks.end()),
          step_(settings.frameLength / kSpeechSampleFreq) {
        for (std::size_t k = 0; k < kHighBands.size(); ++k) {
            highGains_[k] = PeakGain(kHighBands[k], kBandBandwidths[k + 4]);
        }
        frame_[kFLT] = 1e5 / kSpeechSampleFreq;
        frame_[kOQ] = speaker.openQuotient;
        frame_[kFL] = speaker.flutter;
        frame_[kFNP] = kVelarPole;
        frame_[kBWNP] = frame_[kBWNZ] = kNasalBandwidth;
    }

    bool Next() {
        const double start = static_cast<double>(count_) * step_;
        const bool isBehind = start >= phones_.End() + kTail;
        TakeMarks(isBehind ? phones_.size() : PhoneStartedBy(start + 0.5 * step_));
        if (isBehind || phones_.size() == 0) return false;
        ++count_;
        Plan(start + 0.5 * step_);
        return true;
    }

    const SpeechFrame& Frame() const noexcept { return frame_; }
    const std::vector<Mark>& Marks() const noexcept { return reached_; }

  private:
    // The index of the phone in which `time` lies; their number behind the last one.
    std::size_t PhoneStartedBy(double time) {
        while (current_ + 1 < phones_.size() && time >= phones_[current_].end) ++current_;
        return current_;
    }

    void TakeMarks(std::size_t phone) {
        reached_.clear();
        while (!marks_.empty() && marks_.front().phone <= phone) {
            reached_.push_back(std::move(marks_.front()));
            marks_.pop_front();
        }
    }

    void Plan(double time) {
        CollectGestures();
        const SpokenPhone& phone = phones_[current_];
        PlanSource(time, phone);
        const Formants formants = path_.At(time);
        PlanCascade(time, formants);
        PlanNoise(time);
    }

    // Of the phones around the current one: none reaches further.
    void CollectGestures() {
        constexpr std::size_t kAround = 2;
        const std::size_t end = std::min(current_ + kAround + 1, phones_.size());
        for (; planned_ < end; ++planned_) gestures_.push_back(GesturesOf(phones_, planned_));
        while (gestures_.size() > 2 * kAround + 1) gestures_.pop_front();
    }

    void PlanSource(double time, const SpokenPhone& phone) {
        levels_ = {};
        for (const Gestures& gestures : gestures_) {
            for (const Gesture& g : gestures.levels) levels_[static_cast<std::size_t>(g.track)] += g.At(time);
        }
        const Prosody& prosody = phone.prosody;
        const double octaves = pitch_.At(time) * speaker_.spread * settings_.range * prosody.range;
        frame_[kF0] = speaker_.f0 * settings_.pitch * prosody.pitch * Exponential(kLn2 * octaves);
        const double volume = settings_.volume * prosody.volume;
        const double voicing = Level(Track::Voicing), breath = voicing * Amplitude(speaker_.breathiness);
        frame_[kAV] = speaker_.whispers ? 0.0 : kVoicingAmplitude * volume * voicing;
        frame_[kAH] = kVoicingAmplitude * volume * (Level(Track::Aspiration) + breath);
        frame_[kAF] = kFricationAmplitude * volume * std::max(Level(Track::Frication), Amplitude(kFloor));
        double tilt = speaker_.tilt;
        for (const Gestures& gestures : gestures_) {
            for (const AddedTilt& t : gestures.tilts) tilt += time >= t.from && time < t.to ? t.tilt : 0.0;
        }
        frame_[kTL] = std::round(tilt);
    }

    void PlanCascade(double time, const Formants& formants) {
        const Formants bandwidths = Bandwidths(time);
        for (std::size_t k = 0; k < kRuledFormants; ++k) {
            frame_[kF1 + 2 * k] = formants[k] * speaker_.scale[k];
            frame_[kF1 + 2 * k + 1] = bandwidths[k];
        }
        for (std::size_t k = 0; k < speaker_.upper.size(); ++k) {
            frame_[kF1 + 2 * (kRuledFormants + k)] = speaker_.upper[k];
            frame_[kF1 + 2 * (kRuledFormants + k) + 1] = speaker_.upperBandwidth[k];
        }
        const double open = std::min(Level(Track::Nasality), 1.0);
        frame_[kFNZ] = kVelarPole + (NasalZero() - kVelarPole) * open;
    }

    // Those of the phone, rounded off over a frame to both sides.
    Formants Bandwidths(double time) const {
        Formants sum{};
        for (const double weight : {-1.0, 0.0, 1.0}) {
            const double there = time + weight * step_;
            const Formants at = BandwidthsAt(there);
            for (std::size_t k = 0; k < kRuledFormants; ++k) sum[k] += at[k] * (weight == 0.0 ? 0.5 : 0.25);
        }
        return sum;
    }

    Formants BandwidthsAt(double time) const {
        std::size_t i = current_;
        while (i > 0 && time < phones_[i].start) --i;
        while (i + 1 < phones_.size() && time >= phones_[i].end) ++i;
        Formants bandwidths = phones_.Entry(i).bandwidth;
        for (const Gestures& gestures : gestures_) {
            for (const OpenGlottis& opening : gestures.openings) {
                if (time >= opening.from && time < opening.to) bandwidths[0] = kOpenGlottisBandwidth;
            }
        }
        return bandwidths;
    }

    // Of the nasal phone at hand, or of the nearest neighbour's.
    double NasalZero() const {
        for (const PhoneEntry* entry :
             {&phones_.Entry(current_), &phones_.After(current_), &phones_.Before(current_)}) {
            if (entry->zero) return *entry->zero;
        }
        return kVelarPole;
    }

    void PlanNoise(double time) {
        NoiseBands bands{};
        bands.fill(kSilence);
        for (const Gestures& gestures : gestures_) {
            for (const NoiseColour& colour : gestures.colours) {
                if (time >= colour.from && time < colour.to) bands = colour.bands;
            }
        }
        if (Level(Track::Frication) < 1.5 * Amplitude(kFloor)) bands = kFloorColour;
        const std::array frequencies{kLowBand,      frame_[kF1 + 2], frame_[kF1 + 4], frame_[kF1 + 6],
                                     kHighBands[0], kHighBands[1],   kHighBands[2]};
        for (std::size_t k = 0; k < frequencies.size(); ++k) {
            const double peak = k >= 4 ? highGains_[k - 4] : PeakGain(frequencies[k], kBandBandwidths[k]);
            const double sign = k % 2 == 0 ? 1.0 : -1.0;  // neighbours in antiphase have no dip between them
            frame_[kPF0 + 3 * k] = frequencies[k];
            frame_[kPF0 + 3 * k + 1] = kBandBandwidths[k];
            frame_[kPF0 + 3 * k + 2] = sign * Amplitude(bands[k]) / peak;
        }
        frame_[kAB] = Amplitude(bands.back());
    }

    double Level(Track track) const { return levels_[static_cast<std::size_t>(track)]; }

    Speaker speaker_;
    SpeechSettings settings_;
    SpokenPhones phones_;
    FormantPath path_;
    PitchContour pitch_;
    std::deque<Mark> marks_;  // that are to come
    double step_;             // s
    std::array<double, kHighBands.size()> highGains_{};
    std::deque<Gestures> gestures_;  // of the phones around the current one
    std::array<double, kTracks> levels_{};
    std::size_t count_ = 0;    // of frames
    std::size_t current_ = 0;  // the phone at the time
    std::size_t planned_ = 0;  // phones whose gestures are known
    std::vector<Mark> reached_;
    SpeechFrame frame_{};
};

FramePlanner::FramePlanner(const PhoneTable& table, const Speaker& speaker, const SpeechSettings& settings,
                           const Utterance& utterance)
    : implementation_(std::make_unique<Implementation>(
          table, speaker, settings, WithPauses(utterance, settings.rate / kUsualRate, table.Pause().name))) {}
FramePlanner::FramePlanner(FramePlanner&&) noexcept = default;
FramePlanner& FramePlanner::operator=(FramePlanner&&) noexcept = default;
FramePlanner::~FramePlanner() = default;

bool FramePlanner::Next() { return implementation_->Next(); }
const SpeechFrame& FramePlanner::Frame() const noexcept { return implementation_->Frame(); }
const std::vector<Mark>& FramePlanner::Marks() const noexcept { return implementation_->Marks(); }

}  // namespace larynth
