// SPDX-License-Identifier: MIT
#include <functional>
#include <gtest/gtest.h>
#include <stdexcept>

#include "com/ComObject.h"
#include "com/Create.h"
#include "tests/support/BadPointer.h"
#include "tests/support/Code.h"
#include "tests/support/ForwardingOuter.h"

struct LARYNTH_INTERFACE(IFirst, "5d1c5a4e-0c5f-4f0e-9a51-3f6f0d1f7a01") : IUnknown {};
struct LARYNTH_INTERFACE(ISecond, "5d1c5a4e-0c5f-4f0e-9a51-3f6f0d1f7a02") : IUnknown {};

namespace larynth::test {
namespace {

int destroyed = 0;
std::function<void()> construction;

class SecondFace : public ISecond {
  public:
    using Interface = ISecond;
};

template <int>
class Example final : public ComObject<IFirst, SecondFace> {
  public:
    using RecognisedBy = ISecond;
    explicit Example(IUnknown* outer) : ComObject(outer) {
        if (construction) construction();
    }
    ~Example() override {
        AddRef();  // as code does that hands `this` out while cleaning up
        Release();
        ++destroyed;
    }
};
using Own = Example<2>;

TEST(ComObject, DiesOnceWithItsLastReference) {
    ForwardingOuter outer;
    for (IUnknown* owner : {static_cast<IUnknown*>(nullptr), static_cast<IUnknown*>(&outer)}) {
        destroyed = 0;
        ComPtr<IUnknown> object, same;
        ASSERT_EQ(CreateInstance<Own>(owner, IID_IUnknown, object.PutVoid()), S_OK);
        same.Query(object.Get());
        object.Release();
        EXPECT_EQ(destroyed, 0);
        EXPECT_EQ(ModuleLock::Count(), 1);
        same.Release();
        EXPECT_EQ(destroyed, 1);
        EXPECT_EQ(ModuleLock::Count(), 0);
    }
}

TEST(ComObject, AQueryWithoutAPlaceForTheAnswerCountsNothing) {
    ForwardingOuter outer;
    const auto object = MakeObject<Own>(), part = MakeObject<Own>(&outer);
    for (IUnknown* asked : {&object->Inner(), &part->Inner()}) {
        for (void** bad : {static_cast<void**>(nullptr), ReadOnly<void*>(), reinterpret_cast<void**>(8)})
            EXPECT_EQ(Code(asked->QueryInterface(IID_ISecond, bad)), "E_POINTER") << bad;
        EXPECT_EQ(Code(asked->QueryInterface(IID_IClassFactory, ReadOnly<void*>())), "E_POINTER");
        EXPECT_EQ(asked->AddRef(), 2U);
        asked->Release();
    }
}

TEST(ComObject, CreationThatFailsLeavesNothing) {
    void* object = &destroyed;
    EXPECT_EQ(Code(CreateInstance<Own>(nullptr, IID_IClassFactory, &object)), "E_NOINTERFACE");
    EXPECT_EQ(object, nullptr);
    construction = [] { throw std::runtime_error("no"); };
    EXPECT_EQ(Code(CreateInstance<Own>(nullptr, IID_IFirst, &object)), "E_FAIL");
    construction = [] { throw std::bad_alloc(); };
    EXPECT_EQ(Code(CreateInstance<Own>(nullptr, IID_IFirst, &object)), "E_OUTOFMEMORY");
    construction = nullptr;
    EXPECT_EQ(ModuleLock::Count(), 0);
}

TEST(ComObject, IsRecognisedOnlyStandingAloneByTheInterfaceOfItsRole) {
    using Sibling = Example<3>;
    const auto sibling = MakeObject<Sibling>();  // first: what is learnt later must not be its table
    const auto object = MakeObject<Own>(), another = MakeObject<Own>();
    ForwardingOuter outer;
    const auto part = MakeObject<Own>(&outer);
    const auto role = [](const auto& of) { return static_cast<ISecond*>(of.get()); };
    EXPECT_EQ(OwnObject<Own>::Find(role(object)), object.get());
    EXPECT_EQ(OwnObject<Own>::Find(role(another)), another.get());
    EXPECT_EQ(OwnObject<Sibling>::Find(role(sibling)), sibling.get());
    EXPECT_EQ(OwnObject<Example<4>>::Find(role(object)), nullptr) << "a class that was never made";
    const std::pair<const char*, IUnknown*> rows[] = {
        {"nothing", nullptr},
        {"a part of another object", role(part)},
        {"the part as its owner holds it", &part->Inner()},
        {"another class with the same interfaces", role(sibling)},
        {"another interface", static_cast<IFirst*>(object.get())},
        {"the inner IUnknown", &object->Inner()},
        {"an object of no class of ours", &outer}};
    for (const auto& [what, pointer] : rows) EXPECT_EQ(OwnObject<Own>::Find(pointer), nullptr) << what;
}

TEST(Boundary, TurnsExceptionsIntoStatusCodes) {
    constexpr auto kOdd = static_cast<HRESULT>(0x80045678);
    const auto query = [](Script script) {
        return [script]() mutable {
            Fake<IUnknown> object(script);
            return ComPtr<IUnknown>().Query(&object), S_OK;
        };
    };
    Script refusing, raising;
    refusing.ReturnFromQuery(IID_IUnknown, kOdd);
    raising.Throw("QueryInterface");
    const std::tuple<const char*, std::function<HRESULT()>, HRESULT> rows[] = {
        {"a query that fails", query(refusing), kOdd},
        {"a query that raises", query(raising), E_FAIL},
        {"a null source", [] { return ComPtr<IUnknown>().Query(nullptr), S_OK; }, E_FAIL},
        {"no memory", []() -> HRESULT { throw std::bad_alloc(); }, E_FAIL},
        {"nothing", [] { return S_FALSE; }, S_FALSE}};
    for (const auto& [what, body, code] : rows) EXPECT_EQ(Code(Guarded(body)), Code(code)) << what;
}

TEST(ComPtr, KeepsCountsBalanced) {
    Script script, no;
    no.ReturnFromQuery(IID_IUnknown, E_FAIL);
    Fake<IUnknown> object(script), refusing(no);
    ComPtr<IUnknown> first;
    EXPECT_TRUE(first.TryQuery(&object));
    ComPtr<IUnknown> copy = first, moved = std::move(first);
    EXPECT_EQ(object.references, 2);
    copy = moved;
    moved = ComPtr<IUnknown>();
    EXPECT_EQ(object.references, 1);
    EXPECT_FALSE(copy.TryQuery(&refusing));
    EXPECT_EQ(object.references, 0) << "what was held is released before the query";
    EXPECT_FALSE(copy.TryQuery(nullptr));
    script.ReturnFromQuery(IID_IUnknown, S_FALSE);
    EXPECT_TRUE(copy.TryQuery(&object)) << "every success passes";
}

}  // namespace
}  // namespace larynth::test
