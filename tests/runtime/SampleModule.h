// SPDX-License-Identifier: MIT
/// What the sample modules offer.
#pragma once

#include <larynth/Interface.h>

/// An object of a sample module. References to it count as uses of the module.
struct LARYNTH_INTERFACE(ISample, "8d3e5b0a-1f0c-4b62-9a37-50c1f6d2e401") : IUnknown {
    virtual LONG LARYNTH_CALL ModuleNumber() = 0;
};

LARYNTH_CLASS(SampleOne, "8d3e5b0a-1f0c-4b62-9a37-50c1f6d2e411");     // module 1
LARYNTH_CLASS(SampleTwo, "8d3e5b0a-1f0c-4b62-9a37-50c1f6d2e412");     // module 2
LARYNTH_CLASS(SampleThree, "8d3e5b0a-1f0c-4b62-9a37-50c1f6d2e413");   // module 3
LARYNTH_CLASS(SampleCommon, "8d3e5b0a-1f0c-4b62-9a37-50c1f6d2e420");  // every module

/// What a test may do to a sample module as long as it is loaded; exported as "ControlSample".
struct SampleControl {
    void (*beforeClassObject)() = nullptr;  ///< runs when a class object has been asked for
    void (*afterUnloadAnswer)() = nullptr;  ///< runs when the module has made up its mind
};
using ControlSampleFunction = SampleControl* (*)();
