// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace larynth {

/// One number of a packet: its ID, its name, and the value that a new packet holds.
struct Item {
    int id;
    std::string name;
    double initial;
};

/// What an item stands for.
struct ItemMeaning {
    std::string_view unit, text;
};

/// By the item's name; question marks for a name that this system's packets do not have.
ItemMeaning MeaningOf(std::string_view itemName);

/// The numbers of a packet in index order.
class ItemVocabulary {
  public:
    explicit ItemVocabulary(std::vector<Item> items) : items_(std::move(items)) {}

    /// As a new packet tells it. Raises std::runtime_error.
    static ItemVocabulary OfNewPacket();

    const std::vector<Item>& Items() const noexcept { return items_; }
    const Item& operator[](int index) const { return items_[static_cast<std::size_t>(index)]; }

    /// Compared byte for byte.
    std::optional<int> IndexOf(std::string_view name) const;

  private:
    std::vector<Item> items_;
};

}  // namespace larynth
