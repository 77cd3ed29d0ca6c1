// SPDX-License-Identifier: MIT
#pragma once

#include <stdexcept>

#include <larynth/Larynth.h>

namespace larynth::bench {

inline void Check(HRESULT hr) {
    if (FAILED(hr)) throw std::runtime_error("a component call failed");
}

/// Loads both modules once.
inline void LoadModules() {
    Check(LarynthLoadModule(LARYNTH_MODULE_DIR "/Larynth.so"));
    Check(LarynthLoadModule(LARYNTH_MODULE_DIR "/LarynthCompanion.so"));
}

inline ComPtr<IACLIOProcess> MakeSynthesizer() {
    ComPtr<IACLIOProcess> synthesizer;
    Check(synthesizer.Create(CLSID_Larynth));
    Check(synthesizer->Initialize(nullptr, GUID_NULL));
    return synthesizer;
}

/// What a frame contains beyond a plain vowel.
struct FrameKind {
    bool flutter = false;
    bool noise = false;  // aspiration, frication and the parallel branch
    bool tilt = false;
};

/// One frame of a vowel, 110 Hz, five formants.
inline ComPtr<ILarynthParams> MakeFrame(int length, const FrameKind& kind) {
    ComPtr<ILarynthParams> packet;
    Check(packet.Create(CLSID_LarynthParams));
    Check(packet->SetFrameLen(length));
    ComPtr<ITTSDoublePacket> items;
    items.Query(packet.Get());
    const auto set = [&items](LPCSTR name, double value) {
        int index = 0;
        Check(items->GetIndexFromName(const_cast<LPSTR>(name), &index));
        Check(items->SetItemValue(index, value));
    };
    const struct {
        LPCSTR name;
        double value;
    } vowel[] = {{"F0", 110.0},  {"AV", 900.0},  {"OQ", 0.6},    {"AH", 0.0},    {"AF", 0.0},
                 {"F1", 500.0},  {"BW1", 60.0},  {"F2", 1500.0}, {"BW2", 90.0},  {"F3", 2500.0},
                 {"BW3", 150.0}, {"F4", 3400.0}, {"BW4", 250.0}, {"F5", 4200.0}, {"BW5", 300.0}};
    for (const auto& [name, value] : vowel) set(name, value);
    if (kind.flutter) {
        set("FL", 0.05);
        set("FLT", 100000.0 / 11025.0);
    }
    if (kind.tilt) set("TL", 12.0);
    if (kind.noise) {
        const struct {
            LPCSTR name;
            double value;
        } noise[] = {{"AH", 40.0},    {"AF", 200.0},  {"AB", 0.1},     {"DI", 0.3},     {"PF0", 300.0},
                     {"PBW0", 80.0},  {"PF1", 700.0}, {"PBW1", 90.0},  {"PF2", 1500.0}, {"PG2", 0.2},
                     {"PF3", 2500.0}, {"PG3", 0.3},   {"PF4", 3400.0}, {"PG4", 0.4},    {"PF5", 4200.0},
                     {"PG5", 0.3},    {"PG6", 0.2}};
        for (const auto& [name, value] : noise) set(name, value);
    }
    return packet;
}

}  // namespace larynth::bench
