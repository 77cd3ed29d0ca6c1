// SPDX-License-Identifier: MIT
#include <larynth/Classes.h>

#include "ClassScripts.h"
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
    {CLSID_TTSVoicingSourceFilter, script::TTSVoicingSourceFilter, CreateInstance<TTSVoicingSourceFilter>},
    {CLSID_TTSVoicingSourceWave,   script::TTSVoicingSourceWave,   CreateInstance<TTSVoicingSourceWave>},
    {CLSID_TTSFricationSource,     script::TTSFricationSource,     CreateInstance<TTSFricationSource>},
    {CLSID_TTSAspirationSource,    script::TTSAspirationSource,    CreateInstance<TTSAspirationSource>},
    {CLSID_TTSVocalTractR,         script::TTSVocalTractR,         CreateInstance<TTSVocalTractR>},
    {CLSID_TTSParallelTract,       script::TTSParallelTract,       CreateInstance<TTSParallelTract>},
    {CLSID_TTSVoicingSourceStd,    script::TTSVoicingSourceStd,    CreateInstance<TTSVoicingSourceStd>},
    {CLSID_Larynth,                script::Larynth,                CreateInstance<Larynth>},
    {CLSID_TTSAntiResonatorParams, script::TTSAntiResonatorParams, CreateInstance<TTSAntiResonatorParams>},
    {CLSID_TTSResonatorParams,     script::TTSResonatorParams,     CreateInstance<TTSResonatorParams>},
    {CLSID_LarynthParams,          script::LarynthParams,          CreateInstance<LarynthParams>},
    {CLSID_TTSVocalTractF,         script::TTSVocalTractF,         CreateInstance<TTSVocalTractF>},
};
// clang-format on

}  // namespace

std::span<ClassEntry> ClassTable() noexcept { return classTable; }

bool HasTypeLibrary() noexcept { return true; }

}  // namespace larynth
