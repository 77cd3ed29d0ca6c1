// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include <larynth/Registry.h>

#include "module/RegistryScript.h"

namespace larynth {

/// Carries out registry scripts. Each block is a transaction of its own, which becomes part of the one around
/// a whole module where the runtime has begun that. What fails raises Zelvani::ComException with
/// DISP_E_EXCEPTION.
class Registrar {
  public:
    /// The registry has to outlive the registrar.
    explicit Registrar(ILarynthRegistry& registry) noexcept : registry_(registry) {}

    /// Writes every key and value of the script; a key marked ForceRemove is deleted before. When that fails
    /// part-way through a block, the block is unregistered again; blocks before it stay.
    void Register(const RegistryScript& script);

    /// Removes what the script names: a key marked ForceRemove or Delete with everything below; one without
    /// flag when, after its subkeys, it has neither subkeys nor named values left; none marked NoRemove. Goes
    /// on after a failure.
    void Unregister(const RegistryScript& script);

  private:
    void RegisterBlock(const ScriptKey& root);
    HRESULT UnregisterBlock(const ScriptKey& root);
    void Write(const std::string& path, const ScriptKey& key);
    HRESULT Remove(const std::string& path, const ScriptKey& key);
    HRESULT RemoveWhenEmpty(const std::string& path);
    HRESULT End();

    ILarynthRegistry& registry_;
};

}  // namespace larynth
