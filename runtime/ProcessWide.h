// SPDX-License-Identifier: MIT
#pragma once

namespace larynth {

/// One object for the whole life of the process: ready before any code runs and never destroyed, so that it
/// can be used from the load and unload notices of any library.
template <class T>
union ProcessWide {
    constexpr ProcessWide() : value() {}
    ~ProcessWide() {}

    T value;
};

}  // namespace larynth
