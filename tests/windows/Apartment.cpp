// SPDX-License-Identifier: MIT
// Part of every test program for Windows: its main thread, and threads that say nothing else, are in the
// apartment of many threads before anything is created.
#include <larynth/Base.h>

static const HRESULT entered = CoInitializeEx(nullptr, COINIT_MULTITHREADED);
