// SPDX-License-Identifier: MIT
#include <climits>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "tests/companion/Companion.h"
#include "tests/support/Code.h"

namespace {

struct ListRow {
    const char* Name;
    CLSID Id;
};

/// Every class that is a list.
class ObjectList : public testing::TestWithParam<ListRow> {
  protected:
    int Count() const {
        int count = -1;
        EXPECT_EQ(Code(List->GetCount(&count)), Code(S_OK));
        return count;
    }

    /// The items in order, by their place in Items.
    std::vector<long> Order() const {
        std::vector<long> order;
        for (int i = 0; i < Count(); ++i) {
            ComPtr<IUnknown> item;
            EXPECT_EQ(Code(List->GetItem(i, IID_IUnknown, item.PutUnknown())), Code(S_OK));
            order.push_back(static_cast<CountedObject*>(item.Get()) - Items);
        }
        return order;
    }

    void AddAll() {
        for (CountedObject& item : Items) ASSERT_EQ(Code(List->Add(&item)), Code(S_OK));
    }

    using Places = std::vector<long>;

    CountedObject Items[4];
    ComPtr<ITTSObjectList> List = New<ITTSObjectList>(GetParam().Id);
};

TEST_P(ObjectList, StartsEmptyAndKeepsTheOrderOfAdding) {
    EXPECT_EQ(Count(), 0);
    AddAll();
    EXPECT_EQ(Code(List->Add(&Items[1])), Code(S_OK));  // an object may stand in the list more than once
    EXPECT_EQ(Order(), (Places{0, 1, 2, 3, 1}));
}

TEST_P(ObjectList, InsertsReplacesAndRemovesByIndex) {
    AddAll();
    EXPECT_EQ(Code(List->Insert(0, &Items[3])), Code(S_OK));
    EXPECT_EQ(Order(), (Places{3, 0, 1, 2, 3}));
    EXPECT_EQ(Code(List->Insert(5, &Items[0])), Code(S_OK));  // in front of the end
    EXPECT_EQ(Order(), (Places{3, 0, 1, 2, 3, 0}));
    EXPECT_EQ(Code(List->SetItem(2, &Items[2])), Code(S_OK));
    EXPECT_EQ(Order(), (Places{3, 0, 2, 2, 3, 0}));
    EXPECT_EQ(Code(List->Remove(5)), Code(S_OK));
    EXPECT_EQ(Code(List->Remove(0)), Code(S_OK));
    EXPECT_EQ(Order(), (Places{0, 2, 2, 3}));
    EXPECT_EQ(Code(List->Clear()), Code(S_OK));
    EXPECT_EQ(Order(), Places{});
}

TEST_P(ObjectList, HoldsOneReferencePerPlace) {
    AddAll();
    List->Add(&Items[1]);
    EXPECT_EQ(Items[1].References, 3U);
    List->SetItem(1, &Items[0]);
    EXPECT_EQ(Items[1].References, 2U);
    EXPECT_EQ(Items[0].References, 3U);
    List->Remove(0);
    EXPECT_EQ(Items[0].References, 2U);
    List->SetItem(0, &Items[0]);  // by itself
    EXPECT_EQ(Items[0].References, 2U);
    List->Clear();
    for (const CountedObject& item : Items) EXPECT_EQ(item.References, 1U);
    AddAll();
    EXPECT_EQ(List.Detach()->Release(), 0U);
    for (const CountedObject& item : Items) EXPECT_EQ(item.References, 1U);
}

TEST_P(ObjectList, RefusesAnIndexOutsideAndStaysAsItWas) {
    AddAll();
    for (int index : {-1, 4, 5, INT_MIN, INT_MAX}) {
        SCOPED_TRACE(index);
        IUnknown* item = &Items[0];
        EXPECT_EQ(Code(List->GetItem(index, IID_IUnknown, &item)), Code(E_FAIL));
        EXPECT_EQ(item, nullptr);
        EXPECT_EQ(Code(List->Remove(index)), Code(E_FAIL));
        EXPECT_EQ(Code(List->SetItem(index, &Items[0])), Code(E_FAIL));
        if (index != 4) {
            EXPECT_EQ(Code(List->Insert(index, &Items[0])), Code(E_FAIL));
        }
    }
    EXPECT_EQ(Order(), (Places{0, 1, 2, 3}));
}

TEST_P(ObjectList, RefusesBadPointers) {
    AddAll();
    EXPECT_EQ(Code(List->Add(nullptr)), Code(E_POINTER));
    EXPECT_EQ(Code(List->Insert(0, nullptr)), Code(E_POINTER));
    EXPECT_EQ(Code(List->SetItem(0, nullptr)), Code(E_POINTER));
    EXPECT_EQ(Code(List->GetCount(nullptr)), Code(E_POINTER));
    EXPECT_EQ(Code(List->GetCount(ReadOnly<int>())), Code(E_POINTER));
    EXPECT_EQ(Code(List->GetItem(0, IID_IUnknown, nullptr)), Code(E_POINTER));
    EXPECT_EQ(Code(List->GetItem(0, IID_IUnknown, ReadOnly<IUnknown*>())), Code(E_POINTER));
    EXPECT_EQ(Code(List->GetItem(9, IID_IUnknown, nullptr)), Code(E_POINTER));
    EXPECT_EQ(Order(), (Places{0, 1, 2, 3}));
}

TEST_P(ObjectList, GivesTheItemsCodeAndNullForAnInterfaceThatItLacks) {
    AddAll();
    IUnknown* item = &Items[0];
    EXPECT_EQ(Code(List->GetItem(0, IID_ILarynthParams, &item)), Code(E_NOINTERFACE));
    EXPECT_EQ(item, nullptr);
    EXPECT_EQ(Items[0].References, 2U);
}

TEST_P(ObjectList, RefusesChangesUntilEveryLockIsGivenBack) {
    AddAll();
    EXPECT_EQ(Code(List->Unlock()), Code(E_FAIL));
    EXPECT_EQ(Code(List->Lock()), Code(S_OK));
    EXPECT_EQ(Code(List->Lock()), Code(S_OK));
    for (int locks = 2; locks > 0; --locks) {
        EXPECT_EQ(Code(List->Add(&Items[0])), Code(E_FAIL));
        EXPECT_EQ(Code(List->Insert(0, &Items[0])), Code(E_FAIL));
        EXPECT_EQ(Code(List->SetItem(0, &Items[1])), Code(E_FAIL));
        EXPECT_EQ(Code(List->Remove(0)), Code(E_FAIL));
        EXPECT_EQ(Code(List->Clear()), Code(E_FAIL));
        EXPECT_EQ(Order(), (Places{0, 1, 2, 3})) << "reading is what a lock is for";
        EXPECT_EQ(Code(List->Unlock()), Code(S_OK));
    }
    EXPECT_EQ(Code(List->Unlock()), Code(E_FAIL));
    EXPECT_EQ(Code(List->Add(&Items[0])), Code(S_OK));
}

/// Looks at the list when it is released for the last time but one, as an object's destruction may.
class Watcher final : public CountedObject {
  public:
    ULONG Release() override {
        const ULONG left = CountedObject::Release();
        if (left == 1) List->GetCount(&CountSeen);
        return left;
    }
    ITTSObjectList* List = nullptr;
    int CountSeen = -1;
};

TEST_P(ObjectList, ReleasesADroppedItemInItsNewState) {
    Watcher watcher;
    watcher.List = List.Get();
    AddAll();
    List->Add(&watcher);
    List->Remove(4);
    EXPECT_EQ(watcher.CountSeen, 4);
    List->Add(&watcher);
    List->Clear();
    EXPECT_EQ(watcher.CountSeen, 0);
}

INSTANTIATE_TEST_SUITE_P(Classes, ObjectList,
                         testing::Values(ListRow{"TTSObjectList", CLSID_TTSObjectList},
                                         ListRow{"TTSStreamHolder", CLSID_TTSStreamHolder}),
                         [](const auto& row) { return std::string(row.param.Name); });

}  // namespace
