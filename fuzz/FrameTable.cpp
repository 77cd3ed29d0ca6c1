// SPDX-License-Identifier: MIT
// Any text is a table of frames, or targets with frames between them, or refused.
#include <cmath>

#include "fuzz/HostFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace larynth;
    constexpr int kMostFrames = 10'000;  // between targets there may be any number
    for (const FrameForm form : {FrameForm::Table, FrameForm::Targets}) {
        ReadHostFile(data, size, [form](std::istream& file) {
            FrameReader frames(file, "file", form);
            for (int i = 0; i < kMostFrames && frames.Next(); ++i) {
                const KlattFrame& frame = frames.Frame();
                Expect(frame.length >= 0 && frame.length <= kMaxFrameLen);
                Expect(std::isnormal(frames.SampleFreq()) && frames.SampleFreq() > 0.0);
                Expect(IsUtf8(frames.Marker()) && FindControl(frames.Marker()) == std::string::npos);
                for (const FrameItem& item : FrameItems()) Expect(std::isfinite(frame.*item.value));
            }
        });
    }
    return 0;
}
