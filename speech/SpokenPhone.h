// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "speech/PhoneTable.h"
#include "speech/Utterance.h"

namespace larynth {

/// A phone with its row of the table and its place in time.
struct SpokenPhone {
    const PhoneEntry* entry = nullptr;
    double start = 0.0, end = 0.0;  ///< s from the utterance's beginning
    int stress = 0;
    bool startsSyllable = false, startsWord = false;
    Prosody prosody;

    double Duration() const noexcept { return end - start; }
};

/// The phones of an utterance as the rules see them: a phone among its neighbours. Silence is around them.
class SpokenPhones {
  public:
    SpokenPhones(std::vector<SpokenPhone> phones, const PhoneEntry& pause)
        : phones_(std::move(phones)), pause_(&pause) {}

    std::size_t size() const noexcept { return phones_.size(); }
    const SpokenPhone& operator[](std::size_t i) const { return phones_[i]; }
    double End() const noexcept { return phones_.empty() ? 0.0 : phones_.back().end; }

    const PhoneEntry& Entry(std::size_t i) const { return *phones_[i].entry; }
    const PhoneEntry& Before(std::size_t i) const { return i > 0 ? Entry(i - 1) : *pause_; }
    const PhoneEntry& After(std::size_t i) const { return i + 1 < size() ? Entry(i + 1) : *pause_; }

  private:
    std::vector<SpokenPhone> phones_;
    const PhoneEntry* pause_;
};

/// Vowels, diphthongs and glides: formants with targets of their own, and a voice.
inline bool IsVocalic(const PhoneEntry& entry) {
    return entry.kind == PhoneClass::Vowel || entry.kind == PhoneClass::Diphthong ||
           entry.kind == PhoneClass::Glide;
}

inline bool IsVowel(const PhoneEntry& entry) {
    return entry.kind == PhoneClass::Vowel || entry.kind == PhoneClass::Diphthong;
}

inline bool IsSonorant(const PhoneEntry& entry) {
    return IsVocalic(entry) || entry.kind == PhoneClass::Nasal || entry.kind == PhoneClass::Aspirate;
}

inline bool IsPause(const PhoneEntry& entry) { return entry.kind == PhoneClass::Pause; }

}  // namespace larynth
