// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <string>

/// The interfaces that the text of an interface header declares, by name, each in the form of
/// InterfaceListing(): types are spelled as in the type library, directions are those of the marks behind the
/// parameters.
std::map<std::string, std::string> HeaderListings(const std::string& header);
