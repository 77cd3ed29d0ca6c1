// SPDX-License-Identifier: MIT
#include "python/Signals.h"

#include <algorithm>
#include <array>

#include <larynth/Streams.h>

namespace larynth {
namespace {

ComPtr<ILarynthSignals> SignalsInside(const Synthesizer& synthesizer) {
    ComPtr<ILarynthSignals> signals;
    Require(signals.QueryFrom(synthesizer.Process()), "reach a synthesizer's signals");
    return signals;
}

ComPtr<ILarynthParams> Packet(const Synthesizer& synthesizer, TractForm tract, const KlattFrame& frame,
                              std::size_t number) try {
    const ComPtr<ILarynthParams> packet = synthesizer.MakePacket(frame);
    if (tract == TractForm::Resonator) return packet;
    ComPtr<ILarynthVocalTractFilterParams> filter;
    Require(filter.QueryFrom(packet.Get()), "reach a packet's filter form");
    Require(filter->ConvertToFilter(), "convert a packet to the filter form");
    return packet;
} catch (const InputError& error) {
    throw InputError("frame " + std::to_string(number) + ": " + error.what());
}

std::size_t SampleCount(const std::vector<KlattFrame>& frames) {
    std::size_t count = 0;
    for (const KlattFrame& frame : frames) count += static_cast<std::size_t>(std::max(frame.length, 0));
    return count;
}

}  // namespace

std::vector<std::string> SignalNames(const Synthesizer& synthesizer) {
    const ComPtr<ILarynthSignals> signals = SignalsInside(synthesizer);
    int count = 0;
    Require(signals->GetSignalsCount(&count), "count the signals");
    std::vector<std::string> names;
    for (int i = 0; i < count; ++i) {
        std::array<char, 16> name{};
        Require(signals->GetSignalName(i, name.data(), name.size()), "name a signal");
        names.emplace_back(name.data());
    }
    return names;
}

std::vector<double> RenderSignals(Synthesizer& synthesizer, TractForm tract,
                                  const std::vector<KlattFrame>& frames, Interrupts& interrupts) {
    const ComPtr<ILarynthSignals> signals = SignalsInside(synthesizer);
    const std::size_t rowCount = SignalNames(synthesizer).size(), rowLength = SampleCount(frames);
    std::vector<double> rows(rowCount * rowLength), part;  // part: of one frame
    std::size_t begin = 0;
    for (const KlattFrame& frame : frames) {
        interrupts.Check();
        const ComPtr<ILarynthParams> packet =
            Packet(synthesizer, tract, frame, static_cast<std::size_t>(&frame - frames.data()));
        const auto length = static_cast<std::size_t>(frame.length);
        part.resize(rowCount * length);
        ComPtr<ITTSSoundData> block;
        Require(signals->CalculateSignals(packet.Get(), part.data(), frame.length, block.PutUnknown()),
                "render a frame's signals");
        for (std::size_t row = 0; row < rowCount; ++row) {
            std::copy_n(part.data() + row * length, length, rows.data() + row * rowLength + begin);
        }
        begin += length;
    }
    return rows;
}

}  // namespace larynth
