// SPDX-License-Identifier: MIT
#include <larynth/Classes.h>

#include "com/Create.h"
#include "components/NoiseSources.h"
#include "components/TTSParallelTract.h"
#include "components/TTSVocalTractF.h"
#include "components/TTSVocalTractR.h"
#include "components/TTSVoicingSourceFilter.h"
#include "components/TTSVoicingSourceStd.h"
#include "components/TTSVoicingSourceWave.h"
#include "module/ClassTable.h"
#include "packet/LarynthParams.h"
#include "packet/ResonatorParams.h"
#include "synth/Larynth.h"

namespace larynth {

namespace {

// clang-format off
constinit ClassEntry classTable[] = {
    {CLSID_TTSVoicingSourceFilter, 128, CreateInstance<TTSVoicingSourceFilter>},
    {CLSID_TTSVoicingSourceWave,   130, CreateInstance<TTSVoicingSourceWave>},
    {CLSID_TTSFricationSource,     122, CreateInstance<TTSFricationSource>},
    {CLSID_TTSAspirationSource,    120, CreateInstance<TTSAspirationSource>},
    {CLSID_TTSVocalTractR,         118, CreateInstance<TTSVocalTractR>},
    {CLSID_TTSParallelTract,       116, CreateInstance<TTSParallelTract>},
    {CLSID_TTSVoicingSourceStd,    112, CreateInstance<TTSVoicingSourceStd>},
    {CLSID_Larynth,                110, CreateInstance<Larynth>},
    {CLSID_TTSAntiResonatorParams, 106, CreateInstance<TTSAntiResonatorParams>},
    {CLSID_TTSResonatorParams,     104, CreateInstance<TTSResonatorParams>},
    {CLSID_LarynthParams,          102, CreateInstance<LarynthParams>},
    {CLSID_TTSVocalTractF,         124, CreateInstance<TTSVocalTractF>},
};
// clang-format on

}  // namespace

std::span<ClassEntry> ClassTable() noexcept { return classTable; }

bool HasTypeLibrary() noexcept { return true; }

}  // namespace larynth
