// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include <larynth/ComPtr.h>
#include <larynth/Sources.h>
#include <larynth/Tracts.h>
#include <larynth/Voice.h>

#include "engine/Network.h"

namespace larynth {

/// What kind of voicing source is plugged in: decides whether a voice that brings no source may keep it.
enum class SourceKind { Other, Standard, Rbf, Wave };

/// The six components of a synthesizer, one counted reference each. Replacing a component releases the old
/// one before the new one is asked for its interface, so a failed query leaves the role empty.
class Roles {
  public:
    /// Fills every empty role with this system's own component, voicing source first; a voicing filter that
    /// is made here is wired to the source. Stops at the first creation that fails, with its code.
    HRESULT FillEmpty();

    /// Plugs in a client's source, classifies it and hands it to the voicing filter. Raises ComException:
    /// E_POINTER for an object that cannot be called, the query's code for one that is no source.
    void PlugVoicingSource(IUnknown* component);

    /// Plugs in a voice's own source: classified, given the voice's open quotient where its kind takes one,
    /// reset.
    void PlugVoiceSource(ComPtr<ITTSVoicingSource> source, ITTSVoiceSourceParams* settings);

    /// Without a source of the voice's: a standard source stays as it is, any other gives way to a new
    /// standard one.
    void KeepOrMakeStandardSource();

    /// Hands the current source to the voicing filter, if there is one.
    void WireVoicingFilter();

    /// Plugs a component into any role but the voicing source's. E_FAIL for null, else the query's result.
    template <class Role>
    static HRESULT Plug(ComPtr<Role>& role, IUnknown* component) {
        return component != nullptr ? role.QueryFrom(component) : E_FAIL;
    }

    /// True when every role but the voicing filter's is filled.
    bool Complete() const noexcept;

    /// Hands a frame's packet to every component, voicing filter last: to a component of ours the frame that
    /// a packet of ours has filled, in any other case the packet itself. Raises ComException with the first
    /// failure.
    void SetParams(IUnknown* packet);

    /// The elements inside, where every component is this module's own and stands alone; valid until a role
    /// changes. Nothing for any other network, and for one whose voicing filter moves another source.
    std::optional<Network::Elements> OwnElements() const noexcept;

    /// Advances every component by one sample: the sum of both tracts. The sources come first, in the order
    /// voicing, aspiration, frication, which decides who draws which random number. Failures of components
    /// are not examined: a component that writes nothing contributes 0.
    double NextSample();

    ComPtr<ITTSVoicingSource> voicingSource;
    ComPtr<ITTSAspirationSource> aspirationSource;
    ComPtr<ITTSFricationSource> fricationSource;
    ComPtr<ITTSVocalTract> vocalTract;
    ComPtr<ITTSParallelTract> parallelTract;
    ComPtr<ITTSVoicingSourceFilter> voicingFilter;  // the one role that may stay empty

  private:
    SourceKind sourceKind_ = SourceKind::Other;
};

inline double Roles::NextSample() {
    double voicing = 0.0, aspiration = 0.0, frication = 0.0, cascade = 0.0, parallel = 0.0;
    voicingSource->CalculateNext(&voicing);
    aspirationSource->CalculateNext(&aspiration);
    fricationSource->CalculateNext(&frication);
    if (voicingFilter) voicingFilter->CalculateNext(voicing, &voicing);
    vocalTract->CalculateNext(voicing + aspiration, &cascade);
    parallelTract->CalculateNext(frication, &parallel);
    return parallel + cascade;
}

}  // namespace larynth
