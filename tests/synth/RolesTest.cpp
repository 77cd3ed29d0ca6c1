// SPDX-License-Identifier: MIT
#include "tests/synth/SynthFixture.h"

namespace larynth::test {
namespace {

class ComponentRoles : public SynthFixture {};

/// A block is an object that plays no role of the model.
ComPtr<IUnknown> Misfit() { return ComPtr<IUnknown>::Adopt(static_cast<ITTSSoundData*>(new FakeBlock)); }

TEST_F(ComponentRoles, AreAddedUnderTheirFixedNumbers) {
    const ComPtr<IUnknown> source = ComPtr<IUnknown>::Adopt(new FakeVoicingSource<>);
    const ComPtr<IUnknown> aspiration =
        ComPtr<IUnknown>::Adopt(new FakeNoise<ITTSAspirationSource>("a", 0.0));
    const ComPtr<IUnknown> frication = ComPtr<IUnknown>::Adopt(new FakeNoise<ITTSFricationSource>("f", 0.0));
    const ComPtr<IUnknown> cascade = ComPtr<IUnknown>::Adopt(new FakeTract<ITTSVocalTract>("c", 1.0));
    const ComPtr<IUnknown> parallel = ComPtr<IUnknown>::Adopt(new FakeTract<ITTSParallelTract>("p", 1.0));
    const ComPtr<IUnknown> filter = ComPtr<IUnknown>::Adopt(new FakeVoicingFilter);
    const struct {
        IID role;
        IUnknown* component;
        LONG number;
        HRESULT forNull;
    } rows[] = {
        {IID_ITTSVoicingSource, source.Get(), 1, E_POINTER},
        {IID_ITTSAspirationSource, aspiration.Get(), 2, E_FAIL},
        {IID_ITTSFricationSource, frication.Get(), 3, E_FAIL},
        {IID_ITTSVocalTract, cascade.Get(), 4, E_FAIL},
        {IID_ITTSParallelTract, parallel.Get(), 5, E_FAIL},
        {IID_ITTSVoicingSourceFilter, filter.Get(), 6, E_FAIL},
    };
    const ComPtr<IUnknown> misfit = Misfit();
    for (const auto& row : rows) {
        SCOPED_TRACE(row.number);
        LONG number = 0;
        EXPECT_EQ(structure->AddComponent(row.component, row.role, &number), S_OK);
        EXPECT_EQ(number, row.number);
        number = 0;
        EXPECT_EQ(structure->AddComponent(nullptr, row.role, &number), row.forNull);
        EXPECT_EQ(number, row.number) << "written also when the action failed";
        number = 0;
        EXPECT_EQ(structure->AddComponent(misfit.Get(), row.role, &number), E_NOINTERFACE);
        EXPECT_EQ(number, row.number);
        EXPECT_EQ(structure->AddComponent(row.component, row.role, nullptr), E_POINTER);
    }
    LONG number = 77;
    EXPECT_EQ(structure->AddComponent(source.Get(), IID_ILarynthParams, &number), S_OK);
    EXPECT_EQ(number, 77) << "an unknown role does nothing";
}

TEST_F(ComponentRoles, OnlyTheVoicingFilterIsReadBackAndRemoved) {
    ComPtr<ITTSVoicingSourceFilter> filter;
    EXPECT_EQ(structure->GetComponent(6, filter.Id(), filter.PutUnknown()), E_FAIL);
    Initialize();
    for (LONG number : {0, 1, 5, 7, -1}) {
        EXPECT_EQ(structure->RemoveComponent(number), S_OK);
        EXPECT_EQ(structure->GetComponent(number, IID_IUnknown, filter.PutUnknown()), E_FAIL) << number;
    }
    EXPECT_EQ(structure->GetComponent(6, filter.Id(), filter.PutUnknown()), S_OK);
    EXPECT_TRUE(filter);
    EXPECT_EQ(structure->GetComponent(6, filter.Id(), nullptr), E_POINTER);
    structure->RemoveComponent(6);
    EXPECT_EQ(structure->GetComponent(6, filter.Id(), filter.PutUnknown()), E_FAIL);
}

TEST_F(ComponentRoles, FilledByTheClientAreLeftAloneByInitialize) {
    auto* source = new FakeVoicingSource<>;
    source->value = 7.0;
    const auto held = ComPtr<ITTSVoicingSource>::Adopt(source);
    auto* filter = new FakeVoicingFilter(1.0);
    const auto heldFilter = ComPtr<ITTSVoicingSourceFilter>::Adopt(filter);
    LONG number = 0;
    structure->SetVoicingSource(source, GUID_NULL);
    structure->AddComponent(filter, IID_ITTSVoicingSourceFilter, &number);
    Initialize();
    EXPECT_EQ(filter->wired, nullptr) << "a client's filter is the client's to wire";
    EXPECT_EQ(Render(Packet(1)), std::vector<short>{551});  // (7 + 10)·3 + 500
    EXPECT_EQ(source->resets, 0);
    structure->SetVoicingSource(source, GUID_NULL);
    EXPECT_EQ(filter->wired, static_cast<ITTSVoicingSource*>(source)) << "the next source is wired";
}

TEST_F(ComponentRoles, AFailedVoicingSourceLeavesTheRoleEmpty) {
    Initialize();
    const ComPtr<IUnknown> misfit = Misfit();
    EXPECT_EQ(structure->SetVoicingSource(nullptr, GUID_NULL), E_POINTER);
    EXPECT_EQ(structure->SetVoicingSource(reinterpret_cast<IUnknown*>(16), GUID_NULL), E_POINTER);
    EXPECT_EQ(Render(Packet(1)), std::vector<short>{530}) << "nothing changed so far";
    EXPECT_EQ(structure->SetVoicingSource(misfit.Get(), GUID_NULL), E_NOINTERFACE);
    ComPtr<IUnknown> output;
    const auto packet = Packet();
    EXPECT_EQ(Calculate(packet.Get(), GUID_NULL, output), E_FAIL);
}

}  // namespace
}  // namespace larynth::test
