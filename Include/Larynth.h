// SPDX-License-Identifier: MIT
/// Every interface, identifier and status code of the system, and the component runtime.
#pragma once

#include <larynth/Classes.h>
#include <larynth/ComPtr.h>
#include <larynth/Interface.h>
#include <larynth/Packet.h>
#include <larynth/Properties.h>
#include <larynth/Registry.h>
#include <larynth/Resonators.h>
#include <larynth/Runtime.h>
#include <larynth/Sources.h>
#include <larynth/Streams.h>
#include <larynth/Synthesizer.h>
#include <larynth/Tracts.h>
#include <larynth/TypeLibrary.h>
#include <larynth/Voice.h>
