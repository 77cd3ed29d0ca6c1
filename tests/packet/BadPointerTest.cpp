// SPDX-License-Identifier: MIT
#include <functional>

#include "tests/packet/NewPacket.h"
#include "tests/support/Code.h"

namespace larynth::test {

namespace {

// Lies in a page that can be read but not written.
alignas(16) constexpr unsigned char kReadOnly[128] = {1};

template <class T>
T* ReadOnly() {
    return reinterpret_cast<T*>(const_cast<unsigned char*>(kReadOnly));
}

}  // namespace

TEST(BadPointerTest, EveryKindOfGetterRefusesThem) {
    const auto items = NewPacket<ITTSDoublePacket>();
    const auto cascade = As<ILarynthVocalTractParams>(items);
    const auto parallel = As<ILarynthParallelTractParams>(items);
    const auto filter = As<ILarynthVocalTractFilterParams>(items);
    const auto clone = As<IACLClone>(items);
    const auto tru = As<ITTSTruKlattParams>(items);
    const auto timing = As<ILarynthParams>(items);
    const auto voice = As<ILarynthVoiceParams>(items);
    const auto fb = Cascade(items, 0);
    const auto abc = Zero<ITTSAntiResonatorABCParams>(items);
    const auto info = As<ITTSResonatorStructInfo>(fb);
    unsigned short words[41] = {};
    tru->SetTruPacket(words, 0);
    char name[] = "F0";
    int index = 77;

    struct Row {
        const char* method;
        std::function<HRESULT(void*)> call;
    };
    const Row rows[] = {
        {"GetSampleFreq", [&](void* p) { return timing->GetSampleFreq(static_cast<double*>(p)); }},
        {"GetFrameLen", [&](void* p) { return timing->GetFrameLen(static_cast<int*>(p)); }},
        {"GetAV", [&](void* p) { return voice->GetAV(static_cast<double*>(p)); }},
        {"GetIDAV", [&](void* p) { return voice->GetIDAV(static_cast<int*>(p)); }},
        {"IsResDataValid", [&](void* p) { return cascade->IsResDataValid(static_cast<LONG*>(p)); }},
        {"IsFilterDataValid", [&](void* p) { return filter->IsFilterDataValid(static_cast<LONG*>(p)); }},
        {"GetFreq", [&](void* p) { return fb->GetFreq(static_cast<double*>(p)); }},
        {"GetIDFreq", [&](void* p) { return fb->GetIDFreq(static_cast<int*>(p)); }},
        {"GetState", [&](void* p) { return fb->GetState(static_cast<int*>(p)); }},
        {"GetA", [&](void* p) { return abc->GetA(static_cast<double*>(p)); }},
        {"GetItemsCount", [&](void* p) { return items->GetItemsCount(static_cast<int*>(p)); }},
        {"GetIDFromIndex", [&](void* p) { return items->GetIDFromIndex(99, static_cast<int*>(p)); }},
        {"GetIndexFromID", [&](void* p) { return items->GetIndexFromID(10, static_cast<int*>(p)); }},
        {"GetIndexFromName", [&](void* p) { return items->GetIndexFromName(name, static_cast<int*>(p)); }},
        {"GetItemName", [&](void* p) { return items->GetItemName(99, static_cast<char*>(p), 2); }},
        {"GetItemDescription",
         [&](void* p) { return items->GetItemDescription(0, static_cast<char*>(p), 9, 0); }},
        {"GetItemValue", [&](void* p) { return items->GetItemValue(99, static_cast<double*>(p)); }},
        {"GetAlpha", [&](void* p) { return filter->GetAlpha(99, static_cast<double*>(p)); }},
        {"GetBeta", [&](void* p) { return filter->GetBeta(0, static_cast<double*>(p)); }},
        {"cascade GetResonator",
         [&](void* p) { return cascade->GetResonator(99, static_cast<IUnknown**>(p), IID_IUnknown); }},
        {"GetAntiResonator",
         [&](void* p) { return cascade->GetAntiResonator(0, static_cast<IUnknown**>(p), IID_IUnknown); }},
        {"parallel GetResonator",
         [&](void* p) { return parallel->GetResonator(0, static_cast<IUnknown**>(p), IID_IUnknown); }},
        {"Clone", [&](void* p) { return clone->Clone(IID_IUnknown, static_cast<IUnknown**>(p)); }},
        {"GetTruPacket", [&](void* p) { return tru->GetTruPacket(static_cast<unsigned short*>(p), 0); }},
        {"QueryPacketInterface",
         [&](void* p) { return info->QueryPacketInterface(IID_IUnknown, static_cast<IUnknown**>(p)); }},
    };
    const ULONG references = References(items.Get());
    for (const Row& row : rows) {
        EXPECT_EQ(Code(row.call(nullptr)), Code(E_POINTER)) << row.method;
        EXPECT_EQ(Code(row.call(ReadOnly<void>())), Code(E_POINTER)) << row.method;
    }
    EXPECT_EQ(References(items.Get()), references);

    EXPECT_EQ(items->GetIndexFromName(nullptr, &index), E_POINTER);
    EXPECT_EQ(index, 77);
    EXPECT_EQ(items->GetItemName(0, nullptr, 0), E_POINTER);
}

TEST(BadPointerTest, ALocationSkipsThem) {
    const auto packet = NewPacket();
    const auto info = Parallel<ITTSResonatorStructInfo>(packet, 4);
    int index = 77;
    EXPECT_EQ(info->GetLocation(ReadOnly<int>(), &index), S_OK);
    EXPECT_EQ(index, 4);
    EXPECT_EQ(info->GetLocation(nullptr, nullptr), S_OK);
}

}  // namespace larynth::test
