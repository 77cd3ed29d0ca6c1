// SPDX-License-Identifier: MIT
#include <pybind11/stl.h>
#include <sstream>

#include "host/speech/SpokenText.h"
#include "input/Text.h"
#include "python/Interrupts.h"
#include "python/Module.h"
#include "python/Utterances.h"
#include "speech/FramePlanner.h"

namespace larynth {
namespace {

namespace py = pybind11;

KlattFrame FrameOf(const SpeechFrame& planned, int length) {
    static const auto kItems = [] {
        std::array<const FrameItem*, kSpeechItems> items{};
        for (std::size_t i = 0; i < items.size(); ++i) items[i] = FindFrameItem(SpeechItemName(i));
        return items;
    }();
    KlattFrame frame{.length = length};
    for (std::size_t i = 0; i < planned.size(); ++i) frame.*kItems[i]->value = planned[i];
    return frame;
}

void Append(KlattUtterance& speech, const Utterance& utterance, const SpeechStyle& style,
            Interrupts& interrupts) {
    FramePlanner planner(style.table, style.speaker, style.settings, utterance);
    for (bool isOver = false; !isOver; interrupts.Check()) {
        isOver = !planner.Next();
        for (const Mark& mark : planner.Marks()) {
            speech.markers.push_back({speech.frames.size(), Printable(mark.name)});
        }
        if (!isOver) speech.frames.push_back(FrameOf(planner.Frame(), style.settings.frameLength));
    }
}

PlainUtterance Speak(const std::string& text, const std::string& form, const std::string& lexiconFile,
                     const std::string& phoneTableFile, const std::string& voice, double rate, double pitch,
                     double range, double volume) {
    const auto known = FindTextForm(form);
    if (!known) throw InputError("form: expected text, arpabet, ipa or ssml, found " + Quoted(form));
    return PlainOf(WithoutLock([&] {
        std::istringstream input(text);
        SpokenText spoken(input, "text",
                          {.form = *known,
                           .lexiconFile = lexiconFile,
                           .phoneTableFile = phoneTableFile,
                           .speaker = FindSpeaker(voice, "voice"),
                           .settings = {.rate = rate, .pitch = pitch, .range = range, .volume = volume}});
        KlattUtterance speech{.sampleFreq = kSpeechSampleFreq};
        Interrupts interrupts;
        do Append(speech, spoken.Current(), spoken.Style(), interrupts);
        while (spoken.Next());
        return speech;
    }));
}

}  // namespace

void BindSpeaking(py::module_& module) {
    module.def("speakers", &Speaker::Names);
    module.def("speak", &Speak);
}

}  // namespace larynth
