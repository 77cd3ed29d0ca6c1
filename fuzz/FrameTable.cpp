// SPDX-License-Identifier: MIT
// Any text is a table of frames that make packets, or refused.
#include <cmath>

#include "fuzz/HostFile.h"
#include "host/Frames.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace larynth;
    ReadHostFile(data, size, [](std::istream& file) {
        static const ItemVocabulary vocabulary = ItemVocabulary::OfNewPacket();
        TableReader frames(file, "file", vocabulary, {});
        while (frames.Next()) {
            Expect(frames.Length() >= 0 && frames.Length() <= FrameTableParser::kMaxFrameLen);
            Expect(std::isnormal(frames.SampleFreq()) && frames.SampleFreq() > 0.0);
            Expect(IsUtf8(frames.Marker()) && FindControl(frames.Marker()) == std::string::npos);
            int length = -1;
            frames.MakePacket()->GetFrameLen(&length);
            Expect(length == frames.Length());
        }
    });
    return 0;
}
