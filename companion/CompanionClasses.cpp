// SPDX-License-Identifier: MIT
#include <larynth/Classes.h>

#include "com/Create.h"
#include "companion/TTSObjectList.h"
#include "companion/TTSSoundData.h"
#include "companion/TTSVoice.h"
#include "module/ClassTable.h"

namespace larynth {

namespace {

// clang-format off
constinit ClassEntry classTable[] = {
    {CLSID_TTSObjectList,   101, CreateInstance<TTSObjectList>},
    {CLSID_TTSSoundData,    102, CreateInstance<TTSSoundData>},
    {CLSID_TTSStreamHolder, 103, CreateInstance<TTSStreamHolder>},
    {CLSID_TTSVoice,        104, CreateInstance<TTSVoice>},
};
// clang-format on

}  // namespace

std::span<ClassEntry> ClassTable() noexcept { return classTable; }

bool HasTypeLibrary() noexcept { return false; }

}  // namespace larynth
