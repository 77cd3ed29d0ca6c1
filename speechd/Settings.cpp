// SPDX-License-Identifier: MIT
#include "speechd/Settings.h"

#include <array>
#include <cmath>
#include <optional>
#include <span>

#include "input/Text.h"

namespace larynth::speechd {
namespace {

/// From −1 to 1, which the server counts from −100 to 100.
std::optional<double> ParseShare(std::string_view text) {
    constexpr double kMost = 100.0;
    const auto number = ParseInteger(text, -100, 100);
    if (!number) return std::nullopt;
    return static_cast<double>(*number) / kMost;
}

// Equal steps are equal ratios of speed; the middle is the usual rate, the ends are the limits.
double RateOf(double share) {
    const double usual = SpeechSettings{}.rate;
    const double limit = share < 0 ? SpeechSettings::kSlowest : SpeechSettings::kFastest;
    return usual * std::pow(limit / usual, std::abs(share));
}

bool SetShare(double& target, std::string_view text, double (*convert)(double share)) {
    const std::optional<double> share = ParseShare(text);
    if (share) target = convert(*share);
    return share.has_value();
}

template <class Value>
struct Choice {
    std::string_view name;
    Value value;
};

template <class Value, std::size_t kCount>
bool SetChoice(Value& target, std::string_view text, const Choice<Value> (&choices)[kCount]) {
    for (const auto& [name, value] : choices) {
        if (name == text) return target = value, true;
    }
    return false;
}

constexpr Choice<Punctuation> kPunctuation[] = {{"none", Punctuation::None},
                                                {"some", Punctuation::Some},
                                                {"most", Punctuation::Most},
                                                {"all", Punctuation::All}};
// There are no sound icons: what would be one is said.
constexpr Choice<Capitals> kCapitals[] = {
    {"none", Capitals::None}, {"spell", Capitals::Spell}, {"icon", Capitals::Spell}};
constexpr Choice<bool> kSpelling[] = {{"off", false}, {"on", true}};

}  // namespace

bool Settings::Set(std::string_view parameter, std::string_view value) {
    if (parameter == "rate") return SetShare(speech_.rate, value, RateOf);
    if (parameter == "pitch") return SetShare(speech_.pitch, value, [](double x) { return std::exp2(x); });
    if (parameter == "pitch_range") return SetShare(speech_.range, value, [](double x) { return 1.0 + x; });
    if (parameter == "volume") {
        return SetShare(speech_.volume, value, [](double x) { return (1.0 + x) / 2.0; });
    }
    if (parameter == "punctuation_mode") return SetChoice(text_.punctuation, value, kPunctuation);
    if (parameter == "cap_let_recogn") return SetChoice(text_.capitals, value, kCapitals);
    if (parameter == "spelling_mode") return SetChoice(text_.spell, value, kSpelling);
    if (parameter == "voice" || parameter == "voice_type") voiceKind_ = value;
    if (parameter == "synthesis_voice") voiceName_ = value;
    return true;
}

Speaker Settings::ChosenSpeaker() const {
    if (const auto speaker = Speaker::Find(voiceName_)) return *speaker;
    const bool isSmall = voiceKind_.starts_with("female") || voiceKind_.starts_with("child");
    return Speaker::Find(isSmall ? "woman" : "man").value();
}

}  // namespace larynth::speechd
