// SPDX-License-Identifier: MIT
#include "speech/Pauses.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "speech/Timing.h"

namespace larynth {
namespace {

constexpr double kCarefulRate = 170.0;   // words a minute
constexpr double kShortestPause = 0.06;  // s; shorter ones are taken for closures

// The phones in front of which there is room for a pause.
std::vector<std::size_t> Places(const std::vector<Phone>& phones, const std::string& pause) {
    std::vector<std::size_t> places;
    bool isStressed = false;  // the word before
    for (std::size_t i = 0; i < phones.size(); ++i) {
        if (phones[i].startsWord) {
            if (isStressed && phones[i - 1].name != pause) places.push_back(i);
            isStressed = false;
        }
        isStressed = isStressed || phones[i].stress > 0;
    }
    return places;
}

// So many of them, evenly spread.
std::vector<std::size_t> Chosen(const std::vector<std::size_t>& places, std::size_t count) {
    std::vector<std::size_t> chosen;
    for (std::size_t k = 0; k < count; ++k)
        chosen.push_back(places[(2 * k + 1) * places.size() / (2 * count)]);
    return chosen;
}

void Insert(Utterance& utterance, const std::vector<std::size_t>& places, const Phone& pause) {
    std::vector<Phone> phones;
    std::vector<std::size_t> moved;  // where each phone is
    auto place = places.begin();
    for (std::size_t i = 0; i < utterance.phones.size(); ++i) {
        if (place != places.end() && *place == i) {
            phones.push_back(pause);
            phones.back().prosody = utterance.phones[i].prosody;
            ++place;
        }
        moved.push_back(phones.size());
        phones.push_back(std::move(utterance.phones[i]));
    }
    moved.push_back(phones.size());
    const auto placeOf = [&](std::size_t phone) { return moved[std::min(phone, moved.size() - 1)]; };
    for (PitchTarget& target : utterance.pitch) target.phone = placeOf(target.phone);
    for (Mark& mark : utterance.marks) mark.phone = placeOf(mark.phone);
    utterance.phones = std::move(phones);
}

}  // namespace

PausedUtterance WithPauses(Utterance utterance, double tempo, const std::string& pause) {
    constexpr double kCareful = kCarefulRate / kUsualRate;
    if (tempo >= kCareful) return {std::move(utterance), tempo};
    double length = 0.0;
    for (const Phone& phone : utterance.phones) length += phone.name == pause ? 0.0 : phone.duration;
    const double silence = length / tempo - length / kCareful;
    const std::vector<std::size_t> places = Places(utterance.phones, pause);
    const std::size_t count = std::min(places.size(), static_cast<std::size_t>(silence / kShortestPause));
    if (count == 0) return {std::move(utterance), tempo};
    Phone inserted;
    inserted.name = pause;
    inserted.duration = kCareful * silence / static_cast<double>(count);
    Insert(utterance, Chosen(places, count), inserted);
    return {std::move(utterance), kCareful};
}

}  // namespace larynth
