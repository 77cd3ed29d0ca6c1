// SPDX-License-Identifier: MIT
#include "module/Registrar.h"

#include <larynth/ComException.h>

namespace larynth {

namespace {

void Require(HRESULT hr) {
    if (FAILED(hr)) throw Zelvani::ComException(DISP_E_EXCEPTION, "registering failed", nullptr, nullptr, 0);
}

/// The first failure of two results.
HRESULT Both(HRESULT first, HRESULT second) noexcept { return FAILED(first) ? first : second; }

std::string PathOf(const std::string& parent, const ScriptKey& key) { return parent + '\\' + key.name; }

}  // namespace

void Registrar::Register(const RegistryScript& script) {
    for (const ScriptKey& root : script) RegisterBlock(root);
}

void Registrar::Unregister(const RegistryScript& script) {
    HRESULT hr = S_OK;
    for (const ScriptKey& root : script) hr = Both(hr, UnregisterBlock(root));
    Require(hr);
}

void Registrar::RegisterBlock(const ScriptKey& root) {
    Require(registry_.Begin());
    try {
        Write(root.name, root);
    } catch (...) {
        static_cast<void>(Remove(root.name, root));
        static_cast<void>(End());
        throw;
    }
    Require(End());
}

HRESULT Registrar::UnregisterBlock(const ScriptKey& root) {
    if (const HRESULT hr = registry_.Begin(); FAILED(hr)) return hr;
    const HRESULT hr = Remove(root.name, root);
    return Both(hr, End());
}

/// Commits; a transaction that cannot be committed leaves everything as it was.
HRESULT Registrar::End() {
    const HRESULT hr = registry_.Commit();
    if (FAILED(hr)) registry_.Rollback();
    return hr;
}

void Registrar::Write(const std::string& path, const ScriptKey& key) {
    if (key.flag == ScriptKey::Flag::kForceRemove) Require(registry_.DeleteKey(path.c_str()));
    Require(registry_.CreateKey(path.c_str()));
    if (key.defaultValue) Require(registry_.SetValue(path.c_str(), "", key.defaultValue->c_str()));
    for (const ScriptValue& value : key.values) {
        Require(registry_.SetValue(path.c_str(), value.name.c_str(), value.text.c_str()));
    }
    for (const ScriptKey& subkey : key.subkeys) Write(PathOf(path, subkey), subkey);
}

HRESULT Registrar::Remove(const std::string& path, const ScriptKey& key) {
    if (key.flag == ScriptKey::Flag::kForceRemove || key.flag == ScriptKey::Flag::kDelete) {
        return registry_.DeleteKey(path.c_str());
    }
    HRESULT hr = S_OK;
    for (const ScriptKey& subkey : key.subkeys) hr = Both(hr, Remove(PathOf(path, subkey), subkey));
    return key.flag == ScriptKey::Flag::kNoRemove ? hr : Both(hr, RemoveWhenEmpty(path));
}

/// Named values are not removed one by one: what holds a value, the script's own or another, stays.
HRESULT Registrar::RemoveWhenEmpty(const std::string& path) {
    int subkeys = 0;
    int values = 0;
    const HRESULT hr = registry_.GetCounts(path.c_str(), &subkeys, &values);
    if (hr == REGDB_E_KEYMISSING) return S_OK;
    return SUCCEEDED(hr) && subkeys == 0 && values == 0 ? registry_.DeleteKey(path.c_str()) : hr;
}

}  // namespace larynth
