// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <string>

#include "tests/companion/Companion.h"
#include "tests/support/Code.h"

namespace {

struct HolderRow {
    const char* Name;
    CLSID Id;
};

/// Every class that carries an attached object.
class SyncHolder : public testing::TestWithParam<HolderRow> {
  protected:
    CountedObject First, Second;
    ComPtr<ITTSSyncHolder> Holder = New<ITTSSyncHolder>(GetParam().Id);
};

TEST_P(SyncHolder, HasNothingAttachedAtFirstOrAfterNull) {
    for (int round = 0; round < 2; ++round) {
        IUnknown* object = &First;
        EXPECT_EQ(Code(Holder->GetObject(IID_IUnknown, &object)), Code(S_OK));
        EXPECT_EQ(object, nullptr);
        EXPECT_EQ(Code(Holder->SetObject(&First)), Code(S_OK));
        EXPECT_EQ(Code(Holder->SetObject(nullptr)), Code(S_OK));
    }
    EXPECT_EQ(First.References, 1U);
}

TEST_P(SyncHolder, HoldsTheObjectSetLastWithOneReference) {
    for (CountedObject* object : {&First, &Second, &Second})
        EXPECT_EQ(Code(Holder->SetObject(object)), Code(S_OK));
    EXPECT_EQ(First.References, 1U);
    EXPECT_EQ(Second.References, 2U);
    IUnknown* object = nullptr;
    EXPECT_EQ(Code(Holder->GetObject(IID_IUnknown, &object)), Code(S_OK));
    EXPECT_EQ(object, &Second);
    EXPECT_EQ(Second.References, 3U) << "one is the caller's";
    object->Release();
    EXPECT_EQ(Holder.Detach()->Release(), 0U);
    EXPECT_EQ(Second.References, 1U);
}

TEST_P(SyncHolder, GivesTheObjectsCodeAndNullForAnInterfaceThatItLacks) {
    Holder->SetObject(&First);
    IUnknown* object = &Second;
    EXPECT_EQ(Code(Holder->GetObject(IID_ITTSVoice, &object)), Code(E_NOINTERFACE));
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(Code(Holder->GetObject(IID_IUnknown, nullptr)), Code(E_POINTER));
    EXPECT_EQ(Code(Holder->GetObject(IID_IUnknown, ReadOnly<IUnknown*>())), Code(E_POINTER));
    EXPECT_EQ(First.References, 2U);
}

INSTANTIATE_TEST_SUITE_P(Classes, SyncHolder,
                         testing::Values(HolderRow{"TTSSoundData", CLSID_TTSSoundData},
                                         HolderRow{"TTSStreamHolder", CLSID_TTSStreamHolder}),
                         [](const auto& row) { return std::string(row.param.Name); });

TEST(StreamHolder, KeepsItsObjectApartFromItsContent) {
    CountedObject marker, content;
    auto holder = New<ITTSSyncHolder>(CLSID_TTSStreamHolder);
    ComPtr<ITTSObjectList> list;
    ASSERT_TRUE(list.TryQuery(holder.Get()));
    EXPECT_EQ(Code(holder->SetObject(&marker)), Code(S_OK));
    EXPECT_EQ(Code(list->Add(&content)), Code(S_OK));
    EXPECT_EQ(Code(list->Clear()), Code(S_OK));
    EXPECT_EQ(content.References, 1U);
    EXPECT_EQ(marker.References, 2U);
}

}  // namespace
