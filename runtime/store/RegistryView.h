// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include <larynth/ComPtr.h>
#include <larynth/Registry.h>

#include "runtime/SharedObject.h"
#include "runtime/store/RegistrationStore.h"

namespace larynth {

/// A registration store as clients see it.
class RegistryView final : public SharedObject<ILarynthRegistry> {
  public:
    RegistryView() = default;  ///< Of a store in memory.
    explicit RegistryView(std::string file) : store_(std::move(file)) {}

    HRESULT LARYNTH_CALL Begin() noexcept override;
    HRESULT LARYNTH_CALL Commit() noexcept override;
    HRESULT LARYNTH_CALL Rollback() noexcept override;
    HRESULT LARYNTH_CALL CreateKey(LPCSTR sKey) noexcept override;
    HRESULT LARYNTH_CALL DeleteKey(LPCSTR sKey) noexcept override;
    HRESULT LARYNTH_CALL SetValue(LPCSTR sKey, LPCSTR sName, LPCSTR sValue) noexcept override;
    HRESULT LARYNTH_CALL GetValue(LPCSTR sKey, LPCSTR sName, LPCSTR* psValue) noexcept override;
    HRESULT LARYNTH_CALL GetCounts(LPCSTR sKey, int* pnSubkeys, int* pnValues) noexcept override;
    HRESULT LARYNTH_CALL GetSubkey(LPCSTR sKey, int nIndex, LPCSTR* psName) noexcept override;

    RegistrationStore& Store() noexcept { return store_; }

  private:
    HRESULT Give(std::optional<std::string> text, LPCSTR* out);

    RegistrationStore store_;
    std::string text_;  // the one given out last
};

/// While it lives, LarynthOpenRegistry() gives the calling thread this registry instead of the user's store.
/// Its release ends no transaction: others have it too.
class RegistrySubstitution {
  public:
    explicit RegistrySubstitution(ILarynthRegistry* registry) noexcept;
    ~RegistrySubstitution();
    static bool InForce() noexcept;
    RegistrySubstitution(const RegistrySubstitution&) = delete;
    RegistrySubstitution& operator=(const RegistrySubstitution&) = delete;

  private:
    ILarynthRegistry* previous_;
};

}  // namespace larynth
