// SPDX-License-Identifier: MIT
#include "text/SsmlValues.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "engine/Exponential.h"
#include "input/Text.h"

namespace larynth {
namespace {

constexpr double kLongestPause = 60.0;  // s

struct Label {
    std::string_view name;
    double value;
};

constexpr Label kStrengths[] = {
    {"none", 0.0}, {"x-weak", 0.05}, {"weak", 0.1}, {"medium", 0.25}, {"strong", 0.5}, {"x-strong", 1.0},
};
constexpr Label kRates[] = {
    {"x-slow", 0.5}, {"slow", 0.75}, {"medium", 1.0}, {"fast", 1.4}, {"x-fast", 2.0}, {"default", 1.0},
};
constexpr Label kPitches[] = {
    {"x-low", 0.7}, {"low", 0.85}, {"medium", 1.0}, {"high", 1.2}, {"x-high", 1.45}, {"default", 1.0},
};
constexpr Label kRanges[] = {
    {"x-low", 0.2}, {"low", 0.5}, {"medium", 1.0}, {"high", 1.4}, {"x-high", 1.8}, {"default", 1.0},
};
// Steps of 6 dB around a voice's usual level.
constexpr Label kVolumes[] = {
    {"silent", 0.0}, {"x-soft", 0.25}, {"soft", 0.5},    {"medium", 1.0},
    {"loud", 1.41},  {"x-loud", 2.0},  {"default", 1.0},
};

template <std::size_t Count>
std::optional<double> FindLabel(const Label (&labels)[Count], std::string_view name) {
    const Label* const label =
        std::find_if(std::begin(labels), std::end(labels), [&](const Label& l) { return l.name == name; });
    return label == std::end(labels) ? std::nullopt : std::optional(label->value);
}

// A number, whether it has a sign, and what stands behind it.
struct Measure {
    double value;
    bool isRelative;
    std::string_view unit;
};

std::optional<Measure> ParseMeasure(std::string_view text) {
    const bool relative = text.starts_with('+') || text.starts_with('-');
    const std::size_t end = std::min(text.find_first_not_of("0123456789.", relative ? 1 : 0), text.size());
    const std::size_t begin = text.starts_with('+') ? 1 : 0;
    const auto value = ParseNumber(text.substr(begin, end - begin));
    if (!value || std::abs(*value) > 1e6) return std::nullopt;
    return Measure{*value, relative, Trimmed(text.substr(end))};
}

// What each takes off or puts on is bounded so that any nesting can be spoken.
double Bounded(double factor, double least, double most) { return std::clamp(factor, least, most); }

std::optional<double> RateFactor(std::string_view value) {
    if (const auto label = FindLabel(kRates, value)) return label;
    const auto measure = ParseMeasure(value);
    if (!measure || (measure->unit != "%" && !measure->unit.empty())) return std::nullopt;
    const double number = measure->unit == "%" ? measure->value / 100.0 : measure->value;
    return measure->isRelative ? 1.0 + number : number;
}

constexpr double kLnOfTwelfthOctave = std::numbers::ln2 / 12.0, kLnOfDecibel = std::numbers::ln10 / 20.0;

double Semitones(double count) { return Exponential(count * kLnOfTwelfthOctave); }

std::optional<double> PitchFactor(std::string_view value, double meanPitch, const Prosody& around) {
    const auto measure = ParseMeasure(value);
    if (!measure) return std::nullopt;
    if (measure->unit == "%")
        return measure->isRelative ? 1.0 + measure->value / 100.0 : measure->value / 100.0;
    if (measure->unit == "st") return Semitones(measure->value);
    if (measure->unit != "Hz") return std::nullopt;
    const double here = meanPitch * around.pitch;
    return measure->isRelative ? (here + measure->value) / here : measure->value / here;
}

std::optional<double> RangeFactor(std::string_view value) {
    if (const auto label = FindLabel(kRanges, value)) return label;
    const auto measure = ParseMeasure(value);
    if (!measure || measure->unit != "%") return std::nullopt;
    return measure->isRelative ? 1.0 + measure->value / 100.0 : measure->value / 100.0;
}

std::optional<double> VolumeFactor(std::string_view value, const Prosody& around) {
    if (const auto label = FindLabel(kVolumes, value)) return label;
    const auto measure = ParseMeasure(value);
    if (!measure) return std::nullopt;
    if (measure->unit == "dB") return Exponential(measure->value * kLnOfDecibel);
    if (measure->unit != "%" && !measure->unit.empty()) return std::nullopt;
    if (measure->isRelative) return 1.0 + measure->value / 100.0;
    return measure->value / 100.0 / std::max(around.volume, 0.01);
}

}  // namespace

std::optional<double> ParseDuration(std::string_view text) {
    const auto measure = ParseMeasure(Trimmed(text));
    if (!measure || measure->value < 0.0) return std::nullopt;
    if (measure->unit == "s") return std::min(measure->value, kLongestPause);
    if (measure->unit == "ms") return std::min(measure->value / 1000.0, kLongestPause);
    return std::nullopt;
}

std::optional<double> PauseOfStrength(std::string_view strength) {
    return FindLabel(kStrengths, Trimmed(strength));
}

bool ApplyProsody(std::string_view name, std::string_view value, double meanPitch, Prosody& prosody) {
    value = Trimmed(value);
    std::optional<double> factor;
    if (name == "rate" && (factor = RateFactor(value)))
        prosody.rate = Bounded(prosody.rate * *factor, 0.1, 10.0);
    else if (name == "pitch" &&
             ((factor = FindLabel(kPitches, value)) || (factor = PitchFactor(value, meanPitch, prosody))))
        prosody.pitch = Bounded(prosody.pitch * *factor, 0.1, 10.0);
    else if (name == "range" && (factor = RangeFactor(value)))
        prosody.range = Bounded(prosody.range * *factor, 0.0, 10.0);
    else if (name == "volume" && (factor = VolumeFactor(value, prosody)))
        prosody.volume = Bounded(prosody.volume * *factor, 0.0, 10.0);
    return factor.has_value();
}

SayAs ParseSayAs(std::string_view text) {
    struct Name {
        std::string_view written;
        SayAs meaning;
    };
    constexpr Name kNames[] = {
        {"characters", SayAs::Characters},
        {"spell-out", SayAs::Characters},
        {"tts:char", SayAs::Characters},
        {"cardinal", SayAs::Cardinal},
        {"number", SayAs::Cardinal},
        {"ordinal", SayAs::Ordinal},
        {"digits", SayAs::Digits},
        {"tts:digits", SayAs::Digits},
        {"date", SayAs::Date},
        {"time", SayAs::Time},
        {"telephone", SayAs::Telephone},
    };
    for (const Name& name : kNames)
        if (name.written == text) return name.meaning;
    return SayAs::Text;
}

}  // namespace larynth
