// SPDX-License-Identifier: MIT
/// What this project's own modules need of the component runtime, and of each other, beyond what a host does.
/// Not installed.
#pragma once

#include <larynth/Interface.h>
#include <larynth/Runtime.h>

namespace larynth {
class NoiseGenerator;
}

/// Makes the calling thread's arithmetic take denormal numbers for 0, as input and as result, and returns the
/// mode that was in force, for LarynthSetArithmeticMode. Where a processor has no such mode nothing changes.
LARYNTH_RUNTIME_API unsigned LARYNTH_CALL LarynthFlushDenormals();

/// Puts a mode back that LarynthFlushDenormals returned on this thread.
LARYNTH_RUNTIME_API void LARYNTH_CALL LarynthSetArithmeticMode(unsigned nMode);

/// The noise generator, which all modules of the process share; it lives as long as the process.
LARYNTH_RUNTIME_API larynth::NoiseGenerator* LARYNTH_CALL LarynthNoise();

/// A number from 1 to kLarynthThreadNumbers - 1 that no other living thread has, always the same for the
/// calling thread, so that one call in a function is enough. 0, which is shared, where there are none left
/// and for a thread that is ending.
LARYNTH_RUNTIME_API unsigned LARYNTH_CALL LarynthThreadNumber() __attribute__((const));
inline constexpr unsigned kLarynthThreadNumbers = 64;

/// A root of the registration store.
struct LarynthRegistryRoot {
    LPCSTR Abbreviation;  ///< In registry scripts.
    LPCSTR Name;
};
inline constexpr LarynthRegistryRoot kLarynthRegistryRoots[] = {
    {"HKCR", "HKEY_CLASSES_ROOT"},   {"HKCU", "HKEY_CURRENT_USER"},     {"HKLM", "HKEY_LOCAL_MACHINE"},
    {"HKU", "HKEY_USERS"},           {"HKPD", "HKEY_PERFORMANCE_DATA"}, {"HKDD", "HKEY_DYN_DATA"},
    {"HKCC", "HKEY_CURRENT_CONFIG"},
};

/// A sample block of ours, which can be asked before the samples are computed.
struct LARYNTH_INTERFACE(ILarynthSampleRoom, "6fa82637-4aea-4a58-9716-b83a9e23fd58") : IUnknown {
    /// Takes the memory for `nCount` samples more, so that appending them cannot fail. E_FAIL when there is
    /// none; nothing changes then.
    virtual HRESULT LARYNTH_CALL Reserve(int nCount /*in*/) = 0;
};
