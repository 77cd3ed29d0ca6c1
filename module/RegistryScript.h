// SPDX-License-Identifier: MIT
/// Registry scripts: which keys and values a class has in the registry.
///
///     HKCR { NoRemove CLSID { ForceRemove {…} = s 'text' { val Name = s 'text' } } }
///
/// A script is a sequence of blocks, each a root key and a list in braces. An entry of a list is a key, with
/// an optional flag, default value and list of its own, or a named value. A key is named by a word or by a
/// class identifier in braces. "s" marks a text, the only type. Keywords, root names and %MODULE% are
/// recognised in any case; "val" and the flags cannot name a key. Lists stand at most 100 deep.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <larynth/ComException.h>

namespace larynth {

/// A place in a text; both count from 1.
struct ScriptPosition {
    int line;
    int column;
};

/// A registry script that does not follow the format; DISP_E_EXCEPTION outside the module.
class ScriptError final : public Zelvani::ComException {
  public:
    /// `expected` is constant: what should have stood there.
    ScriptError(ScriptPosition where, const char* expected) noexcept
        : ComException(DISP_E_EXCEPTION, "malformed registry script", expected, nullptr, 0), where_(where) {}

    ScriptPosition Where() const noexcept { return where_; }
    const char* Expected() const noexcept { return Message(); }

  private:
    ScriptPosition where_;
};

struct ScriptValue {
    std::string name;
    std::string text;
};

struct ScriptKey {
    enum class Flag {
        kNone,         ///< Unregistering removes the key when nothing is left in it.
        kNoRemove,     ///< It stays.
        kForceRemove,  ///< It goes with everything below; registering starts it afresh.
        kDelete,       ///< It goes with everything below.
    };

    Flag flag = Flag::kNone;
    std::string name;
    std::optional<std::string> defaultValue{};
    std::vector<ScriptValue> values{};
    std::vector<ScriptKey> subkeys{};
};

/// The blocks: each a root by its long name, which stays.
using RegistryScript = std::vector<ScriptKey>;

/// Reads a script, with variables replaced. Raises ScriptError.
RegistryScript ParseRegistryScript(std::string_view text, std::string_view modulePath);

}  // namespace larynth
