// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <utility>
#include <vector>

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
///
/// Components may call the synthesizer from within their methods and change any role. What leaves its role
/// while a packet is rendered lives until the packet is done, as it may be what is being called.
class Roles {
  public:
    /// While it lives, a packet is rendered; others may be rendered from within it.
    class Rendering {
      public:
        explicit Rendering(Roles& roles) noexcept : roles_(roles) { ++roles_.renderings_; }
        ~Rendering() {
            if (--roles_.renderings_ == 0) std::vector(std::move(roles_.retired_)).clear();
        }
        Rendering(const Rendering&) = delete;
        Rendering& operator=(const Rendering&) = delete;

      private:
        Roles& roles_;
    };

    /// Fills every empty role with this system's own component, voicing source first; a voicing filter that
    /// is made here is wired to the source. Stops at the first creation that fails, with its code. What a
    /// class factory plugs in from within the creation stays.
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
    HRESULT Plug(ComPtr<Role>& role, IUnknown* component) {
        if (component == nullptr) return E_FAIL;
        Assign(role, {});
        ComPtr<Role> plugged;
        const HRESULT hr = plugged.QueryFrom(component);
        Assign(role, std::move(plugged));
        return hr;
    }

    void RemoveVoicingFilter() { Assign(voicingFilter, {}); }

    /// True when every role but the voicing filter's is filled.
    bool Complete() const noexcept;

    /// Hands a frame's packet to every component, voicing filter last: to a component of ours the frame that
    /// a packet of ours has filled, in any other case the packet itself. Raises ComException with the first
    /// failure.
    void SetParams(IUnknown* packet);

    /// The elements inside, where every component is this module's own and stands alone; valid until a role
    /// changes. Nothing for any other network, and for one whose voicing filter moves another source.
    std::optional<Network::Elements> OwnElements() const noexcept;

    /// The components of a sample, which live until the packet is done. All but the filter are there.
    struct Called {
        ITTSVoicingSource* voicingSource;
        ITTSAspirationSource* aspirationSource;
        ITTSFricationSource* fricationSource;
        ITTSVocalTract* vocalTract;
        ITTSParallelTract* parallelTract;
        ITTSVoicingSourceFilter* voicingFilter;

        /// Advances every component by one sample: the sum of both tracts. The sources come first, in the
        /// order voicing, aspiration, frication, which decides who draws which random number. Failures of
        /// components are not examined: a component that writes nothing contributes 0.
        double NextSample() const;
    };

    /// What is in the roles; E_FAIL is raised when one but the filter's is empty.
    Called ToCall() const;

    /// Counts the changes of roles.
    unsigned Changes() const noexcept { return changes_; }

    ComPtr<ITTSVoicingSource> voicingSource;
    ComPtr<ITTSAspirationSource> aspirationSource;
    ComPtr<ITTSFricationSource> fricationSource;
    ComPtr<ITTSVocalTract> vocalTract;
    ComPtr<ITTSParallelTract> parallelTract;
    ComPtr<ITTSVoicingSourceFilter> voicingFilter;  // the one role that may stay empty

  private:
    /// As OwnElements; false where there are none.
    bool FindOwn(Network::Elements& own) const noexcept;

    /// Puts a component into its role. Raises what running out of memory raises, with the role as it was.
    template <class Role>
    void Assign(ComPtr<Role>& role, ComPtr<Role> component) {
        if (role && renderings_ > 0) retired_.push_back(ComPtr<IUnknown>::Share(role.Get()));
        ++changes_;
        role = std::move(component);
    }

    /// Fills an empty role with a new object, unless its class factory does; true in `filled` when the new
    /// one is in it.
    template <class Role>
    HRESULT Fill(ComPtr<Role>& role, REFCLSID rclsid, bool* filled = nullptr);

    SourceKind sourceKind_ = SourceKind::Other;
    int renderings_ = 0;
    unsigned changes_ = 0;
    std::vector<ComPtr<IUnknown>> retired_;  // left their roles while a packet is rendered
};

inline double Roles::Called::NextSample() const {
    double voicing = 0.0, aspiration = 0.0, frication = 0.0, cascade = 0.0, parallel = 0.0;
    voicingSource->CalculateNext(&voicing);
    aspirationSource->CalculateNext(&aspiration);
    fricationSource->CalculateNext(&frication);
    if (voicingFilter != nullptr) voicingFilter->CalculateNext(voicing, &voicing);
    vocalTract->CalculateNext(voicing + aspiration, &cascade);
    parallelTract->CalculateNext(frication, &parallel);
    return parallel + cascade;
}

}  // namespace larynth
