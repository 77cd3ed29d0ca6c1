// SPDX-License-Identifier: MIT
// The generic half of a module around a class table of the test's own: what no finished module shows.
#include <gtest/gtest.h>
#include <latch>
#include <new>
#include <stdexcept>
#include <thread>
#include <vector>

#include <larynth/Larynth.h>

#include "com/ComObject.h"
#include "com/Create.h"
#include "module/ClassTable.h"
#include "module/EntryPoints.h"
#include "tests/support/Allocations.h"
#include "tests/support/Code.h"

namespace larynth {

namespace {

class Plain final : public ComObject<ITTSVocalTractF> {
  public:
    using ComObject::ComObject;
};

/// Fails in the middle of its construction.
class Unfinished final : public ComObject<ITTSVocalTractF> {
  public:
    explicit Unfinished(IUnknown* outer) : ComObject(outer) { throw std::runtime_error("not today"); }
};

constexpr CLSID kPlain{1, 0, 0, {}};
constexpr CLSID kUnfinished{2, 0, 0, {}};
constexpr CLSID kShadowed = kPlain;

constinit ClassEntry classTable[] = {
    // no scripts: nothing is registered here
    {kPlain, 0, CreateInstance<Plain>},
    {kUnfinished, 0, CreateInstance<Unfinished>},
    {kShadowed, 0, CreateInstance<Unfinished>},
};

ComPtr<IClassFactory> FactoryOf(REFCLSID id) {
    ComPtr<IClassFactory> factory;
    EXPECT_EQ(Code(DllGetClassObject(id, IID_IClassFactory, factory.PutVoid())), Code(S_OK));
    return factory;
}

TEST(ModuleKit, LooksClassesUpInTheOrderOfTheTable) {
    ComPtr<IUnknown> object;
    EXPECT_EQ(Code(FactoryOf(kShadowed)->CreateInstance(nullptr, IID_IUnknown, object.PutVoid())),
              Code(S_OK));
}

TEST(ModuleKit, TurnsAFailedConstructionIntoACodeAndHoldsNothing) {
    void* object = classTable;
    EXPECT_EQ(Code(FactoryOf(kUnfinished)->CreateInstance(nullptr, IID_IUnknown, &object)), Code(E_FAIL));
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(Code(DllCanUnloadNow()), Code(S_OK));
}

}  // namespace

std::span<ClassEntry> ClassTable() noexcept { return classTable; }

bool HasTypeLibrary() noexcept { return false; }

}  // namespace larynth
