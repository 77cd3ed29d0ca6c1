// SPDX-License-Identifier: MIT
#include "speech/PhoneTable.h"

#include <algorithm>
#include <sstream>
#include <utility>
#include <vector>

#include "input/FieldLines.h"
#include "speech/Data.h"

namespace larynth {
namespace {

struct ClassName {
    std::string_view name;
    PhoneClass kind;
};

constexpr std::array kClasses{
    ClassName{"vowel", PhoneClass::Vowel},         ClassName{"diphthong", PhoneClass::Diphthong},
    ClassName{"glide", PhoneClass::Glide},         ClassName{"nasal", PhoneClass::Nasal},
    ClassName{"fricative", PhoneClass::Fricative}, ClassName{"stop", PhoneClass::Stop},
    ClassName{"affricate", PhoneClass::Affricate}, ClassName{"aspirate", PhoneClass::Aspirate},
    ClassName{"pause", PhoneClass::Pause},
};

constexpr double kPerMillisecond = 1e-3;

/// A phone's numbers in the table's units; "-" is none.
struct NumberColumn {
    std::string_view name;
    bool mayMiss;
    double least, most;
    void (*put)(PhoneEntry&, std::optional<double>);
};

template <auto Member, std::size_t Index>
void PutFormant(PhoneEntry& entry, std::optional<double> value) {
    (entry.*Member)[Index] = *value;
}

template <auto Member>
void PutTime(PhoneEntry& entry, std::optional<double> milliseconds) {
    entry.*Member = *milliseconds * kPerMillisecond;
}

template <auto Member>
void PutOptional(PhoneEntry& entry, std::optional<double> value) {
    entry.*Member = value;
}

template <std::size_t Index>
void PutBand(PhoneEntry& entry, std::optional<double> level) {
    if (!level) return;
    if (!entry.bands) entry.bands.emplace();
    (*entry.bands)[Index] = *level;
}

void PutVoiced(PhoneEntry& entry, std::optional<double> value) { entry.voiced = *value != 0.0; }
void PutYield(PhoneEntry& entry, std::optional<double> value) { entry.yield = *value; }

constexpr double kLeastHz = 50.0, kMostHz = 7900.0, kLeastDb = -90.0, kMostDb = 20.0, kMostMs = 500.0;

constexpr std::array kColumns{
    NumberColumn{"voiced", false, 0, 1, &PutVoiced},
    NumberColumn{"F1", false, kLeastHz, kMostHz, &PutFormant<&PhoneEntry::start, 0>},
    NumberColumn{"F2", false, kLeastHz, kMostHz, &PutFormant<&PhoneEntry::start, 1>},
    NumberColumn{"F3", false, kLeastHz, kMostHz, &PutFormant<&PhoneEntry::start, 2>},
    NumberColumn{"E1", false, kLeastHz, kMostHz, &PutFormant<&PhoneEntry::end, 0>},
    NumberColumn{"E2", false, kLeastHz, kMostHz, &PutFormant<&PhoneEntry::end, 1>},
    NumberColumn{"E3", false, kLeastHz, kMostHz, &PutFormant<&PhoneEntry::end, 2>},
    NumberColumn{"B1", false, 10, 2000, &PutFormant<&PhoneEntry::bandwidth, 0>},
    NumberColumn{"B2", false, 10, 2000, &PutFormant<&PhoneEntry::bandwidth, 1>},
    NumberColumn{"B3", false, 10, 2000, &PutFormant<&PhoneEntry::bandwidth, 2>},
    NumberColumn{"S1", false, 0, 1, &PutFormant<&PhoneEntry::slope, 0>},
    NumberColumn{"S2", false, 0, 1, &PutFormant<&PhoneEntry::slope, 1>},
    NumberColumn{"S3", false, 0, 1, &PutFormant<&PhoneEntry::slope, 2>},
    NumberColumn{"yield", false, 0, 1, &PutYield},
    NumberColumn{"transition", false, 0, kMostMs, &PutTime<&PhoneEntry::transition>},
    NumberColumn{"shortest", false, 0, kMostMs, &PutTime<&PhoneEntry::shortest>},
    NumberColumn{"voicing", true, kLeastDb, kMostDb, &PutOptional<&PhoneEntry::voicing>},
    NumberColumn{"frication", true, kLeastDb, kMostDb, &PutOptional<&PhoneEntry::frication>},
    NumberColumn{"onset", false, 0, kMostMs, &PutTime<&PhoneEntry::onset>},
    NumberColumn{"burst", false, 0, kMostMs, &PutTime<&PhoneEntry::burst>},
    NumberColumn{"zero", true, kLeastHz, kMostHz, &PutOptional<&PhoneEntry::zero>},
    NumberColumn{"P1", true, kLeastDb, kMostDb, &PutBand<0>},
    NumberColumn{"P2", true, kLeastDb, kMostDb, &PutBand<1>},
    NumberColumn{"P3", true, kLeastDb, kMostDb, &PutBand<2>},
    NumberColumn{"P4", true, kLeastDb, kMostDb, &PutBand<3>},
    NumberColumn{"P5", true, kLeastDb, kMostDb, &PutBand<4>},
    NumberColumn{"P6", true, kLeastDb, kMostDb, &PutBand<5>},
    NumberColumn{"P7", true, kLeastDb, kMostDb, &PutBand<6>},
    NumberColumn{"PB", true, kLeastDb, kMostDb, &PutBand<7>},
};

constexpr std::array<std::string_view, 4> kTextColumns{"phone", "class", "front", "flap"};
constexpr std::string_view kNone = "-";

bool IsNoise(PhoneClass kind) {
    return kind == PhoneClass::Fricative || kind == PhoneClass::Stop || kind == PhoneClass::Affricate;
}

}  // namespace

/// Reads one table.
class PhoneTableParser {
  public:
    PhoneTableParser(std::istream& input, std::string fileName)
        : lines_(input, std::move(fileName), FieldLines::Separator::Blanks) {}

    PhoneTable Read() {
        ReadHeader();
        while (lines_.Next()) ReadPhone();
        if (table_.pause_ == nullptr) Fail("a phone of class pause");
        for (auto& [entry, link, name] : links_) {
            entry->*link = table_.Find(name);
            if (entry->*link == nullptr)
                Fail("a line for phone " + name + ", which " + entry->name + " names");
        }
        return std::move(table_);
    }

  private:
    struct Link {
        PhoneEntry* entry;
        const PhoneEntry* PhoneEntry::*member;
        std::string name;  // of the phone that is meant, which may come later
    };

    [[noreturn]] void Fail(const std::string& expected) const {
        throw BadInput(lines_.Beginning(), expected);
    }

    static bool IsColumn(std::string_view name) {
        const auto named = [&](const NumberColumn& column) { return column.name == name; };
        return std::find(kTextColumns.begin(), kTextColumns.end(), name) != kTextColumns.end() ||
               std::any_of(kColumns.begin(), kColumns.end(), named);
    }

    void ReadHeader() {
        if (!lines_.Next()) Fail("a line that names the columns");
        for (const std::string_view field : lines_.Fields()) {
            if (!IsColumn(field)) lines_.Fail(field, "the name of a column");
            if (!places_.emplace(field, places_.size()).second) lines_.Fail(field, "each column once");
        }
        for (const std::string_view name : kTextColumns) RequireColumn(name);
        for (const NumberColumn& column : kColumns) RequireColumn(column.name);
    }

    void RequireColumn(std::string_view name) const {
        if (!places_.contains(name)) Fail("a column " + std::string(name));
    }

    std::string_view Field(std::string_view column) const {
        return lines_.Fields()[places_.find(column)->second];
    }

    void ReadPhone() {
        if (lines_.Fields().size() != places_.size()) {
            Fail(std::to_string(places_.size()) + " fields, found " + std::to_string(lines_.Fields().size()));
        }
        const std::string name(Field("phone"));
        if (!IsUtf8(name)) lines_.Fail(Field("phone"), "UTF-8");
        const auto [place, isNew] = table_.entries_.try_emplace(name);
        if (!isNew) lines_.Fail(Field("phone"), "each phone once");
        PhoneEntry& entry = place->second;
        entry.name = name;
        entry.kind = ReadClass(Field("class"));
        for (const NumberColumn& column : kColumns) ReadNumber(column, entry);
        if (IsNoise(entry.kind) && entry.frication && !entry.bands) lines_.Fail(Field("P1"), "a level in dB");
        AddLink(entry, &PhoneEntry::front, Field("front"));
        AddLink(entry, &PhoneEntry::flap, Field("flap"));
        if (entry.kind == PhoneClass::Pause) table_.pause_ = &entry;
    }

    PhoneClass ReadClass(std::string_view field) const {
        const auto found = std::find_if(kClasses.begin(), kClasses.end(),
                                        [&](const ClassName& row) { return row.name == field; });
        if (found == kClasses.end()) {
            lines_.Fail(field,
                        "vowel, diphthong, glide, nasal, fricative, stop, affricate, aspirate or pause");
        }
        return found->kind;
    }

    void ReadNumber(const NumberColumn& column, PhoneEntry& entry) const {
        const std::string_view field = Field(column.name);
        const std::string what =
            std::string(column.name) + (column.mayMiss ? ": - or a number" : ": a number");
        std::optional<double> value;
        if (!column.mayMiss || field != kNone) value = lines_.Number(field, column.least, column.most, what);
        column.put(entry, value);
    }

    void AddLink(PhoneEntry& entry, const PhoneEntry* PhoneEntry::*member, std::string_view name) {
        if (name != kNone) links_.push_back({&entry, member, std::string(name)});
    }

    FieldLines lines_;
    std::map<std::string, std::size_t, std::less<>> places_;  // of the columns in a line
    std::vector<Link> links_;
    PhoneTable table_;
};

PhoneTable PhoneTable::Parse(std::istream& input, std::string fileName) {
    return PhoneTableParser(input, std::move(fileName)).Read();
}

const PhoneTable& PhoneTable::English() {
    static const PhoneTable table = [] {
        std::istringstream text{std::string(DataFile("en-us.tsv"))};
        return Parse(text, "en-us.tsv");
    }();
    return table;
}

const PhoneEntry* PhoneTable::Find(std::string_view name) const {
    const auto found = entries_.find(name);
    return found == entries_.end() ? nullptr : &found->second;
}

}  // namespace larynth
