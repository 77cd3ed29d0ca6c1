// SPDX-License-Identifier: MIT
/// What every component has in common, one row a class.
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <vector>

#include "com/Create.h"
#include "components/NoiseSources.h"
#include "components/TTSParallelTract.h"
#include "components/TTSVocalTractF.h"
#include "components/TTSVocalTractR.h"
#include "components/TTSVoicingSourceFilter.h"
#include "components/TTSVoicingSourceStd.h"
#include "tests/support/Code.h"
#include "tests/support/FakePacket.h"

namespace larynth {
namespace {

struct Row {
    const char* name;
    std::vector<IID> needs;  // the packet's interfaces, each of which must be there
    HRESULT withoutPacket, withoutValues;
    std::function<HRESULT(double*)> next;  // for the input 1
    std::function<HRESULT(double*)> last;
    std::function<HRESULT(IUnknown*)> setParams;
};

template <class Class>
Row RowOf(const char* name, std::vector<IID> needs, HRESULT withoutPacket = E_FAIL,
          HRESULT withoutValues = E_FAIL) {
    const std::shared_ptr<Class> object = MakeObject<Class>();
    const auto next = [object](double* pd) {
        if constexpr (requires { object->CalculateNext(1.0, pd); })
            return object->CalculateNext(1.0, pd);
        else
            return object->CalculateNext(pd);
    };
    return {name,
            std::move(needs),
            withoutPacket,
            withoutValues,
            next,
            [object](double* pd) { return object->GetOutputValue(pd); },
            [object](IUnknown* packet) { return object->SetParams(packet, GUID_NULL); }};
}

std::vector<Row> AllComponents() {
    return {
        RowOf<TTSVoicingSourceStd>("TTSVoicingSourceStd", {IID_ILarynthVoiceParams, IID_ILarynthParams}),
        RowOf<TTSVoicingSourceFilter>("TTSVoicingSourceFilter", {IID_ILarynthVoiceParams}, E_POINTER, S_OK),
        RowOf<TTSVocalTractR>("TTSVocalTractR", {IID_ILarynthVocalTractParams}),
        RowOf<TTSVocalTractF>("TTSVocalTractF", {IID_ILarynthVocalTractFilterParams}),
        RowOf<TTSParallelTract>("TTSParallelTract", {IID_ILarynthParallelTractParams}),
        RowOf<TTSAspirationSource>("TTSAspirationSource", {IID_ILarynthAspirationParams}),
        RowOf<TTSFricationSource>("TTSFricationSource", {IID_ILarynthFricationParams})};
}

/// Values with which no component is silent.
void Fill(FakePacket& packet) {
    for (const char* item : {"AV", "OQ", "AH", "AF", "AB", "Beta0"}) packet.Set(item, 0.5);
    packet.Set("F0", 100.0);
    packet.Set("TL", 5.0);
    packet.Set("BetaDegree", 3.0);
}

TEST(Component, RepeatsItsLastSampleOnceThereIsOne) {
    static const double readOnly = 0.0;
    for (const Row& row : AllComponents()) {
        SCOPED_TRACE(row.name);
        FakePacket packet;
        Fill(packet);
        double sample = 7.0;
        EXPECT_EQ(Code(row.setParams(packet.Unknown())), Code(S_OK));
        EXPECT_EQ(packet.References(), 0);
        EXPECT_EQ(Code(row.last(&sample)), Code(E_FAIL));
        EXPECT_EQ(Code(row.last(nullptr)), Code(E_FAIL));
        EXPECT_EQ(sample, 7.0);

        EXPECT_EQ(Code(row.next(nullptr)), Code(S_OK));
        EXPECT_EQ(Code(row.last(&sample)), Code(S_OK));
        EXPECT_NE(sample, 7.0);
        EXPECT_NE(sample, 0.0);

        double next = 0.0;
        EXPECT_EQ(Code(row.next(&next)), Code(S_OK));
        for (int i = 0; i < 2; ++i) {
            sample = 7.0;
            EXPECT_EQ(Code(row.last(&sample)), Code(S_OK));
            EXPECT_EQ(sample, next);
        }
        EXPECT_EQ(Code(row.last(nullptr)), Code(E_POINTER));
        EXPECT_EQ(Code(row.last(const_cast<double*>(&readOnly))), Code(E_POINTER));
    }
}

TEST(Component, RefusesWhatIsNoPacketForIt) {
    for (const Row& row : AllComponents()) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(Code(row.setParams(nullptr)), Code(row.withoutPacket));
        for (const IID& missing : row.needs) {
            FakePacket packet;
            packet.ScriptQuery(missing, E_NOINTERFACE);
            EXPECT_EQ(Code(row.setParams(packet.Unknown())), Code(row.withoutValues));
            EXPECT_EQ(packet.References(), 0);
            EXPECT_TRUE(packet.Calls().empty());
        }
    }
}

}  // namespace
}  // namespace larynth
