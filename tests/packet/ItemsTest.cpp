// SPDX-License-Identifier: MIT
#include <climits>
#include <string>

#include "tests/packet/Packet.h"
#include "tests/support/BadPointer.h"

namespace larynth::test {
namespace {

TEST(Items, AreFoundByIndexIdAndName) {
    const auto items = NewPacket<ITTSDoublePacket>();
    EXPECT_EQ(Get(items, &ITTSDoublePacket::GetItemsCount), 52);
    for (int index = 0; index < 52; ++index) {
        char name[8];
        EXPECT_EQ(Code(items->GetItemName(index, name, sizeof name)), "S_OK") << index;
        EXPECT_EQ(Get(items, &ITTSDoublePacket::GetIndexFromName, name), index);
        const int id = Get(items, &ITTSDoublePacket::GetIDFromIndex, index);
        EXPECT_EQ(Get(items, &ITTSDoublePacket::GetIndexFromID, id), index);
    }
    const std::tuple<int, int, double> kFirstsAndLasts[] = {
        {0, 0, 100.0},     {9, 9, 0.0},     {10, 1024, 300.0}, {27, 1041, 1.0},
        {28, 2048, 300.0}, {30, 2050, 1.0}, {31, 3072, 0.0},   {51, 3092, 0.0}};
    for (const auto& [index, id, initial] : kFirstsAndLasts) {
        EXPECT_EQ(Get(items, &ITTSDoublePacket::GetIDFromIndex, index), id);
        EXPECT_EQ(ItemValue(items, index), initial) << index;
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
    double value = 0.0;
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
    EXPECT_STREQ(text, "kept");
    EXPECT_EQ(Code(items->GetItemName(0, text, 3)), "S_OK");
    EXPECT_STREQ(text, "F0");
    EXPECT_EQ(Code(items->GetItemDescription(1000, text, 27, 0)), "S_OK");
    EXPECT_STREQ(text, "No description available !");
}

TEST(Items, EveryKindOfGetterRefusesBadPointers) {
    const auto items = NewPacket<ITTSDoublePacket>();
    const auto cascade = As<ILarynthVocalTractParams>(items);
    const auto fb = Cascade(items, 0);
    char name[] = "F0";
    for (const HRESULT hr :
         {cascade->IsResDataValid(nullptr), fb->GetFreq(ReadOnly<double>()),
          As<ILarynthVocalTractFilterParams>(items)->GetAlpha(99, nullptr), fb->GetIDFreq(ReadOnly<int>()),
          items->GetItemsCount(nullptr), items->GetIDFromIndex(99, ReadOnly<int>()),
          items->GetIndexFromID(10, nullptr), items->GetIndexFromName(name, ReadOnly<int>()),
          items->GetItemName(99, ReadOnly<char>(), 2), items->GetItemDescription(0, nullptr, 9, 0),
          items->GetItemValue(99, ReadOnly<double>()), cascade->GetResonator(99, nullptr, IID_IUnknown),
          As<IACLClone>(items)->Clone(IID_IUnknown, ReadOnly<IUnknown*>()),
          As<ITTSResonatorStructInfo>(fb)->QueryPacketInterface(IID_IUnknown, ReadOnly<IUnknown*>())}) {
        EXPECT_EQ(Code(hr), "E_POINTER");
    }
}

}  // namespace
}  // namespace larynth::test
