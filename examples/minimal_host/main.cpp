// SPDX-License-Identifier: MIT
// Interfaces alone: a packet goes in, a block of samples comes out. After `larynth register` no line that
// loads modules is needed.
#include <cstdio>

#include <larynth/Larynth.h>

int main(int, char** argv) {
    using Zelvani::CheckResult;
    for (int i : {1, 2}) CheckResult(LarynthLoadModule(argv[i]));  // Larynth.so, LarynthCompanion.so
    ComPtr<IACLIOProcess> synthesizer;
    CheckResult(synthesizer.Create(CLSID_Larynth));
    CheckResult(synthesizer->Initialize(nullptr, GUID_NULL));

    ComPtr<ILarynthParams> packet;
    CheckResult(packet.Create(CLSID_LarynthParams));
    CheckResult(packet->SetFrameLen(250));
    ComPtr<ILarynthVoiceParams> voice;
    voice.Query(packet.Get());
    voice->SetAV(800.0);

    ComPtr<ITTSSoundData> block;
    CheckResult(synthesizer->Calculate(packet.Get(), GUID_NULL, GUID_NULL, block.PutUnknown()));
    const short* samples = nullptr;
    int count = 0;
    CheckResult(block->GetSamples(&samples, &count));
    std::printf("%d samples\n", count);
}
