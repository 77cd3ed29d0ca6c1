// SPDX-License-Identifier: MIT
// Any bytes are packets that are rendered, or refused for the last, incomplete one.
#include "fuzz/HostFile.h"
#include "host/command/RenderInput.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace larynth;
    std::size_t count = 0;
    ReadHostFile(data, size, [&](std::istream& file) {
        PacketInput packets(file, "file", {});
        SynthesizerSettings settings;
        if (size % 2 == 1) settings.tract = TractForm::Filter;
        Synthesizer synthesizer(settings);
        for (; packets.Next(); ++count) {
            const auto samples = packets.Render(synthesizer);
            Expect(samples.size() == static_cast<std::size_t>(packets.Length()));
        }
    });
    Expect(count == size / (2 * PacketWords().size()));
    return 0;
}
