// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <new>
#include <string>

#include <larynth/Larynth.h>

#include "com/Boundary.h"
#include "engine/Exception.h"

namespace larynth::test {
namespace {

/// Answers every query with one code, and with itself where that is a success.
class Answering final : public IUnknown {
  public:
    explicit Answering(HRESULT code) : code_(code) {}
    HRESULT LARYNTH_CALL QueryInterface(REFIID, void** ppv) noexcept override {
        *ppv = this;  // also on failure: a holder must not keep it
        if (SUCCEEDED(code_)) ++count;
        return code_;
    }
    ULONG LARYNTH_CALL AddRef() noexcept override { return ++count; }
    ULONG LARYNTH_CALL Release() noexcept override { return --count; }

    ULONG count = 1;

  private:
    HRESULT code_;
};

TEST(Boundary, TurnsExceptionsIntoStatusCodes) {
    Answering refusing(E_NOINTERFACE), odd(static_cast<HRESULT>(0x80045678)), hesitant(S_FALSE);
    ComPtr<IUnknown> pointer;
    const auto queried = [&](IUnknown* source) {
        return Guarded([&] {
            pointer.Query(source);
            return S_OK;
        });
    };
    EXPECT_EQ(queried(&refusing), E_NOINTERFACE);
    EXPECT_EQ(queried(&odd), static_cast<HRESULT>(0x80045678));
    EXPECT_EQ(queried(nullptr), E_FAIL) << "a null source is a fault of the caller's, not a failed call";
    EXPECT_FALSE(pointer);
    EXPECT_EQ(queried(&hesitant), S_OK) << "every success passes";
    pointer.Release();
    EXPECT_EQ(hesitant.count, 1U);

    EXPECT_EQ(Guarded([]() -> HRESULT { throw CKlattException{2, 2, "Bad sample frequency"}; }), E_FAIL);
    EXPECT_EQ(Guarded([]() -> HRESULT { throw std::bad_alloc(); }), E_FAIL);
    EXPECT_EQ(Guarded([]() -> HRESULT { throw 7; }), E_FAIL);
    EXPECT_EQ(Guarded([] { return S_FALSE; }), S_FALSE);
}

TEST(ComException, TellsADebuggerWhatFailedAndWhere) {
    Answering refusing(E_NOINTERFACE);
    ComPtr<IUnknown> pointer;
    try {
        pointer.Query(&refusing);
        FAIL() << "no exception";
    } catch (const Zelvani::ComException& failure) {
        EXPECT_EQ(failure.Code(), E_NOINTERFACE);
        EXPECT_STREQ(failure.what(), "COM Exception");
        EXPECT_STREQ(failure.Condition(), "COM interface call is failed");
        EXPECT_EQ(failure.Message(), nullptr);
        EXPECT_STREQ(failure.File(), "ComPtr");
        EXPECT_EQ(failure.Line(), 115);
    }
    try {
        pointer.Query(nullptr);
        FAIL() << "no exception";
    } catch (const Zelvani::Exception& failure) {
        EXPECT_STREQ(failure.what(), "Zelvani Exception");
        EXPECT_STREQ(failure.Condition(), "null pointer has been used");
        EXPECT_EQ(failure.Line(), 0);
    }
}

TEST(ComPtr, KeepsCountsBalanced) {
    Answering object(S_OK), refusing(E_FAIL);
    {
        ComPtr<IUnknown> first;
        EXPECT_TRUE(first.TryQuery(&object));
        ComPtr<IUnknown> copy = first, moved = std::move(first);
        EXPECT_FALSE(first);
        EXPECT_EQ(object.count, 3U);
        copy = moved;
        moved = ComPtr<IUnknown>();
        EXPECT_EQ(object.count, 2U);
        EXPECT_FALSE(copy.TryQuery(&refusing)) << "what was held is released before the query";
        EXPECT_EQ(object.count, 1U);
        EXPECT_FALSE(copy.TryQuery(nullptr));
    }
    EXPECT_EQ(object.count, 1U);
    EXPECT_EQ(refusing.count, 1U);
}

}  // namespace
}  // namespace larynth::test
