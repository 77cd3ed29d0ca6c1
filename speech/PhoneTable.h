// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <istream>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace larynth {

inline constexpr std::size_t kRuledFormants = 3;  ///< F1 to F3; the higher ones belong to the speaker.
inline constexpr std::size_t kNoiseBands = 8;  ///< Seven resonators of the parallel branch, and its bypass.

using Formants = std::array<double, kRuledFormants>;  ///< One value for each, mostly Hz.
using NoiseBands = std::array<double, kNoiseBands>;   ///< dB below the strongest one.

/// How a phone is made, which decides by which rules it is spoken.
enum class PhoneClass { Vowel, Diphthong, Glide, Nasal, Fricative, Stop, Affricate, Aspirate, Pause };

/// What the table says of one phone. Levels are dB below a stressed vowel (voicing) or the noise of s.
struct PhoneEntry {
    std::string name;
    PhoneClass kind = PhoneClass::Pause;
    bool voiced = false;
    Formants start{};      ///< Hz: the target where the phone begins; of an obstruent or a nasal, the locus.
    Formants end{};        ///< Hz: the target where it ends.
    Formants bandwidth{};  ///< Hz
    Formants slope{};    ///< Of the locus equation: share of the neighbour's target in the boundary's value.
    double yield = 0.0;  ///< Share by which the targets give way to the boundaries, however long the phone.
    double transition = 0;              ///< Formant movement from the boundary into a neighbour, s.
    std::optional<double> voicing;      ///< dB; none: voiceless.
    std::optional<double> frication;    ///< dB; none: no noise of its own.
    double onset = 0;                   ///< From a stop's release to the voicing of a stressed vowel, s.
    double burst = 0;                   ///< Of a stop's release, s.
    std::optional<double> zero;         ///< Of the nasal tract, Hz; none: the velum is closed.
    double shortest = 0;                ///< Duration that no rate goes below, s.
    std::optional<NoiseBands> bands;    ///< Spectrum of its noise.
    const PhoneEntry* front = nullptr;  ///< What takes its place beside front vowels; null: nothing does.
    const PhoneEntry* flap = nullptr;   ///< What takes its place between vowels where stress falls.
};

/// The phones of a language.
class PhoneTable {
  public:
    /// Reads a table: UTF-8, a line a phone, fields separated by blanks, # begins a comment line. The first
    /// other line names the columns; docs/speech.md says what they mean. `fileName` serves messages. Raises
    /// BadInput with file, line and column.
    static PhoneTable Parse(std::istream& input, std::string fileName);

    /// American English, as it comes with the system.
    static const PhoneTable& English();

    PhoneTable(PhoneTable&&) = default;
    PhoneTable& operator=(PhoneTable&&) = default;

    /// Null for a name that the table does not have.
    const PhoneEntry* Find(std::string_view name) const;
    /// All of them, by name.
    const std::map<std::string, PhoneEntry, std::less<>>& Entries() const { return entries_; }
    /// Of silence; every table has one.
    const PhoneEntry& Pause() const { return *pause_; }

  private:
    friend class PhoneTableParser;
    PhoneTable() = default;

    std::map<std::string, PhoneEntry, std::less<>> entries_;  // whose places stay when the table moves
    const PhoneEntry* pause_ = nullptr;
};

}  // namespace larynth
