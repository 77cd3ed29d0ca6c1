// SPDX-License-Identifier: MIT
/// Where the registration stores are, the user's and the system's, and who else may have a hand in them:
/// whoever can write a store has the user's programs load what he likes. The folders further up are their
/// owner's own affair.
#pragma once

#include <string>

#include <larynth/Base.h>

namespace larynth {

/// Path of the user's registration store, whether it exists or not: $LARYNTH_REGISTRY where set, else
/// larynth/registry.db below $XDG_DATA_HOME, else below ~/.local/share. Empty when none of the three
/// variables is set, and in a process that runs with more rights than its caller, to whom the variables
/// belong.
std::string UsersStoreFile();

/// Path of the store that all users share, in which a class is looked up behind the user's own. Empty where
/// LARYNTH_REGISTRY is set: then that store alone counts.
std::string SystemStoreFile();

/// The file itself, where `store` leads to over links; empty when there is none yet. Raises Failure with
/// `code` unless the path is absolute and file and folder are such as nobody but the user and root can
/// change.
std::string ExistingStoreFile(const std::string& store, HRESULT code);

/// Makes the file, and the folders above it that are missing, for the user alone; the system's store for
/// everybody to read. Raises Failure with REGDB_E_WRITEREGDB.
void CreateStoreFile(const std::string& store);

}  // namespace larynth
