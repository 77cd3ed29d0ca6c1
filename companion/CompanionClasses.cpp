// SPDX-License-Identifier: MIT
#include <larynth/Classes.h>

#include "ClassScripts.h"
#include "com/Create.h"
#include "companion/TTSObjectList.h"
#include "companion/TTSSoundData.h"
#include "companion/TTSVoice.h"
#include "module/ClassTable.h"

namespace larynth {

namespace {

// clang-format off
constinit ClassEntry classTable[] = {
    {CLSID_TTSObjectList,   script::TTSObjectList,   CreateInstance<TTSObjectList>},
    {CLSID_TTSSoundData,    script::TTSSoundData,    CreateInstance<TTSSoundData>},
    {CLSID_TTSStreamHolder, script::TTSStreamHolder, CreateInstance<TTSStreamHolder>},
    {CLSID_TTSVoice,        script::TTSVoice,        CreateInstance<TTSVoice>},
};
// clang-format on

}  // namespace

std::span<ClassEntry> ClassTable() noexcept { return classTable; }

bool HasTypeLibrary() noexcept { return false; }

}  // namespace larynth
