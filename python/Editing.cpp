// SPDX-License-Identifier: MIT
#include <algorithm>
#include <mutex>
#include <pybind11/stl.h>

#include <larynth/UtteranceEditor.h>

#include "python/Arrays.h"
#include "python/Module.h"
#include "python/Settings.h"
#include "python/Utterances.h"

namespace larynth {
namespace {

namespace py = pybind11;

/// An editor for the threads of an interpreter: they take turns, and none holds the interpreter's lock while
/// it renders.
class SharedEditor {
    // First, because its result is deduced.
    template <class Work>
    auto InTurn(Work work) {
        const py::gil_scoped_release unlocked;
        const std::scoped_lock turn(turn_);
        return work();
    }

  public:
    SharedEditor(KlattUtterance&& utterance, const SynthesizerSettings& settings)
        : editor_(std::move(utterance), settings) {}

    py::array Frames(std::size_t first, std::size_t end) {
        // Another thread may have taken frames out since the package looked.
        const auto copy = [&] {
            const std::span<const KlattFrame> all = editor_.Utterance().frames;
            end = std::min(end, all.size());
            const auto wanted = all.subspan(std::min(first, end), end - std::min(first, end));
            return std::vector(wanted.begin(), wanted.end());
        };
        return ArrayOf(InTurn(copy), FrameDtype());
    }
    void SetFrames(std::size_t first, const py::array& frames) {
        InTurn([&, span = FramesIn(frames)] { editor_.SetFrames(first, span); });
    }
    void Insert(std::size_t index, const py::array& frames) {
        InTurn([&, span = FramesIn(frames)] { editor_.Insert(index, span); });
    }
    void Erase(std::size_t index, std::size_t count) {
        InTurn([=, this] { editor_.Erase(index, count); });
    }
    std::size_t Size() {
        return InTurn([this] { return editor_.Utterance().frames.size(); });
    }
    py::array Samples(std::size_t first) {
        const auto copy = [=, this] {
            const auto wanted = editor_.Samples().subspan(editor_.SampleOf(first));
            return std::vector(wanted.begin(), wanted.end());
        };
        return ArrayOf(InTurn(copy), py::dtype::of<std::int16_t>());
    }
    PlainMarkers Markers() {
        return InTurn([this] {
            PlainMarkers placed;
            for (const auto& [frame, text] : editor_.Utterance().markers) {
                placed.emplace_back(editor_.SampleOf(frame), text);
            }
            return placed;
        });
    }

  private:
    std::mutex turn_;
    UtteranceEditor editor_;
};

std::unique_ptr<SharedEditor> MakeEditor(const py::array& frames, const PlainMarkers& markers,
                                         double sampleFreq, bool isFilter, double volume, double outputGain,
                                         const std::optional<PlainVoice>& voice,
                                         const std::optional<Waveform>& wave,
                                         std::optional<std::uint32_t> seed) {
    const auto span = FramesIn(frames);
    KlattUtterance utterance{.sampleFreq = sampleFreq, .frames = {span.begin(), span.end()}};
    for (const auto& [frame, text] : markers) utterance.markers.push_back({frame, text});
    return std::make_unique<SharedEditor>(
        std::move(utterance), MakeSettings(sampleFreq, isFilter, volume, outputGain, voice, wave, seed));
}

}  // namespace

void BindEditing(py::module_& module) {
    py::class_<SharedEditor>(module, "Editor")
        .def(py::init(&MakeEditor))
        .def("__len__", &SharedEditor::Size)
        .def("frames", &SharedEditor::Frames)
        .def("set_frames", &SharedEditor::SetFrames)
        .def("insert", &SharedEditor::Insert)
        .def("erase", &SharedEditor::Erase)
        .def("samples", &SharedEditor::Samples)
        .def("markers", &SharedEditor::Markers);
}

}  // namespace larynth
