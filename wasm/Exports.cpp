// SPDX-License-Identifier: MIT
// What the WebAssembly module exports; larynth.mjs makes JavaScript of it. Objects are passed as addresses
// and belong to the caller. A function that fails gives null or kFailed, and LarynthErrorText() says why.
#include <cstddef>
#include <cstdint>
#include <exception>
#include <optional>
#include <sstream>
#include <string>

#include <larynth/Speech.h>

#include "input/BadInput.h"
#include "speech/SpeechSynthesizer.h"
#include "text/PhoneInput.h"

#define LARYNTH_EXPORT extern "C" [[gnu::used, gnu::visibility("default")]]

namespace larynth::wasm {
namespace {

constexpr int kFailed = -2;
constexpr int kOver = -1;

std::string errorText;

/// The result of `work`, or `failed` when it raises something.
template <class Result, class Work>
Result Try(Result failed, Work work) noexcept try {
    return work();
} catch (const std::exception& error) {
    errorText = error.what();
    return failed;
}

/// A synthesizer with the frame that it renders next.
struct FrameSynthesizer {
    explicit FrameSynthesizer(const SynthesizerSettings& settings) : synthesizer(settings) {}

    Synthesizer synthesizer;
    KlattFrame frame;
    std::span<const std::int16_t> samples;  // of the last frame
};

/// Somebody who speaks the phones of a text.
class PhoneSpeaker {
  public:
    PhoneSpeaker(const std::string& name, const SpeechSettings& settings)
        : synthesizer_(PhoneTable::English(), Named(name), settings) {}

    void Begin(const std::string& phones, TextForm form) {
        input_ = std::istringstream(phones);
        reader_.emplace(input_, "phones", TextOptions{.form = form});
        synthesizer_.Begin({});
    }

    /// The next chunk's number of samples, or kOver.
    int Next() {
        while (!synthesizer_.Next(chunk)) {
            Utterance utterance;
            if (!reader_ || !reader_->Next(utterance)) return kOver;
            synthesizer_.Begin(utterance);
        }
        return static_cast<int>(chunk.samples.size());
    }

    SpeechChunk chunk;

  private:
    static Speaker Named(const std::string& name) {
        if (const auto speaker = Speaker::Find(name)) return *speaker;
        std::string names;
        for (const std::string& known : Speaker::Names()) names += (names.empty() ? "" : ", ") + known;
        throw BadInput("expected a speaker of " + names + ", found " + name);
    }

    SpeechSynthesizer synthesizer_;
    std::istringstream input_;
    std::optional<PhoneReader> reader_;
};

}  // namespace
}  // namespace larynth::wasm

using namespace larynth;        // NOLINT(google-build-using-namespace): what is exported has no namespace
using namespace larynth::wasm;  // NOLINT(google-build-using-namespace)

LARYNTH_EXPORT const char* LarynthErrorText() { return errorText.c_str(); }

/// Null behind the last item, whose numbers count from 0.
LARYNTH_EXPORT const char* LarynthItemName(unsigned item) {
    return item < kFrameItems ? FrameItems()[item].name.data() : nullptr;
}

LARYNTH_EXPORT FrameSynthesizer* LarynthNewSynthesizer(double sampleFreq, bool filterTract, double volume,
                                                       double outputGain) {
    return Try<FrameSynthesizer*>(nullptr, [&] {
        return new FrameSynthesizer({.sampleFreq = sampleFreq,
                                     .tract = filterTract ? TractForm::Filter : TractForm::Resonator,
                                     .volume = volume,
                                     .outputGain = outputGain});
    });
}

LARYNTH_EXPORT void LarynthDeleteSynthesizer(FrameSynthesizer* synthesizer) { delete synthesizer; }

/// `voice` is the text of a voice file. 0, or kFailed.
LARYNTH_EXPORT int LarynthSetVoice(FrameSynthesizer* synthesizer, const char* voice) {
    return Try(kFailed, [&] {
        synthesizer->synthesizer.SetVoice(ParseVoice(voice, "voice"));
        return 0;
    });
}

/// The values of the frame to be rendered, one behind the other in the order of their numbers; at first those
/// of a new packet.
LARYNTH_EXPORT double* LarynthItems(FrameSynthesizer* synthesizer) { return &synthesizer->frame.F0; }

/// The number of samples, or kFailed.
LARYNTH_EXPORT int LarynthRenderFrame(FrameSynthesizer* synthesizer, int length) {
    return Try(kFailed, [&] {
        synthesizer->frame.length = length;
        synthesizer->samples = synthesizer->synthesizer.RenderChunk(synthesizer->frame);
        return static_cast<int>(synthesizer->samples.size());
    });
}

/// Of the last frame, until the next one.
LARYNTH_EXPORT const std::int16_t* LarynthFrameSamples(FrameSynthesizer* synthesizer) {
    return synthesizer->samples.data();
}

/// `rate` in words a minute; `pitch`, `range` and `volume` are factors, SpeechSettings has their meaning.
LARYNTH_EXPORT PhoneSpeaker* LarynthNewSpeaker(const char* name, double rate, double pitch, double range,
                                               double volume) {
    return Try<PhoneSpeaker*>(nullptr, [&] {
        return new PhoneSpeaker(name, {.rate = rate, .pitch = pitch, .range = range, .volume = volume});
    });
}

LARYNTH_EXPORT void LarynthDeleteSpeaker(PhoneSpeaker* speaker) { delete speaker; }

/// Begins a text of phones, IPA or ARPAbet; what is left of the one before is dropped. 0, or kFailed.
LARYNTH_EXPORT int LarynthBegin(PhoneSpeaker* speaker, const char* phones, bool isIpa) {
    return Try(kFailed, [&] {
        speaker->Begin(phones, isIpa ? TextForm::Ipa : TextForm::Arpabet);
        return 0;
    });
}

/// The number of samples of the next chunk, kOver, or kFailed.
LARYNTH_EXPORT int LarynthNextChunk(PhoneSpeaker* speaker) {
    return Try(kFailed, [&] { return speaker->Next(); });
}

/// Of the chunk, until the next one.
LARYNTH_EXPORT const std::int16_t* LarynthChunkSamples(PhoneSpeaker* speaker) {
    return speaker->chunk.samples.data();
}

/// A word of the chunk, counted from 0; null behind the last one.
LARYNTH_EXPORT const char* LarynthWord(PhoneSpeaker* speaker, unsigned number) {
    const auto& marks = speaker->chunk.marks;
    return number < marks.size() ? marks[number].mark.name.c_str() : nullptr;
}

/// How many samples of the chunk are in front of it.
LARYNTH_EXPORT unsigned LarynthWordPlace(PhoneSpeaker* speaker, unsigned number) {
    return static_cast<unsigned>(speaker->chunk.marks[number].sample);
}
