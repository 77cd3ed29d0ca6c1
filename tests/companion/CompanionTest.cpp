// SPDX-License-Identifier: MIT
#include <array>
#include <climits>
#include <functional>
#include <gtest/gtest.h>

#include <larynth/Larynth.h>

#include "tests/support/BadPointer.h"
#include "tests/support/Code.h"
#include "tests/support/Partners.h"

namespace larynth::test {
namespace {

/// A new object of one of the companion's classes, created as a host creates it.
template <class Interface>
ComPtr<Interface> New(REFCLSID id) {
    EXPECT_EQ(Code(LarynthLoadModule(LARYNTH_COMPANION_MODULE)), "S_OK") << LarynthLastError();
    ComPtr<Interface> object;
    EXPECT_EQ(Code(object.Create(id)), "S_OK");
    return object;
}

/// Looks at the list when the list lets it go, as an object's destruction may.
class Item final : public Fake<IUnknown> {
  public:
    using Fake::Fake;
    ULONG LARYNTH_CALL Release() override {
        if (list != nullptr) list->GetCount(&countSeen);
        return Fake::Release();
    }
    ULONG LARYNTH_CALL AddRef() override {
        if (clears && list != nullptr) list->Clear();
        return Fake::AddRef();
    }
    ITTSObjectList* list = nullptr;
    bool clears = false;
    int countSeen = -1;
};

/// Every class that is a list, filled with four items.
class ObjectList : public testing::TestWithParam<CLSID> {
  protected:
    using Places = std::vector<long>;

    ObjectList() {
        for (auto& item : items) list->Add(&item);
    }
    ~ObjectList() override { EXPECT_EQ(list.Detach()->Release(), 0U); }

    /// What stands in the list, by its place in `items`.
    Places Order() const {
        Places order;
        int count = -1;
        EXPECT_EQ(Code(list->GetCount(&count)), "S_OK");
        for (int i = 0; i < count; ++i) {
            ComPtr<IUnknown> item;
            EXPECT_EQ(Code(list->GetItem(i, IID_IUnknown, item.PutUnknown())), "S_OK");
            order.push_back(dynamic_cast<Item*>(item.Get()) - items);
        }
        return order;
    }

    Script script;
    Item items[4]{Item(script), Item(script), Item(script), Item(script)};
    ComPtr<ITTSObjectList> list = New<ITTSObjectList>(GetParam());
};

TEST_P(ObjectList, IsNotUpsetByAnItemThatChangesItWhenItIsHeld) {
    Item clearing(script);
    clearing.list = list.Get();
    clearing.clears = true;
    EXPECT_EQ(Code(list->SetItem(3, &clearing)), "E_FAIL");
    list->Add(&items[0]);
    EXPECT_EQ(Code(list->Insert(1, &clearing)), "E_FAIL");
    EXPECT_EQ(Order(), Places());
    EXPECT_EQ(items[0].references, 0);
}

TEST_P(ObjectList, NestedDeepIsReleasedWithoutDeepCalls) {
    auto innermost = New<ITTSObjectList>(GetParam());
    for (int depth = 0; depth < 300'000; ++depth) {
        auto around = New<ITTSObjectList>(GetParam());
        ComPtr<ITTSSyncHolder> holder;
        if (depth % 2 == 0 && holder.TryQuery(around.Get())) {
            holder->SetObject(innermost.Get());
        } else {
            around->Add(innermost.Get());
        }
        innermost = around;
    }
    list->Add(innermost.Get());
}

TEST_P(ObjectList, HoldsOneReferenceForEachPlace) {
    const std::pair<std::function<HRESULT()>, Places> rows[] = {
        {[] { return S_OK; }, {0, 1, 2, 3}},
        {[&] { return list->Add(&items[1]); }, {0, 1, 2, 3, 1}},
        {[&] { return list->Insert(0, &items[3]); }, {3, 0, 1, 2, 3, 1}},
        {[&] { return list->Insert(6, &items[0]); }, {3, 0, 1, 2, 3, 1, 0}},
        {[&] { return list->SetItem(2, &items[2]); }, {3, 0, 2, 2, 3, 1, 0}},
        {[&] { return list->Remove(6); }, {3, 0, 2, 2, 3, 1}},
        {[&] { return list->Remove(0); }, {0, 2, 2, 3, 1}},
        {[&] { return list->Clear(); }, {}},
        {[&] { return list->Add(&items[3]); }, {3}}};
    for (const auto& [change, order] : rows) {
        const int count = static_cast<int>(order.size());
        for (Item& item : items) {
            item.list = list.Get();
            item.countSeen = count;
        }
        EXPECT_EQ(Code(change()), "S_OK");
        for (Item& item : items) {
            EXPECT_EQ(item.countSeen, count) << "an item is let go in the list's new state";
            EXPECT_EQ(item.references, std::ranges::count(order, &item - items));
            item.list = nullptr;
        }
        EXPECT_EQ(Order(), order);
    }
}

TEST_P(ObjectList, RefusesWhatItCannotDoAndStaysAsItWas) {
    IUnknown* item = &items[0];
    for (const int index : {-1, 4, INT_MIN, INT_MAX}) {
        EXPECT_EQ(Code(list->GetItem(index, IID_IUnknown, &item)), "E_FAIL") << index;
        EXPECT_EQ(item, nullptr);
        for (const HRESULT bad : {list->Remove(index), list->SetItem(index, &items[0]),
                                  list->Insert(index == 4 ? 5 : index, &items[0])})
            EXPECT_EQ(Code(bad), "E_FAIL") << index;
    }
    for (const HRESULT bad :
         {list->Add(nullptr), list->Insert(0, nullptr), list->SetItem(0, nullptr),
          list->GetCount(ReadOnly<int>()), list->GetItem(0, IID_IUnknown, ReadOnly<IUnknown*>())})
        EXPECT_EQ(Code(bad), "E_POINTER");
    EXPECT_EQ(Order(), (Places{0, 1, 2, 3}));
}

TEST_P(ObjectList, RefusesChangesUntilEveryLockIsGivenBack) {
    for (int i = 0; i < 2; ++i) EXPECT_EQ(Code(list->Lock()), "S_OK");
    for (int locks = 2; locks > 0; --locks) {
        for (const HRESULT change : {list->Add(&items[0]), list->Insert(0, &items[0]),
                                     list->SetItem(0, &items[1]), list->Remove(0), list->Clear()})
            EXPECT_EQ(Code(change), "E_FAIL") << locks;
        EXPECT_EQ(Order(), (Places{0, 1, 2, 3})) << "reading is what a lock is for";
        EXPECT_EQ(Code(list->Unlock()), "S_OK");
    }
    EXPECT_EQ(Code(list->Unlock()), "E_FAIL");
    EXPECT_EQ(Code(list->Clear()), "S_OK");
}

INSTANTIATE_TEST_SUITE_P(ListAndHolder, ObjectList,
                         testing::Values(CLSID_TTSObjectList, CLSID_TTSStreamHolder));

TEST(SoundData, AppendsCopiesInOrderAndRefusesTheRest) {
    using Samples = std::vector<short>;
    const auto block = New<ITTSSoundData>(CLSID_TTSSoundData);
    short samples[] = {1, -2, 32767, -32768};
    const Samples before = {1, -2, 32767}, after = {1, -2, 32767, -32768};
    const std::tuple<const char*, int, short*, int, const char*, Samples> rows[] = {
        {"no samples", 2, nullptr, 0, "S_OK", {}},
        {"three samples", 2, samples, 3, "S_OK", before},
        {"another format", 1, samples, 4, "E_FAIL", before},
        {"a negative count", 2, samples, -1, "E_FAIL", before},
        {"more than an int counts", 2, samples, INT_MAX, "E_FAIL", before},
        {"null", 2, nullptr, 1, "E_POINTER", before},
        {"memory that ends too soon", 2, samples, INT_MAX - 3, "E_POINTER", before},
        {"one sample", 2, samples + 3, 1, "S_OK", after},
    };
    const short* shown = nullptr;
    int number = -1;
    for (const auto& [what, format, from, count, code, content] : rows) {
        EXPECT_EQ(Code(block->AppendSamples(format, from, count)), code) << what;
        EXPECT_EQ(Code(block->GetSamples(&shown, &number)), "S_OK");
        EXPECT_EQ(Samples(shown, shown + number), content) << what;
    }
    for (const auto& [format, code] : {std::pair(2, "S_OK"), {0, "E_FAIL"}, {3, "E_FAIL"}})
        EXPECT_EQ(Code(block->SetFormat(format)), code) << format;
    block->GetFormat(&number);
    EXPECT_EQ(number, 2);
    for (const HRESULT bad : {block->GetFormat(ReadOnly<int>()), block->GetSamples(nullptr, &number),
                              block->GetSamples(&shown, ReadOnly<int>())})
        EXPECT_EQ(Code(bad), "E_POINTER");
}

TEST(SyncHolder, HoldsTheObjectSetLastWithOneReference) {
    Script script;
    Fake<IUnknown> first(script), second(script);
    const auto holder = New<ITTSSyncHolder>(CLSID_TTSStreamHolder);
    IUnknown* object = &first;
    EXPECT_EQ(Code(holder->GetObject(IID_IUnknown, &object)), "S_OK");
    EXPECT_EQ(object, nullptr);
    for (auto* each : {&first, &second, &second}) EXPECT_EQ(Code(holder->SetObject(each)), "S_OK");
    EXPECT_EQ(first.references, 0);
    EXPECT_EQ(Code(holder->GetObject(IID_IUnknown, &object)), "S_OK");
    EXPECT_EQ(object, &second);
    EXPECT_EQ(object->Release(), 1U) << "the caller's reference";
    EXPECT_EQ(Code(holder->SetObject(nullptr)), "S_OK");
    EXPECT_EQ(second.references, 0);
}

TEST(Voice, GivesEachValueInItsOwnSlot) {
    const auto settings = New<ITTSVoiceSettings>(CLSID_TTSVoice);
    ComPtr<ITTSVoiceSourceParams> source;
    ComPtr<ITTSVoiceFilterParams> filter;
    source.Query(settings.Get());
    filter.Query(settings.Get());
    using Values = std::array<double, 10>;
    const auto values = [&] {
        Values v{};
        for (const HRESULT hr : {source->GetPreEmphasis(v.data()), source->GetOpenQuotient(&v[1]),
                                 filter->GetLowF(&v[2]), filter->GetLowG(&v[3]), filter->GetLowP3(&v[4]),
                                 filter->GetLowP4(&v[5]), filter->GetHighF(&v[6]), filter->GetHighG(&v[7]),
                                 filter->GetHighP3(&v[8]), filter->GetHighP4(&v[9])})
            EXPECT_EQ(Code(hr), "S_OK");
        return v;
    };
    EXPECT_EQ(values(), (Values{0.0, 0.5, 0.0, 1.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0}));
    settings->SetPreEmphasis(0.875);
    settings->SetOpenQuotient(0.625);
    settings->SetLowFilter(300.0, 2.0, 0.75, 0.125);
    settings->SetHighFilter(3000.0, 4.0, 0.5, -0.25);
    EXPECT_EQ(values(), (Values{0.875, 0.625, 300.0, 2.0, 0.75, 0.125, 3000.0, 4.0, 0.5, -0.25}));
}

TEST(Voice, HandsOutTheSourceThatItHolds) {
    Script script;
    FakeVoicingSource source(script);
    Fake<IUnknown> noSource(script);
    const auto voice = New<ITTSVoice>(CLSID_TTSVoice);
    ComPtr<ITTSVoiceSettings> settings;
    settings.Query(voice.Get());
    IUnknown* got = nullptr;
    EXPECT_EQ(Code(settings->SetVoicingSource(&source)), "S_OK");
    EXPECT_EQ(Code(settings->SetVoicingSource(&noSource)), "E_NOINTERFACE");
    EXPECT_EQ(Code(voice->GetVoicingSource(IID_ITTSVoicingSource, &got)), "S_OK");
    EXPECT_EQ(got, &source) << "the voice keeps the one it had";
    EXPECT_EQ(got->Release(), 1U);
    EXPECT_EQ(Code(voice->GetVoicingSource(IID_ITTSVoicingSourceWave, &got)), "E_NOINTERFACE");
    EXPECT_EQ(got, nullptr);
    script.Throw("QueryInterface");
    EXPECT_EQ(Code(settings->SetVoicingSource(&noSource)), "E_FAIL");
    EXPECT_EQ(Code(voice->GetVoicingSource(IID_IUnknown, &got)), "E_FAIL");
}

}  // namespace
}  // namespace larynth::test
