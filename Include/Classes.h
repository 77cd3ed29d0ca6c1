// SPDX-License-Identifier: MIT
/// Identifiers of the creatable classes.
#pragma once

#include <larynth/Interface.h>

LARYNTH_CLASS(Larynth, "7856881e-0461-4f9d-8693-3030b63798fa");             ///< The synthesizer.
LARYNTH_CLASS(LarynthParams, "d3dcf978-3c92-4d18-aac8-578d8ba84bc0");       ///< A parameter packet.
LARYNTH_CLASS(TTSResonatorParams, "895434b4-355d-4c65-84b0-15537408a2b5");  ///< View of a packet's resonator.
LARYNTH_CLASS(TTSAntiResonatorParams,
              "3e44bc05-fa21-4d55-947e-7e073ea5fdcb");                        ///< View of its antiresonator.
LARYNTH_CLASS(TTSVoicingSourceStd, "6d49c9d8-a620-4e8e-acba-2b799e3b3748");   ///< Standard glottal source.
LARYNTH_CLASS(TTSVoicingSourceWave, "dc19c734-aede-4aaa-96aa-305ba40f8266");  ///< Wave-table source.
LARYNTH_CLASS(TTSVoicingSourceRBF,
              "62689db9-09a7-4ee7-9a4f-4a9f970a1a4f");  ///< Declared only; not creatable.
LARYNTH_CLASS(TTSVocalTractParams,
              "23988be3-90dd-4d0f-85c4-9a0c911de6fd");  ///< Reserved for the registry; not creatable.
LARYNTH_CLASS(TTSVocalTract, "eebb6992-d1bd-47f0-99e7-121cec7f6b9e");           ///< Reserved likewise.
LARYNTH_CLASS(TTSVoicingSourceFilter, "2a4abf0b-c32d-41c6-b8fc-1b9f9c323459");  ///< Tilt and flutter.
LARYNTH_CLASS(TTSVocalTractR, "e88edd50-5042-4947-984d-bd487b982ff1");          ///< Cascade of resonators.
LARYNTH_CLASS(TTSVocalTractF, "907437de-fbc7-4db7-a7fd-b4fcd0a8aef4");          ///< Cascade as one filter.
LARYNTH_CLASS(TTSParallelTract, "d688af4e-11a5-499c-a8b7-d9bbf9837120");        ///< Parallel branch.
LARYNTH_CLASS(TTSAspirationSource, "3ad8132f-0e23-47c3-a546-4623b5847c5c");     ///< Aspiration noise.
LARYNTH_CLASS(TTSFricationSource, "edc28211-6850-460b-ad84-f22be1b2a2ac");      ///< Frication noise.

LARYNTH_CLASS(TTSObjectList, "b26f7395-06df-41fe-8741-60b8a8b79ab6");  ///< Companion: a list.
LARYNTH_CLASS(TTSSoundData, "f8095d20-fb5f-46e1-8d3a-9c8a4c60b310");   ///< Companion: a sample block.
LARYNTH_CLASS(TTSStreamHolder,
              "185fd75b-6a28-4832-b30a-0dd60d635b86");            ///< Companion: a marker before a list.
LARYNTH_CLASS(TTSVoice, "d8ff2d9b-c7a3-43f5-b32c-97770f4571a3");  ///< Companion: a voice.
