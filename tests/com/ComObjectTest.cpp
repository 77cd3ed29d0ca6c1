// SPDX-License-Identifier: MIT
#include <cstdlib>
#include <gtest/gtest.h>
#include <stdexcept>

#include <larynth/ComPtr.h>

#include "com/ComObject.h"
#include "com/Create.h"
#include "com/OutPointer.h"
#include "tests/support/ForwardingOuter.h"

struct LARYNTH_INTERFACE(IFirst, "5d1c5a4e-0c5f-4f0e-9a51-3f6f0d1f7a01") : IUnknown {
    virtual HRESULT LARYNTH_CALL GetFirst(int* pnValue /*out*/) = 0;
};
struct LARYNTH_INTERFACE(ISecond, "5d1c5a4e-0c5f-4f0e-9a51-3f6f0d1f7a02") : IUnknown {
    virtual HRESULT LARYNTH_CALL GetSecond(int* pnValue /*out*/) = 0;
};

namespace larynth::test {
namespace {

bool throwInConstructor = false;
bool exhausted = false;
int destroyed = 0;

class SecondFace : public ISecond {
  public:
    using Interface = ISecond;
    HRESULT LARYNTH_CALL GetSecond(int* pnValue) noexcept override { return Put(pnValue, Value()); }

  protected:
    virtual int Value() noexcept = 0;
};

class Example final : public ComObject<IFirst, SecondFace> {
  public:
    explicit Example(IUnknown* outer) : ComObject(outer) {
        if (throwInConstructor) throw std::runtime_error("no");
        if (exhausted) throw std::bad_alloc();
    }
    ~Example() override {
        AddRef();  // as code does that hands `this` out while cleaning up
        Release();
        ++destroyed;
    }
    HRESULT LARYNTH_CALL GetFirst(int* pnValue) noexcept override { return Put(pnValue, 1); }

  protected:
    int Value() noexcept override { return 2; }
};

class ComObjectTest : public ::testing::Test {
  protected:
    ComObjectTest() { destroyed = 0; }
    ~ComObjectTest() override { EXPECT_EQ(ModuleLock::Count(), 0); }
};

TEST_F(ComObjectTest, AnswersItsListAndIsOneObject) {
    ComPtr<IFirst> first;
    ASSERT_EQ(CreateInstance<Example>(nullptr, IID_IFirst, first.PutVoid()), S_OK);
    EXPECT_EQ(ModuleLock::Count(), 1);
    ComPtr<ISecond> second;
    second.Query(first.Get());
    ComPtr<IUnknown> fromFirst, fromSecond;
    fromFirst.Query(first.Get());
    fromSecond.Query(second.Get());
    EXPECT_EQ(fromFirst.Get(), static_cast<IUnknown*>(first.Get())) << "IUnknown gives the first interface";
    EXPECT_EQ(fromSecond.Get(), fromFirst.Get());
    int value = 0;
    EXPECT_EQ(second->GetSecond(&value), S_OK);
    EXPECT_EQ(value, 2);
    void* none = &value;
    EXPECT_EQ(first->QueryInterface(IID_IClassFactory, &none), E_NOINTERFACE);
    EXPECT_EQ(none, nullptr);
    EXPECT_EQ(first->QueryInterface(IID_IFirst, nullptr), E_POINTER);
}

TEST_F(ComObjectTest, DiesOnceWithItsLastReference) {
    ComPtr<IFirst> first;
    CreateInstance<Example>(nullptr, IID_IFirst, first.PutVoid());
    ComPtr<IFirst> other = first;
    first.Release();
    EXPECT_EQ(destroyed, 0);
    other.Release();
    EXPECT_EQ(destroyed, 1);
}

TEST_F(ComObjectTest, CreationThatFailsLeavesNothing) {
    void* object = this;
    EXPECT_EQ(CreateInstance<Example>(nullptr, IID_IClassFactory, &object), E_NOINTERFACE);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(destroyed, 1);
    throwInConstructor = true;
    EXPECT_EQ(CreateInstance<Example>(nullptr, IID_IFirst, &object), E_FAIL);
    throwInConstructor = false;
    exhausted = true;
    EXPECT_EQ(CreateInstance<Example>(nullptr, IID_IFirst, &object), E_OUTOFMEMORY);
    exhausted = false;
}

TEST_F(ComObjectTest, AsAPartLivesByItsInnerUnknownAndDelegatesTheRest) {
    ForwardingOuter outer;
    ASSERT_EQ(CreateInstance<Example>(&outer, IID_IUnknown, outer.part.PutVoid()), S_OK);
    EXPECT_NE(outer.part.Get(), static_cast<IUnknown*>(&outer));
    ComPtr<ISecond> second;
    ASSERT_TRUE(second.TryQuery(&outer));
    EXPECT_EQ(outer.references, 1) << "an interface counts on the outer object";
    ComPtr<IUnknown> identity;
    identity.Query(second.Get());
    EXPECT_EQ(identity.Get(), static_cast<IUnknown*>(&outer));
    identity.Release();
    second.Release();
    EXPECT_EQ(outer.references, 0);
    EXPECT_EQ(destroyed, 0);
    outer.part.Release();
    EXPECT_EQ(destroyed, 1);
}

}  // namespace
}  // namespace larynth::test
