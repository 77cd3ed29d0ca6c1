// SPDX-License-Identifier: MIT
#include "host/ItemVocabulary.h"

#include <algorithm>
#include <array>

#include <larynth/Larynth.h>

#include "host/Errors.h"

namespace larynth {
namespace {

Item ReadItem(ITTSDoublePacket& packet, int index) {
    Item item{};
    std::array<char, 64> name{};
    Require(packet.GetIDFromIndex(index, &item.id), "read an item's ID");
    Require(packet.GetItemName(index, name.data(), static_cast<int>(name.size())), "read an item's name");
    Require(packet.GetItemValue(index, &item.initial), "read an item's value");
    item.name = name.data();
    return item;
}

}  // namespace

ItemVocabulary ItemVocabulary::OfNewPacket() {
    ComPtr<ITTSDoublePacket> packet;
    Require(packet.Create(CLSID_LarynthParams), "create a packet");
    int count = 0;
    Require(packet->GetItemsCount(&count), "count a packet's items");
    std::vector<Item> items;
    for (int i = 0; i < count; ++i) items.push_back(ReadItem(*packet.Get(), i));
    return ItemVocabulary(std::move(items));
}

std::optional<int> ItemVocabulary::IndexOf(std::string_view name) const {
    const auto found =
        std::find_if(items_.begin(), items_.end(), [&](const Item& i) { return i.name == name; });
    if (found == items_.end()) return std::nullopt;
    return static_cast<int>(found - items_.begin());
}

}  // namespace larynth
