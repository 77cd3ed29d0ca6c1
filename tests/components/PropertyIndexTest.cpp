// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "components/PropertyIndex.h"
#include "tests/support/BadPointer.h"
#include "tests/support/Code.h"

namespace larynth {
namespace {

TEST(PropertyIndex, KeepsDimensionsWhenTheirNumberChanges) {
    PropertyIndex index;
    const char longName[] = "a name longer than a short string is";
    index.SetDimensionCount(2);
    index.SetSize(0, 100);
    index.SetIndex(0, -7);
    for (const int d : {0, 1}) EXPECT_EQ(Code(index.SetName(d, longName)), "S_OK");
    index.SetDimensionCount(1);
    EXPECT_EQ(Code(index.SetDimensionCount(65536)), "S_OK");
    for (const int refused : {-1, 65537})
        EXPECT_EQ(Code(index.SetDimensionCount(refused)), "E_FAIL") << refused;
    int count = -1, size = -1, current = -1, length = -1;
    char name[64] = "?";
    for (const HRESULT hr :
         {index.GetDimensionCount(&count), index.GetSize(0, &size), index.GetIndex(0, &current),
          index.GetNameLength(0, &length), index.GetName(0, name)})
        EXPECT_EQ(Code(hr), "S_OK");
    EXPECT_EQ((std::vector{count, size, current, length}), (std::vector{65536, 100, -7, 36}));
    EXPECT_STREQ(name, longName);
    index.GetName(1, name);
    EXPECT_STREQ(name, " , ");
}

TEST(PropertyIndex, RefusesDimensionsThatItDoesNotHaveAndPointersThatItCannotUse) {
    PropertyIndex index;
    index.SetDimensionCount(2);
    int value = 7;
    char buffer[8] = "?";
    for (const int d : {-1, 2}) {
        for (const HRESULT hr :
             {index.SetSize(d, 1), index.SetIndex(d, 1), index.SetName(d, nullptr), index.GetSize(d, &value),
              index.GetIndex(d, &value), index.GetNameLength(d, &value), index.GetName(d, buffer)})
            EXPECT_EQ(Code(hr), "E_FAIL") << d;
    }
    int* const bad = ReadOnly<int>();
    for (const HRESULT hr :
         {index.GetSize(2, bad), index.GetIndex(0, bad), index.GetNameLength(0, bad),
          index.GetDimensionCount(bad), index.SetName(0, nullptr), index.GetName(0, nullptr)})
        EXPECT_EQ(Code(hr), "E_POINTER");
}

}  // namespace
}  // namespace larynth
