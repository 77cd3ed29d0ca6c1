// SPDX-License-Identifier: MIT
#include "host/ItemsCommand.h"

#include <vector>

#include "host/ItemMeaning.h"
#include "host/Numbers.h"
#include "host/OutputFile.h"
#include "host/OwnModules.h"
#include "host/TextTable.h"

namespace larynth {
namespace {

std::vector<std::string> RowOf(int index, const Item& item) {
    const ItemMeaning meaning = MeaningOfItem(item.id).value_or(ItemMeaning{"?", "?"});
    return {std::to_string(index), std::to_string(item.id),    item.name,
            meaning.unit,          ShortestText(item.initial), meaning.text};
}

}  // namespace

std::string ItemsText(const ItemVocabulary& vocabulary) {
    std::vector<std::vector<std::string>> rows{{"index", "ID", "name", "unit", "initial", "meaning"}};
    for (const Item& item : vocabulary.Items()) {
        rows.push_back(RowOf(static_cast<int>(rows.size()) - 1, item));
    }
    return AlignedText(rows);
}

void RunItemsCommand() {
    LoadOwnModules();
    OutputFile output("-");
    output.Write(ItemsText(ItemVocabulary::OfNewPacket()));
    output.Commit();
}

}  // namespace larynth
