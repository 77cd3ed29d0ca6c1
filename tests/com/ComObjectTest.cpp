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
struct LARYNTH_INTERFACE(ISecond, "5d1c5a4e-0c5f-4f0e-9a51-3f6f0d1f7a02") : IUnknown {
    virtual int LARYNTH_CALL Second() = 0;
};

namespace larynth::test {
namespace {

int destroyed = 0;
std::function<void()> construction;

class SecondFace : public ISecond {
  public:
    using Interface = ISecond;
};

template <int kNumber>
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
    int LARYNTH_CALL Second() noexcept override { return kNumber; }
};
using Own = Example<2>;

TEST(ComObject, AnswersItsListAndIsOneObjectThatDiesOnceWithItsLastReference) {
    destroyed = 0;
    ComPtr<IFirst> first;
    ASSERT_EQ(CreateInstance<Own>(nullptr, IID_IFirst, first.PutVoid()), S_OK);
    EXPECT_EQ(ModuleLock::Count(), 1);
    ComPtr<ISecond> second;
    ComPtr<IUnknown> identity;
    second.Query(first.Get());
    identity.Query(second.Get());
    EXPECT_EQ(identity.Get(), first.Get()) << "IUnknown gives the first interface";
    EXPECT_EQ(second->Second(), 2);
    void* none = &first;
    EXPECT_EQ(Code(first->QueryInterface(IID_IClassFactory, &none)), "E_NOINTERFACE");
    EXPECT_EQ(none, nullptr);
    first.Release();
    identity.Release();
    EXPECT_EQ(destroyed, 0);
    second.Release();
    EXPECT_EQ(destroyed, 1);
    EXPECT_EQ(ModuleLock::Count(), 0);
}

TEST(ComObject, AQueryWithoutAPlaceForTheAnswerCountsNothing) {
    ForwardingOuter outer;
    const auto object = MakeObject<Own>(), part = MakeObject<Own>(&outer);
    for (IUnknown* asked : {&object->Inner(), &part->Inner()}) {
        for (void** bad : {static_cast<void**>(nullptr), ReadOnly<void*>(), reinterpret_cast<void**>(8)}) {
            for (const IID& id : {IID_IUnknown, IID_ISecond, IID_IClassFactory})
                EXPECT_EQ(Code(asked->QueryInterface(id, bad)), "E_POINTER") << bad;
        }
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

TEST(ComObject, AsAPartLivesByItsInnerUnknownAndDelegatesTheRest) {
    destroyed = 0;
    ForwardingOuter outer;
    ASSERT_EQ(CreateInstance<Own>(&outer, IID_IUnknown, outer.part.PutVoid()), S_OK);
    ComPtr<ISecond> second;
    ComPtr<IUnknown> identity;
    ASSERT_TRUE(second.TryQuery(&outer));
    EXPECT_EQ(outer.references, 1) << "an interface counts on the outer object";
    identity.Query(second.Get());
    EXPECT_EQ(identity.Get(), &outer);
    identity.Release();
    second.Release();
    EXPECT_EQ(outer.references, 0);
    EXPECT_NE(outer.part.Get(), &outer);
    outer.part.Release();
    EXPECT_EQ(destroyed, 1);
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
    constexpr HRESULT kOdd = static_cast<HRESULT>(0x80045678);
    Script script;
    script.ReturnFromQuery(IID_IUnknown, kOdd);
    Script raising;
    raising.Throw("QueryInterface");
    Fake<IUnknown> refusing(script), throwing(raising);
    ComPtr<IUnknown> pointer;
    const auto query = [&](IUnknown* from) { return [&, from] { return pointer.Query(from), S_OK; }; };
    const std::tuple<const char*, std::function<HRESULT()>, HRESULT> rows[] = {
        {"a query that fails", query(&refusing), kOdd},
        {"a query that raises", query(&throwing), E_FAIL},
        {"a null source", query(nullptr), E_FAIL},
        {"CKlattException",
         []() -> HRESULT {
             throw Zelvani::CKlattException{2, 2, "Bad"};
         },
         E_FAIL},
        {"no memory", []() -> HRESULT { throw std::bad_alloc(); }, E_FAIL},
        {"a number", []() -> HRESULT { throw 7; }, E_FAIL},
        {"nothing", [] { return S_FALSE; }, S_FALSE}};
    for (const auto& [what, body, code] : rows) EXPECT_EQ(Code(Guarded(body)), Code(code)) << what;
    EXPECT_FALSE(pointer);
    try {
        pointer.Query(&refusing);
        FAIL() << "no exception";
    } catch (const Zelvani::ComException& failure) {
        EXPECT_STREQ(failure.what(), "COM Exception");
        EXPECT_STREQ(failure.Condition(), "COM interface call is failed");
        EXPECT_STREQ(failure.File(), "ComPtr");
        EXPECT_EQ(failure.Line(), 115);
    }
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
