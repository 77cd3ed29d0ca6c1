// SPDX-License-Identifier: MIT
// Prints a hash of the samples of each golden case, each example and each group of random tables, and of
// frames and samples made of phones. With a list's path as argument it compares instead: it prints the lines
// that differ and fails if there is one.
#include <bit>
#include <concepts>
#include <cstdio>
#include <functional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <larynth/Speech.h>

#include "bench/ForwardingOuter.h"
#include "host/Files.h"
#include "speech/FramePlanner.h"
#include "speech/SpeechSynthesizer.h"
#include "tests/golden/GoldenCase.h"
#include "tests/platforms/RandomTable.h"
#include "text/PhoneInput.h"

namespace larynth {
namespace {

/// FNV-1a of 64 bits, of the bytes in little-endian order.
class Hash {
  public:
    template <std::unsigned_integral Word>
    void Add(Word word) {
        for (std::size_t i = 0; i < sizeof(Word); ++i) {
            value_ = (value_ ^ (static_cast<std::uint64_t>(word) >> (8 * i) & 0xFFU)) * 0x100000001B3U;
        }
    }
    void Add(std::span<const std::int16_t> samples) {
        for (const std::int16_t sample : samples) Add(std::bit_cast<std::uint16_t>(sample));
    }
    std::string Text() const {
        char text[17];
        std::snprintf(text, sizeof(text), "%016llx", static_cast<unsigned long long>(value_));
        return text;
    }

  private:
    std::uint64_t value_ = 0xCBF29CE484222325U;
};

/// The hash of what a synthesizer of these settings renders: in stretches, and the same again sample by
/// sample, with a component that is a part of something foreign. Raises std::runtime_error where the two
/// differ.
std::string HashBothWays(const std::string& name, const SynthesizerSettings& settings,
                         const std::function<void(Synthesizer&, Hash&)>& render) {
    Hash inStretches, oneByOne;
    Synthesizer synthesizer(settings);
    render(synthesizer, inStretches);
    synthesizer = Synthesizer(settings);
    const auto foreign = bench::ForwardingOuter::Around(CLSID_TTSAspirationSource);
    synthesizer.PlugIn(foreign.Get(), IID_ITTSAspirationSource);
    render(synthesizer, oneByOne);
    if (inStretches.Text() == oneByOne.Text()) return name + ' ' + inStretches.Text();
    throw std::runtime_error(name + ": rendered in stretches and sample by sample, the samples differ");
}

using Lines = std::vector<std::string>;

void HashGoldenCases(Lines& lines) {
    for (const GoldenCase& row : GoldenCases()) {
        const std::string text = GoldenFile(row.input);
        std::istringstream input(text);
        SynthesizerSettings settings = SettingsOf(row);
        settings.sampleFreq = ExtentOf(*InputOf(row, input)).sampleFreq;
        lines.push_back(HashBothWays("golden " + row.name, settings, [&](auto& synthesizer, Hash& hash) {
            std::istringstream again(text);
            const auto frames = InputOf(row, again);
            while (frames->Next()) hash.Add(frames->Render(synthesizer));
        }));
    }
}

/// Twenty seconds of silence between two utterances: all states decay through the denormal numbers.
KlattUtterance WithSilence(KlattUtterance utterance) {
    const std::vector<KlattFrame> again = utterance.frames;
    KlattFrame silence = again.back();
    silence.length = static_cast<int>(utterance.sampleFreq);
    silence.AV = silence.AH = silence.AF = 0.0;
    utterance.frames.insert(utterance.frames.end(), 20, silence);
    utterance.frames.insert(utterance.frames.end(), again.begin(), again.end());
    return utterance;
}

void HashExamples(Lines& lines) {
    const auto add = [&](const std::string& name, const KlattUtterance& utterance) {
        const SynthesizerSettings settings{.sampleFreq = utterance.sampleFreq, .seed = 1};
        lines.push_back(HashBothWays("example " + name, settings, [&](auto& synthesizer, Hash& hash) {
            hash.Add(synthesizer.Render(utterance).samples);
        }));
    };
    for (const std::string name : {"sentence_female", "sentence_male", "word_married"}) {
        const KlattUtterance utterance = ReadUtterance(LARYNTH_EXAMPLES_DIR "/" + name + ".csv");
        add(name, utterance);
        if (name == "word_married") add(name + " with silence", WithSilence(utterance));
    }
}

void HashRandomTables(Lines& lines) {
    constexpr unsigned kTables = 1000, kGroup = 50;
    for (unsigned first = 0; first < kTables; first += kGroup) {
        Hash group;
        for (unsigned number = first; number < first + kGroup; ++number) {
            const RandomTable table = MakeRandomTable(number);
            for (const char c : HashBothWays(
                     "table " + std::to_string(number), table.settings,
                     [&](auto&synthesizer, Hash&hash) { hash.Add(synthesizer.Render(table.frames)); })) {
                group.Add(std::bit_cast<std::uint8_t>(c));
            }
        }
        lines.push_back("tables from " + std::to_string(first) + ' ' + group.Text());
    }
}

void HashSpeech(Lines& lines) {
    constexpr char kPhones[] = "ðə ˈkwɪk ˌbraʊn ˈfɑks, ˈdʒʌmps ˈoʊvɚ ðə ˈleɪzi ˈdɔɡ. ˈɪz ˈðɪs ə ˈtʃeɪndʒ?";
    LoadModules();
    for (const std::string& name : Speaker::Names()) {
        for (const double rate : {SpeechSettings::kSlowest, 175.0, 390.0}) {
            const SpeechSettings settings{.rate = rate, .pitch = 1.0 / 3.0 + rate / 200.0};
            const Speaker speaker = Speaker::Find(name).value();
            SpeechSynthesizer synthesizer(PhoneTable::English(), speaker, settings);
            std::istringstream input(kPhones);
            PhoneReader reader(input, "phones", {.form = TextForm::Ipa});
            Hash frames, samples;
            LarynthSeedNoise(1);
            for (Utterance utterance; reader.Next(utterance);) {
                FramePlanner planner(PhoneTable::English(), speaker, settings, utterance);
                while (planner.Next()) {
                    for (const double value : planner.Frame())
                        frames.Add(std::bit_cast<std::uint64_t>(value));
                }
                synthesizer.Begin(utterance);
                for (SpeechChunk chunk; synthesizer.Next(chunk);) samples.Add(chunk.samples);
            }
            lines.push_back("speech " + name + " at " + std::to_string(static_cast<int>(rate)) + " frames " +
                            frames.Text() + " samples " + samples.Text());
        }
    }
}

Lines AllLines() {
    Lines lines;
    HashGoldenCases(lines);
    HashExamples(lines);
    HashRandomTables(lines);
    HashSpeech(lines);
    return lines;
}

int Compare(const Lines& lines, const char* listPath) {
    InputFile list(listPath);
    int differences = 0;
    const auto differs = [&](const char* what, const std::string& line) {
        std::printf("%s %s\n", what, line.c_str());
        ++differences;
    };
    std::string expected;
    for (const std::string& line : lines) {
        if (!std::getline(list.Stream(), expected)) expected.clear();
        if (line == expected) continue;
        differs("expected", expected);
        std::printf("found    %s\n", line.c_str());
    }
    while (std::getline(list.Stream(), expected)) differs("missing ", expected);
    std::printf("%zu lines, %d differ\n", lines.size(), differences);
    return differences == 0 ? 0 : 1;
}

}  // namespace
}  // namespace larynth

int main(int count, char** arguments) try {
    const larynth::Lines lines = larynth::AllLines();
    if (count > 1) return larynth::Compare(lines, arguments[1]);
    for (const std::string& line : lines) std::puts(line.c_str());
    return 0;
} catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 2;
}
