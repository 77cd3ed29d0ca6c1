// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

#include <larynth/Larynth.h>

/// An interface by its name, for rows and failure lines.
struct NamedInterface {
    std::string_view Name;
    IID Id;
};

/// Every interface that an object could be asked for, except IUnknown.
inline constexpr NamedInterface kSystemInterfaces[] = {
    {"IClassFactory", IID_IClassFactory},
    {"ILarynthParams", IID_ILarynthParams},
    {"ILarynthVoiceParams", IID_ILarynthVoiceParams},
    {"ILarynthAspirationParams", IID_ILarynthAspirationParams},
    {"ILarynthFricationParams", IID_ILarynthFricationParams},
    {"ILarynthVocalTractParams", IID_ILarynthVocalTractParams},
    {"ILarynthParallelTractParams", IID_ILarynthParallelTractParams},
    {"ILarynthVocalTractFilterParams", IID_ILarynthVocalTractFilterParams},
    {"ITTSDoublePacket", IID_ITTSDoublePacket},
    {"ITTSTruKlattParams", IID_ITTSTruKlattParams},
    {"ITTSDecKlattParams", IID_ITTSDecKlattParams},
    {"IACLClone", IID_IACLClone},
    {"IACLPersistProperties", IID_IACLPersistProperties},
    {"IACLPropertyIndex", IID_IACLPropertyIndex},
    {"IACLPropertySink", IID_IACLPropertySink},
    {"IACLPropertySource", IID_IACLPropertySource},
    {"IACLValueHolder", IID_IACLValueHolder},
    {"ITTSResonatorFBParams", IID_ITTSResonatorFBParams},
    {"ITTSResonatorABCParams", IID_ITTSResonatorABCParams},
    {"ITTSResonatorStructInfo", IID_ITTSResonatorStructInfo},
    {"ITTSAntiResonatorFBParams", IID_ITTSAntiResonatorFBParams},
    {"ITTSAntiResonatorABCParams", IID_ITTSAntiResonatorABCParams},
    {"ITTSAntiResonatorStructInfo", IID_ITTSAntiResonatorStructInfo},
    {"ITTSVoicingSource", IID_ITTSVoicingSource},
    {"ITTSVoicingSourceStd", IID_ITTSVoicingSourceStd},
    {"ITTSVoicingSourceRBF", IID_ITTSVoicingSourceRBF},
    {"ITTSVoicingSourceWave", IID_ITTSVoicingSourceWave},
    {"ITTSVoicingSourceFilter", IID_ITTSVoicingSourceFilter},
    {"ITTSAspirationSource", IID_ITTSAspirationSource},
    {"ITTSFricationSource", IID_ITTSFricationSource},
    {"ITTSVocalTract", IID_ITTSVocalTract},
    {"ITTSVocalTractR", IID_ITTSVocalTractR},
    {"ITTSVocalTractF", IID_ITTSVocalTractF},
    {"ITTSParallelTract", IID_ITTSParallelTract},
    {"ILarynthAttributes", IID_ILarynthAttributes},
    {"IACLIOProcess", IID_IACLIOProcess},
    {"ILarynthStruct", IID_ILarynthStruct},
    {"ITTSObjectList", IID_ITTSObjectList},
    {"ITTSSyncHolder", IID_ITTSSyncHolder},
    {"ITTSSoundData", IID_ITTSSoundData},
    {"ITTSVoice", IID_ITTSVoice},
    {"ITTSVoiceSourceParams", IID_ITTSVoiceSourceParams},
    {"ITTSVoiceFilterParams", IID_ITTSVoiceFilterParams},
    {"ITTSVoiceSettings", IID_ITTSVoiceSettings},
};
