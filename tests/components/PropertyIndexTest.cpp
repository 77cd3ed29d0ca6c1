// SPDX-License-Identifier: MIT
#include <climits>
#include <functional>
#include <gtest/gtest.h>
#include <string>

#include "components/PropertyIndex.h"
#include "tests/support/Code.h"

namespace larynth {
namespace {

std::string NameOf(PropertyIndex& index, int dimension) {
    int length = -1;
    EXPECT_EQ(Code(index.GetNameLength(dimension, &length)), Code(S_OK));
    std::string name(static_cast<std::size_t>(length) + 1, '?');
    EXPECT_EQ(Code(index.GetName(dimension, name.data())), Code(S_OK));
    EXPECT_EQ(name.back(), '\0');
    name.pop_back();
    return name;
}

void Expect(PropertyIndex& index, int dimension, int size, int current, const std::string& name) {
    SCOPED_TRACE(dimension);
    int gotSize = -1, gotIndex = -1;
    EXPECT_EQ(Code(index.GetSize(dimension, &gotSize)), Code(S_OK));
    EXPECT_EQ(Code(index.GetIndex(dimension, &gotIndex)), Code(S_OK));
    EXPECT_EQ(gotSize, size);
    EXPECT_EQ(gotIndex, current);
    EXPECT_EQ(NameOf(index, dimension), name);
}

TEST(PropertyIndex, KeepsDimensionsWhenTheirNumberChanges) {
    PropertyIndex index;
    int count = -1;
    EXPECT_EQ(Code(index.GetDimensionCount(&count)), Code(S_OK));
    EXPECT_EQ(count, 0);
    EXPECT_EQ(Code(index.SetDimensionCount(2)), Code(S_OK));
    index.SetSize(0, 100);
    index.SetIndex(0, -7);
    index.SetName(0, "a name longer than a short string is");
    index.SetName(1, "");
    index.SetDimensionCount(3);
    Expect(index, 0, 100, -7, "a name longer than a short string is");
    Expect(index, 1, 0, 0, "");
    Expect(index, 2, 0, 0, " , ");
    index.SetDimensionCount(1);
    index.SetDimensionCount(2);
    Expect(index, 1, 0, 0, " , ");
    for (const int refused : {-1, INT_MIN, INT_MAX}) {
        EXPECT_EQ(Code(index.SetDimensionCount(refused)), Code(E_FAIL));
    }
    EXPECT_EQ(Code(index.GetDimensionCount(&count)), Code(S_OK));
    EXPECT_EQ(count, 2);
}

TEST(PropertyIndex, RefusesDimensionsThatItDoesNotHaveAndPointersThatItCannotUse) {
    static const int readOnly = 0;
    PropertyIndex index;
    index.SetDimensionCount(2);
    int value = 7;
    char buffer[8] = "?";
    const struct {
        const char* name;
        std::function<HRESULT(int)> call;
        HRESULT inside;
    } rows[] = {
        {"SetSize", [&](int d) { return index.SetSize(d, 1); }, S_OK},
        {"SetIndex", [&](int d) { return index.SetIndex(d, 1); }, S_OK},
        {"SetName", [&](int d) { return index.SetName(d, "n"); }, S_OK},
        {"SetName(null)", [&](int d) { return index.SetName(d, nullptr); }, E_POINTER},
        {"GetSize", [&](int d) { return index.GetSize(d, &value); }, S_OK},
        {"GetIndex", [&](int d) { return index.GetIndex(d, &value); }, S_OK},
        {"GetNameLength", [&](int d) { return index.GetNameLength(d, &value); }, S_OK},
        {"GetName", [&](int d) { return index.GetName(d, buffer); }, S_OK},
        {"GetName(null)", [&](int d) { return index.GetName(d, nullptr); }, E_POINTER},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        for (const int outside : {-1, 2, INT_MIN, INT_MAX}) {
            EXPECT_EQ(Code(row.call(outside)), Code(E_FAIL)) << outside;
        }
        EXPECT_EQ(value, 7);
        EXPECT_EQ(std::string(buffer), "?");
    }
    for (const auto& row : rows) EXPECT_EQ(Code(row.call(1)), Code(row.inside)) << row.name;

    int* const constant = const_cast<int*>(&readOnly);
    for (int* bad : {static_cast<int*>(nullptr), constant}) {
        for (const int dimension : {0, 2}) {
            EXPECT_EQ(Code(index.GetSize(dimension, bad)), Code(E_POINTER));
            EXPECT_EQ(Code(index.GetIndex(dimension, bad)), Code(E_POINTER));
            EXPECT_EQ(Code(index.GetNameLength(dimension, bad)), Code(E_POINTER));
        }
        EXPECT_EQ(Code(index.GetDimensionCount(bad)), Code(E_POINTER));
    }
}

TEST(PropertyIndex, IsNotCountedAndAnswersItself) {
    PropertyIndex index;
    for (const IID& id : {IID_IUnknown, IID_IACLPropertyIndex}) {
        void* answer = nullptr;
        EXPECT_EQ(Code(index.QueryInterface(id, &answer)), Code(S_OK));
        EXPECT_EQ(answer, static_cast<IACLPropertyIndex*>(&index));
    }
    void* answer = &index;
    EXPECT_EQ(Code(index.QueryInterface(IID_IACLPersistProperties, &answer)), Code(E_FAIL));
    EXPECT_EQ(answer, nullptr);
    EXPECT_EQ(Code(index.QueryInterface(IID_IUnknown, nullptr)), Code(E_POINTER));
    EXPECT_EQ(index.AddRef(), 1U);
    EXPECT_EQ(index.AddRef(), 1U);
    for (int i = 0; i < 3; ++i) EXPECT_EQ(index.Release(), 1U);
}

}  // namespace
}  // namespace larynth
