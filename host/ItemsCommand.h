// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "host/ItemVocabulary.h"

namespace larynth {

/// The item vocabulary as a text table: index, ID, name, unit, the value of a new packet, meaning.
std::string ItemsText(const ItemVocabulary& vocabulary);

/// `larynth items`: writes the vocabulary to standard output.
void RunItemsCommand();

}  // namespace larynth
