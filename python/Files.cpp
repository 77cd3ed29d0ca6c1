// SPDX-License-Identifier: MIT
#include <pybind11/stl.h>

#include "python/Arrays.h"
#include "python/Module.h"
#include "python/Utterances.h"
#include "python/Voices.h"

namespace larynth {
namespace {

namespace py = pybind11;

using PlainTarget = std::tuple<double, std::string, double, bool>;  // time, item, value, whether by a cosine

PlainUtterance Read(const std::string& path, bool isTargets, std::optional<int> frameLen,
                    std::optional<double> sampleFreq) {
    const FrameForm form = isTargets ? FrameForm::Targets : FrameForm::Table;
    return PlainOf(WithoutLock([&] { return ReadUtterance(path, form, {frameLen, sampleFreq}); }));
}

PlainUtterance FromTargets(const std::vector<PlainTarget>& rows, std::optional<int> frameLen,
                           std::optional<double> sampleFreq) {
    std::vector<Target> targets;
    for (const auto& [time, item, value, isCosine] : rows) {
        targets.push_back({time, item, value, isCosine ? Approach::Cosine : Approach::Linear});
    }
    return PlainOf(WithoutLock([&] { return FramesFromTargets(targets, {frameLen, sampleFreq}); }));
}

void Write(const std::string& path, const std::string& labelPath, double sampleFreq,
           const py::array_t<std::int16_t, py::array::c_style>& samples, const PlainMarkers& markers) {
    Sound sound{sampleFreq, {samples.data(), samples.data() + samples.size()}, {}};
    for (const auto& [sample, text] : markers) sound.markers.push_back({sample, text});
    WithoutLock([&] { sound.Write(path, labelPath); });
}

}  // namespace

void BindFiles(py::module_& module) {
    module.def("read", &Read);
    module.def("frames_from_targets", &FromTargets);
    module.def("read_voice", [](const std::string& path) { return PlainOf(ReadVoice(path)); });
    module.def("read_waveform", &ReadWaveform);
    module.def("write", &Write);
}

}  // namespace larynth
