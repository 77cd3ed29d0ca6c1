// SPDX-License-Identifier: MIT
#include <climits>
#include <string>

#include "tests/packet/Packet.h"
#include "tests/support/BadPointer.h"

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

TEST(Items, AreFoundByIndexIdAndName) {
    const auto items = NewPacket<ITTSDoublePacket>();
    EXPECT_EQ(Get(As<ILarynthParams>(items), &ILarynthParams::GetSampleFreq), 11025.0);
    EXPECT_EQ(Get(items, &ITTSDoublePacket::GetItemsCount), 52);
    int index = 0;
    for (const ItemRow& row : kExpected) {
        char name[8];
        EXPECT_EQ(Code(items->GetItemName(index, name, sizeof name)), "S_OK") << row.name;
        EXPECT_STREQ(name, row.name);
        EXPECT_EQ(Get(items, &ITTSDoublePacket::GetIDFromIndex, index), row.id) << row.name;
        EXPECT_EQ(Get(items, &ITTSDoublePacket::GetIndexFromID, row.id), index) << row.name;
        EXPECT_EQ(Get(items, &ITTSDoublePacket::GetIndexFromName, name), index) << row.name;
        EXPECT_EQ(ItemValue(items, index++), row.initial) << row.name;
    }
    for (const auto& [id, same] : {std::pair(8192 + 1030, 16), {-8192 + 7, 7}})
        EXPECT_EQ(Get(items, &ITTSDoublePacket::GetIndexFromID, id), same) << "bits above the unit";
}

TEST(Items, WhatNamesNoItemFailsAndWritesNothing) {
    const auto items = NewPacket<ITTSDoublePacket>();
    int number = 77;
    for (const int id : {10, 1023, 1024 + 18, 2048 + 3, 3072 + 21, 4096, 7168, -1, INT_MAX})
        EXPECT_EQ(Code(items->GetIndexFromID(id, &number)), "E_FAIL") << id;
    for (std::string name : {"bwnz", "F", "F00", "", "PBW7", "F0 "})
        EXPECT_EQ(Code(items->GetIndexFromName(name.data(), &number)), "E_FAIL") << name;
    double value = 7.5;
    char text[40] = "kept";
    for (const int index : {-1, 52, INT_MIN, INT_MAX}) {
        EXPECT_EQ(Code(items->GetIDFromIndex(index, &number)), "E_FAIL") << index;
        EXPECT_EQ(Code(items->GetItemValue(index, &value)), "E_FAIL") << index;
        EXPECT_EQ(Code(items->SetItemValue(index, 1.0)), "E_FAIL") << index;
        EXPECT_EQ(Code(items->GetItemName(index, text, sizeof text)), "E_FAIL") << index;
    }
    for (const int length : {2, 0, -1, INT_MIN}) {
        EXPECT_EQ(Code(items->GetItemName(0, text, length)), "E_FAIL") << length;
        EXPECT_EQ(Code(items->GetItemDescription(0, text, length + 24, 1033)), "E_FAIL") << length;
    }
    EXPECT_EQ(number, 77);
    EXPECT_EQ(value, 7.5);
    EXPECT_STREQ(text, "kept");
    EXPECT_EQ(Code(items->GetItemName(0, text, 3)), "S_OK");
    EXPECT_STREQ(text, "F0");
    EXPECT_EQ(Code(items->GetItemDescription(1000, text, 27, 0)), "S_OK");
    EXPECT_STREQ(text, "No description available !");
}

TEST(Items, AreTheValuesOfTypedInterfacesAndChangeNeitherFormNorFlags) {
    const auto items = NewPacket<ITTSDoublePacket>();
    for (const auto& [index, value] : {std::pair(13, 500.0), {51, 3.0}, {29, 120.0}})
        EXPECT_EQ(Code(items->SetItemValue(index, value)), "S_OK");
    EXPECT_EQ(Get(Cascade(items, 1), &ITTSResonatorFBParams::GetFreq), 500.0);
    EXPECT_EQ(Get(Parallel(items, 6), &ITTSResonatorFBParams::GetGain), 3.0);
    EXPECT_EQ(Get(Zero(items), &ITTSAntiResonatorFBParams::GetBW), 120.0);

    const auto coefficients = Cascade<ITTSResonatorABCParams>(items, 0);
    const auto before = Form(coefficients);
    As<ILarynthVocalTractFilterParams>(items)->SetAlpha(0, 1.0);
    items->SetItemValue(10, 1000.0);
    EXPECT_EQ(Form(coefficients), before);
    EXPECT_EQ(Validity(items), std::pair(0, 2));
    coefficients->SetA(0.5);  // the coefficients alone are current
    EXPECT_EQ(ItemValue(items, 10), 1000.0) << "the item keeps its old number";
}

TEST(Items, EveryKindOfGetterRefusesBadPointers) {
    const auto items = NewPacket<ITTSDoublePacket>();
    const auto cascade = As<ILarynthVocalTractParams>(items);
    const auto voice = As<ILarynthVoiceParams>(items);
    const auto fb = Cascade(items, 0);
    char name[] = "F0";
    const ULONG references = References(items.Get());
    for (const HRESULT hr :
         {As<ILarynthParams>(items)->GetSampleFreq(ReadOnly<double>()), voice->GetAV(nullptr),
          voice->GetIDAV(ReadOnly<int>()), cascade->IsResDataValid(nullptr), fb->GetFreq(ReadOnly<double>()),
          As<ILarynthVocalTractFilterParams>(items)->GetAlpha(99, nullptr), fb->GetIDFreq(ReadOnly<int>()),
          items->GetItemsCount(nullptr), items->GetIDFromIndex(99, ReadOnly<int>()),
          items->GetIndexFromID(10, nullptr), items->GetIndexFromName(name, ReadOnly<int>()),
          items->GetItemName(99, ReadOnly<char>(), 2), items->GetItemDescription(0, nullptr, 9, 0),
          items->GetItemValue(99, ReadOnly<double>()), cascade->GetResonator(99, nullptr, IID_IUnknown),
          As<IACLClone>(items)->Clone(IID_IUnknown, ReadOnly<IUnknown*>()),
          As<ITTSResonatorStructInfo>(fb)->QueryPacketInterface(IID_IUnknown, ReadOnly<IUnknown*>())}) {
        EXPECT_EQ(Code(hr), "E_POINTER");
    }
    EXPECT_EQ(References(items.Get()), references);
}

}  // namespace
}  // namespace larynth::test
