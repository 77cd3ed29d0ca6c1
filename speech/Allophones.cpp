// SPDX-License-Identifier: MIT
#include "speech/Allophones.h"

#include <algorithm>

#include "input/Text.h"

namespace larynth {
namespace {

constexpr double kFrontF2 = 1500.0;     // Hz; front vowels aim above it
constexpr double kLongestFlap = 0.035;  // s (Zue and Laferriere 1979: 26 ms)

const PhoneEntry& EntryOf(const PhoneTable& table, const std::string& name) {
    const PhoneEntry* const entry = table.Find(name);
    if (entry == nullptr) throw BadInput("expected a phone of the table, found " + Quoted(name));
    return *entry;
}

bool IsFlapped(std::span<const SpokenPhone> phones, std::size_t i) {
    if (phones[i].entry->flap == nullptr || i == 0 || i + 1 == phones.size()) return false;
    const SpokenPhone& next = phones[i + 1];
    return IsVowel(*phones[i - 1].entry) && IsVowel(*next.entry) && next.stress == 0 && !phones[i].startsWord;
}

}  // namespace

std::vector<SpokenPhone> Allophones(const Utterance& utterance, const PhoneTable& table) {
    std::vector<SpokenPhone> phones;
    phones.reserve(utterance.phones.size());
    for (const Phone& phone : utterance.phones) {
        phones.push_back({&EntryOf(table, phone.name), 0.0, phone.duration, phone.stress,
                          phone.startsSyllable, phone.startsWord, phone.prosody});
    }
    for (std::size_t i = 0; i < phones.size(); ++i) {
        if (!IsFlapped(phones, i)) continue;
        phones[i].entry = phones[i].entry->flap;
        phones[i].end = std::min(phones[i].end, kLongestFlap);
    }
    return phones;
}

const PhoneEntry& VariantBeside(const PhoneEntry& entry, double f2) {
    return entry.front != nullptr && f2 >= kFrontF2 ? *entry.front : entry;
}

}  // namespace larynth
