// SPDX-License-Identifier: MIT
#include <mutex>
#include <optional>
#include <pybind11/stl.h>
#include <type_traits>

#include "python/Arrays.h"
#include "python/Interrupts.h"
#include "python/Module.h"
#include "python/Settings.h"
#include "python/Signals.h"

namespace larynth {
namespace {

namespace py = pybind11;

/// A synthesizer for the threads of an interpreter: they take turns, and none holds the interpreter's lock
/// while it renders. A rendering that fails or is interrupted leaves the state as it was in front of it.
class SharedSynthesizer {
  public:
    explicit SharedSynthesizer(const SynthesizerSettings& settings)
        : tract_(settings.tract), synthesizer_(settings), signalNames_(larynth::SignalNames(synthesizer_)) {
        Require(states_.QueryFrom(synthesizer_.Process()), "reach a synthesizer's state");
    }

    /// Any work with the synthesizer.
    template <class Work>
    auto InTurn(Work work) {
        const py::gil_scoped_release unlocked;
        const std::scoped_lock turn(turn_);
        return work(synthesizer_);
    }

    py::array Render(const py::array& frames) {
        return ArrayOf(OrAsBefore([&, this, span = FramesIn(frames)] { return Samples(span); }),
                       py::dtype::of<std::int16_t>());
    }

    /// A row for each of SignalNames(), as long as the frames together.
    py::array Signals(const py::array& frames) {
        std::vector<double> rows = OrAsBefore([&, this, span = FramesIn(frames)] {
            Interrupts interrupts;
            // Copied, because other threads may change the array: room is made for these lengths.
            return RenderSignals(synthesizer_, tract_, {span.begin(), span.end()}, interrupts);
        });
        const std::size_t count = signalNames_.size(), length = rows.size() / count;
        return ArrayOf(std::move(rows), py::dtype::of<double>()).reshape(std::vector{count, length});
    }

    const std::vector<std::string>& SignalNames() const { return signalNames_; }

  private:
    /// What work gives that moves the state.
    template <class Work>
    std::invoke_result_t<Work> OrAsBefore(Work work) {
        return InTurn([&](Synthesizer&) {
            ComPtr<IUnknown> before;
            Require(states_->CreateState(before.Put()), "make a state");
            Require(states_->SaveState(before.Get()), "save a synthesizer's state");
            try {
                return work();
            } catch (...) {
                Require(states_->RestoreState(before.Get()), "put a synthesizer's state back");
                throw;
            }
        });
    }

    std::vector<std::int16_t> Samples(std::span<const KlattFrame> frames) {
        Interrupts interrupts;
        std::vector<std::int16_t> samples;
        synthesizer_.Render(frames, [&](std::span<const std::int16_t> chunk) {
            samples.insert(samples.end(), chunk.begin(), chunk.end());
            interrupts.Check();
        });
        return samples;
    }

    std::recursive_mutex turn_;  // a signal's handler may render, too
    TractForm tract_;
    Synthesizer synthesizer_;
    ComPtr<ILarynthState> states_;
    std::vector<std::string> signalNames_;
};

std::unique_ptr<SharedSynthesizer> MakeSynthesizer(double sampleFreq, bool isFilter, double volume,
                                                   double outputGain, const std::optional<PlainVoice>& voice,
                                                   const std::optional<Waveform>& wave,
                                                   std::optional<std::uint32_t> seed) {
    return std::make_unique<SharedSynthesizer>(
        MakeSettings(sampleFreq, isFilter, volume, outputGain, voice, wave, seed));
}

}  // namespace

void BindSynthesizing(py::module_& module) {
    using Shared = SharedSynthesizer;
    py::class_<Shared>(module, "Synthesizer")
        .def(py::init(&MakeSynthesizer))
        .def("render", &Shared::Render)
        .def("signals", &Shared::Signals)
        .def("signal_names", &Shared::SignalNames)
        .def("set_volume",
             [](Shared& shared, double factor) {
                 shared.InTurn([=](Synthesizer& synthesizer) { synthesizer.SetVolume(factor); });
             })
        .def("set_output_gain",
             [](Shared& shared, double factor) {
                 shared.InTurn([=](Synthesizer& synthesizer) { synthesizer.SetOutputGain(factor); });
             })
        .def("set_voice", [](Shared& shared, const std::optional<PlainVoice>& voice) {
            shared.InTurn([&](Synthesizer& synthesizer) { synthesizer.SetVoice(SettingsOf(voice)); });
        });
}

}  // namespace larynth
