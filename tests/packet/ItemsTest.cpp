// SPDX-License-Identifier: MIT
#include <climits>
#include <string>

#include "tests/packet/NewPacket.h"
#include "tests/support/Code.h"

namespace larynth::test {

namespace {

struct ItemRow {
    const char* name;
    int id;
    double initial;
};

constexpr ItemRow kExpected[] = {
    {"F0", 0, 100.0},      {"OQ", 1, 0.5},        {"FL", 2, 0.0},         {"FLT", 3, 0.0},
    {"DI", 4, 0.0},        {"TL", 5, 0.0},        {"AV", 6, 0.0},         {"AH", 7, 30.0},
    {"AF", 8, 1.0},        {"AB", 9, 0.0},        {"FNP", 1024, 300.0},   {"BWNP", 1025, 90.0},
    {"GNP", 1026, 1.0},    {"F1", 1027, 0.0},     {"BW1", 1028, 0.0},     {"G1", 1029, 1.0},
    {"F2", 1030, 0.0},     {"BW2", 1031, 0.0},    {"G2", 1032, 1.0},      {"F3", 1033, 0.0},
    {"BW3", 1034, 0.0},    {"G3", 1035, 1.0},     {"F4", 1036, 0.0},      {"BW4", 1037, 0.0},
    {"G4", 1038, 1.0},     {"F5", 1039, 0.0},     {"BW5", 1040, 0.0},     {"G5", 1041, 1.0},
    {"FNZ", 2048, 300.0},  {"BWNZ", 2049, 90.0},  {"GNZ", 2050, 1.0},     {"PF0", 3072, 0.0},
    {"PBW0", 3073, 0.0},   {"PG0", 3074, 1.0},    {"PF1", 3075, 0.0},     {"PBW1", 3076, 0.0},
    {"PG1", 3077, 1.0},    {"PF2", 3078, 0.0},    {"PBW2", 3079, 200.0},  {"PG2", 3080, 0.0},
    {"PF3", 3081, 0.0},    {"PBW3", 3082, 200.0}, {"PG3", 3083, 0.0},     {"PF4", 3084, 0.0},
    {"PBW4", 3085, 350.0}, {"PG4", 3086, 0.0},    {"PF5", 3087, 0.0},     {"PBW5", 3088, 200.0},
    {"PG5", 3089, 0.0},    {"PF6", 3090, 4900.0}, {"PBW6", 3091, 1500.0}, {"PG6", 3092, 0.0}};

std::string Text(const char* text) { return text; }

}  // namespace

class ItemsTest : public ::testing::Test {
  protected:
    ComPtr<ITTSDoublePacket> items = NewPacket<ITTSDoublePacket>();
};

TEST_F(ItemsTest, EveryItemIsFoundByIndexIdAndName) {
    EXPECT_EQ(Get(items, &ITTSDoublePacket::GetItemsCount), 52);
    int index = 0;
    for (const ItemRow& row : kExpected) {
        SCOPED_TRACE(row.name);
        char name[8];
        int id = -1, byId = -1, byName = -1;
        EXPECT_EQ(items->GetItemName(index, name, sizeof name), S_OK);
        EXPECT_STREQ(name, row.name);
        EXPECT_EQ(items->GetIDFromIndex(index, &id), S_OK);
        EXPECT_EQ(id, row.id);
        EXPECT_EQ(items->GetIndexFromID(row.id, &byId), S_OK);
        EXPECT_EQ(byId, index);
        EXPECT_EQ(items->GetIndexFromName(name, &byName), S_OK);
        EXPECT_EQ(byName, index);
        EXPECT_EQ(ItemValue(items, index), row.initial);
        ++index;
    }
    EXPECT_EQ(index, 52);
}

TEST_F(ItemsTest, WhatNamesNoItemFailsAndWritesNothing) {
    for (const int id : {10, 1023, 1024 + 18, 2048 + 3, 3072 + 21, 4096, 7168, -1, INT_MAX}) {
        int index = 77;
        EXPECT_EQ(items->GetIndexFromID(id, &index), E_FAIL) << "ID " << id;
        EXPECT_EQ(index, 77);
    }
    for (std::string name : {"bwnz", "F", "F00", "", "PBW7", "F0 "}) {
        int index = 77;
        EXPECT_EQ(items->GetIndexFromName(name.data(), &index), E_FAIL) << name;
        EXPECT_EQ(index, 77);
    }
    for (const int index : {-1, 52, INT_MIN, INT_MAX}) {
        SCOPED_TRACE(index);
        int id = 77;
        double value = 7.5;
        char name[8] = "kept";
        EXPECT_EQ(items->GetIDFromIndex(index, &id), E_FAIL);
        EXPECT_EQ(items->GetItemValue(index, &value), E_FAIL);
        EXPECT_EQ(items->SetItemValue(index, 1.0), E_FAIL);
        EXPECT_EQ(items->GetItemName(index, name, sizeof name), E_FAIL);
        EXPECT_EQ(id, 77);
        EXPECT_EQ(value, 7.5);
        EXPECT_STREQ(name, "kept");
    }
}

TEST_F(ItemsTest, BitsOfAnIdAboveTheUnitAreIgnored) {
    int index = -1;
    EXPECT_EQ(items->GetIndexFromID(8192 + 1030, &index), S_OK);
    EXPECT_EQ(index, 16);
    EXPECT_EQ(items->GetIndexFromID(-8192 + 7, &index), S_OK);
    EXPECT_EQ(index, 7);
}

TEST_F(ItemsTest, TextsAreCopiedWholeOrNotAtAll) {
    struct {
        int index, length;
        HRESULT result;
        const char* text;
    } const names[] = {{0, 3, S_OK, "F0"},     {0, 2, E_FAIL, "kept"},  {29, 5, S_OK, "BWNZ"},
                       {0, 0, E_FAIL, "kept"}, {0, -1, E_FAIL, "kept"}, {0, INT_MIN, E_FAIL, "kept"}};
    for (const auto& row : names) {
        char buffer[8] = "kept";
        EXPECT_EQ(Code(items->GetItemName(row.index, buffer, row.length)), Code(row.result)) << row.length;
        EXPECT_EQ(Text(buffer), row.text) << row.length;
    }

    for (const int index : {0, 51, 1000, -1}) {
        char buffer[40] = "kept";
        EXPECT_EQ(items->GetItemDescription(index, buffer, 26, 1033), E_FAIL);
        EXPECT_EQ(items->GetItemDescription(index, buffer, -1, 1033), E_FAIL);
        EXPECT_EQ(Text(buffer), "kept");
        EXPECT_EQ(items->GetItemDescription(index, buffer, 27, 0), S_OK);
        EXPECT_EQ(Text(buffer), "No description available !");
    }
}

TEST_F(ItemsTest, AValueByIndexIsTheOneThatTypedInterfacesSee) {
    EXPECT_EQ(items->SetItemValue(6, 0.25), S_OK);
    EXPECT_EQ(items->SetItemValue(13, 500.0), S_OK);
    EXPECT_EQ(items->SetItemValue(51, 3.0), S_OK);
    EXPECT_EQ(Get(As<ILarynthVoiceParams>(items), &ILarynthVoiceParams::GetAV), 0.25);
    EXPECT_EQ(Get(Cascade(items, 1), &ITTSResonatorFBParams::GetFreq), 500.0);
    EXPECT_EQ(Get(Parallel(items, 6), &ITTSResonatorFBParams::GetGain), 3.0);

    Zero(items)->SetBW(120.0);
    EXPECT_EQ(ItemValue(items, 29), 120.0);
}

TEST_F(ItemsTest, AValueByIndexNeitherChangesTheFormNorTheFlags) {
    const auto coefficients = Cascade<ITTSResonatorABCParams>(items, 0);
    const double before = Get(coefficients, &ITTSResonatorABCParams::GetA);  // both forms are current now
    As<ILarynthVocalTractFilterParams>(items)->SetAlpha(0, 1.0);
    EXPECT_EQ(items->SetItemValue(10, 1000.0), S_OK);
    EXPECT_EQ(Get(coefficients, &ITTSResonatorABCParams::GetA), before);
    EXPECT_EQ(Validity(items), std::pair(0, 2));

    coefficients->SetA(0.5);  // the coefficients alone are current: the item keeps its old number
    EXPECT_EQ(ItemValue(items, 10), 1000.0);
}

}  // namespace larynth::test
