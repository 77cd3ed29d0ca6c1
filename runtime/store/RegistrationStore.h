// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include <larynth/Base.h>

#include "runtime/store/Database.h"

namespace larynth {

/// The registration store as a tree of keys with values, named as ILarynthRegistry says. SQLite keeps it
/// whole whatever happens and lets one writer at a time in; nothing else knows of SQLite.
///
/// Used by one thread at a time. What fails raises Failure or std::bad_alloc; a damaged store is refused
/// before anything is written to it.
class RegistrationStore {
  public:
    /// A store in memory.
    RegistrationStore() : database_(std::in_place, ":memory:") {}
    /// The file and the folders above it come into being with the first transaction. An empty path is a store
    /// that is empty and cannot be written.
    explicit RegistrationStore(std::string file) : file_(std::move(file)) {}

    void Begin();
    void Commit();
    void Rollback();

    enum class Creation { kIfMissing, kNever };

    /// Makes the transactions up to EndJoint parts of one, which keeps what they commit or, where `keep` is
    /// false, nothing of it. A store that is missing and is not to be created is an empty one in memory.
    void BeginJoint(Creation creation);
    void EndJoint(bool keep);

    void CreateKey(std::string_view key);
    /// With everything below; false when there is no such key.
    bool DeleteKey(std::string_view key);
    /// The empty name is the default value's.
    void SetValue(std::string_view key, std::string_view name, std::string_view value);

    std::optional<std::string> Value(std::string_view key, std::string_view name);

    struct Counts {
        int subkeys;  // directly below
        int values;   // without the default value
    };
    std::optional<Counts> Count(std::string_view key);

    /// The name of the key directly below at this place in alphabetical order.
    std::optional<std::string> Subkey(std::string_view key, int index);

  private:
    bool Open(HRESULT code);
    void BeginAlone();
    void Prepare();
    bool HoldsAnything();
    bool IsPrepared();
    Database& Transaction();

    std::string file_;
    std::optional<Database> database_;  // since it was first needed and there was a file
    bool inTransaction_ = false;        // between Begin and Commit or Rollback
    bool joint_ = false;                // between BeginJoint and EndJoint
};

}  // namespace larynth
