// SPDX-License-Identifier: MIT
#include <array>
#include <pybind11/stl.h>

#include <larynth/Packet.h>
#include <larynth/Resonators.h>

#include "python/Arrays.h"
#include "python/Module.h"

namespace larynth {
namespace {

namespace py = pybind11;

using Coefficients = std::array<double, 3>;  // A, B, C

template <class View>
Coefficients CoefficientsOf(View& view) {
    Coefficients values{};
    Require(view.GetA(&values[0]), "read a section's coefficient");
    Require(view.GetB(&values[1]), "read a section's coefficient");
    Require(view.GetC(&values[2]), "read a section's coefficient");
    return values;
}

template <class Tract>
std::vector<Coefficients> Resonators(Tract& tract) {
    int count = 0;
    Require(tract.GetResonatorsCount(&count), "count a tract's resonators");
    std::vector<Coefficients> sections;
    for (int i = 0; i < count; ++i) {
        ComPtr<ITTSResonatorABCParams> view;
        Require(tract.GetResonator(i, view.PutUnknown(), view.Id()), "reach a resonator");
        sections.push_back(CoefficientsOf(*view.Get()));
    }
    return sections;
}

/// What a packet makes of its only frame: the nasal zero, the resonators of the cascade and of the parallel
/// branch, and the bypass's gain.
py::tuple Sections(const py::array& frame, double sampleFreq) {
    const ComPtr<ILarynthParams> packet =
        Synthesizer({.sampleFreq = sampleFreq}).MakePacket(FramesIn(frame).front());
    ComPtr<ILarynthVocalTractParams> cascade;
    Require(cascade.QueryFrom(packet.Get()), "reach a packet's cascade");
    ComPtr<ITTSAntiResonatorABCParams> zero;
    Require(cascade->GetAntiResonator(0, zero.PutUnknown(), zero.Id()), "reach the nasal zero");
    ComPtr<ILarynthParallelTractParams> parallel;
    Require(parallel.QueryFrom(packet.Get()), "reach a packet's parallel branch");
    double bypass = 0.0;
    Require(parallel->GetAB(&bypass), "read the bypass's gain");
    return py::make_tuple(CoefficientsOf(*zero.Get()), Resonators(*cascade.Get()),
                          Resonators(*parallel.Get()), bypass);
}

}  // namespace

void BindSections(py::module_& module) { module.def("sections", &Sections); }

}  // namespace larynth
