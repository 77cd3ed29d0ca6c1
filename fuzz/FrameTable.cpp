// SPDX-License-Identifier: MIT
// Any text is a table of frames that make packets, or refused.
#include <cmath>

#include "fuzz/HostFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace larynth;
    ReadHostFile(data, size, [](std::istream& file) {
        FrameReader frames(file, "file");
        while (frames.Next()) {
            Expect(frames.Frame().length >= 0 && frames.Frame().length <= kMaxFrameLen);
            Expect(std::isnormal(frames.SampleFreq()) && frames.SampleFreq() > 0.0);
            Expect(IsUtf8(frames.Marker()) && FindControl(frames.Marker()) == std::string::npos);
        }
    });
    return 0;
}
