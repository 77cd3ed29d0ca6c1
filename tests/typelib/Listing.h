// SPDX-License-Identifier: MIT
/// A type library as lines for people.
#pragma once

#include <string>

#include <larynth/Larynth.h>

/// "e1d6ebce-52c7-4e5a-81d6-68214bd2805b".
std::string IdText(const GUID& id);

/// The library of a module or ".tlb" file; raises std::runtime_error with the reason when there is none.
ComPtr<ILarynthTypeLibrary> LoadLibraryOf(const std::string& path);

/// An interface: its identifier and base, then a line a method: slot, result, name, parameters.
std::string InterfaceListing(ILarynthTypeLibrary& library, int type);

/// The whole library: what it says of itself, then its types in their order.
std::string Listing(ILarynthTypeLibrary& library);
