// SPDX-License-Identifier: MIT
#include <climits>
#include <gtest/gtest.h>
#include <string>

#include "components/PropertyIndex.h"
#include "tests/support/BadPointer.h"
#include "tests/support/Code.h"

namespace larynth {
namespace {

/// Size, current index and name of a dimension.
std::string Dimension(PropertyIndex& index, int dimension) {
    int size = -1, current = -1, length = -1;
    char name[64] = "?";
    EXPECT_EQ(Code(index.GetSize(dimension, &size)), "S_OK");
    EXPECT_EQ(Code(index.GetIndex(dimension, &current)), "S_OK");
    EXPECT_EQ(Code(index.GetNameLength(dimension, &length)), "S_OK");
    EXPECT_EQ(Code(index.GetName(dimension, name)), "S_OK");
    EXPECT_EQ(std::string(name).size(), static_cast<std::size_t>(length));
    return std::to_string(size) + " " + std::to_string(current) + " '" + name + "'";
}

TEST(PropertyIndex, KeepsDimensionsWhenTheirNumberChanges) {
    PropertyIndex index;
    int count = -1;
    EXPECT_EQ(Code(index.GetDimensionCount(&count)), "S_OK");
    EXPECT_EQ(count, 0);
    EXPECT_EQ(Code(index.SetDimensionCount(2)), "S_OK");
    index.SetSize(0, 100), index.SetIndex(0, -7), index.SetName(0, "a name longer than a short string is");
    index.SetName(1, "");
    index.SetDimensionCount(3);
    EXPECT_EQ(Dimension(index, 0), "100 -7 'a name longer than a short string is'");
    EXPECT_EQ(Dimension(index, 1), "0 0 ''");
    EXPECT_EQ(Dimension(index, 2), "0 0 ' , '");
    index.SetDimensionCount(1);
    index.SetDimensionCount(2);
    EXPECT_EQ(Dimension(index, 1), "0 0 ' , '");
    for (const int refused : {-1, INT_MIN, 65537, INT_MAX})
        EXPECT_EQ(Code(index.SetDimensionCount(refused)), "E_FAIL") << refused;
    EXPECT_EQ(Code(index.GetDimensionCount(&count)), "S_OK");
    EXPECT_EQ(count, 2);
    EXPECT_EQ(Code(index.SetDimensionCount(65536)), "S_OK");
}

TEST(PropertyIndex, RefusesDimensionsThatItDoesNotHaveAndPointersThatItCannotUse) {
    PropertyIndex index;
    index.SetDimensionCount(2);
    int value = 7;
    char buffer[8] = "?";
    for (const int d : {-1, 2, INT_MIN, INT_MAX}) {
        for (const HRESULT hr :
             {index.SetSize(d, 1), index.SetIndex(d, 1), index.SetName(d, nullptr), index.GetSize(d, &value),
              index.GetIndex(d, &value), index.GetNameLength(d, &value), index.GetName(d, buffer)}) {
            EXPECT_EQ(Code(hr), "E_FAIL") << d;
        }
    }
    EXPECT_EQ(value, 7);
    EXPECT_STREQ(buffer, "?");
    for (int* bad : {static_cast<int*>(nullptr), ReadOnly<int>()}) {
        for (const HRESULT hr :
             {index.GetSize(2, bad), index.GetIndex(0, bad), index.GetNameLength(0, bad),
              index.GetDimensionCount(bad), index.SetName(0, nullptr), index.GetName(0, nullptr)}) {
            EXPECT_EQ(Code(hr), "E_POINTER") << bad;
        }
    }
}

TEST(PropertyIndex, IsNotCountedAndAnswersItself) {
    PropertyIndex index;
    void* answer = nullptr;
    for (const IID& id : {IID_IUnknown, IID_IACLPropertyIndex}) {
        EXPECT_EQ(Code(index.QueryInterface(id, &answer)), "S_OK");
        EXPECT_EQ(answer, static_cast<IACLPropertyIndex*>(&index));
    }
    EXPECT_EQ(Code(index.QueryInterface(IID_IACLPersistProperties, &answer)), "E_FAIL");
    EXPECT_EQ(answer, nullptr);
    EXPECT_EQ(Code(index.QueryInterface(IID_IUnknown, nullptr)), "E_POINTER");
    for (const ULONG count :
         {index.AddRef(), index.AddRef(), index.Release(), index.Release(), index.Release()})
        EXPECT_EQ(count, 1U);
}

}  // namespace
}  // namespace larynth
