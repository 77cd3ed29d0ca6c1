// SPDX-License-Identifier: MIT
#include "tests/synth/SynthFixture.h"

namespace larynth::test {
namespace {

/// Every call on every collaborator is made to fail once; each time the failure's own code arrives, nothing
/// comes out, and every reference is given back (the fixture counts).
class FailureWalk : public SynthFixture {
  protected:
    /// Renders once without failures, then once for each call that was made, which then fails. `notExamined`
    /// names the calls that may fail without consequence: a probe whose answer is no, an attached object, a
    /// source's reset.
    void Walk(const std::function<ComPtr<IUnknown>()>& makeInput, REFIID idOut,
              const std::vector<std::string>& notExamined) {
        Initialize();
        ComPtr<IUnknown> output;
        ComPtr<IUnknown> input = makeInput();
        script = Script{};
        ASSERT_EQ(Calculate(input.Get(), idOut, output), S_OK);
        const int calls = script.calls;
        ASSERT_GT(calls, 10);
        for (int n = 1; n <= calls; ++n) {
            output.Release();
            input = makeInput();
            script = Script{};
            script.failAt = n;
            const HRESULT hr = Calculate(input.Get(), idOut, output);
            const std::string failed = FailedCall();
            SCOPED_TRACE("call " + std::to_string(n) + ": " + failed);
            EXPECT_GE(script.calls, n);
            if (SUCCEEDED(hr)) {
                EXPECT_NE(std::find(notExamined.begin(), notExamined.end(), failed), notExamined.end());
            } else {
                EXPECT_TRUE(hr == script.code || (failed == "QueryInterface" && hr == E_NOINTERFACE));
                EXPECT_FALSE(output);
            }
            script.failAt = 0;
        }
    }

  private:
    /// The scripted calls only; the per-sample entries of the log are not counted.
    static std::string FailedCall() {
        int scripted = 0;
        for (const std::string& call : script.log) {
            const bool sample = call == "voicing" || call == "aspiration" || call == "frication" ||
                                call == "filter" || call == "cascade" || call == "parallel";
            if (!sample && ++scripted == script.failAt) return call;
        }
        return "none";
    }
};

template <class Interface>
ComPtr<IUnknown> AsUnknown(ComPtr<Interface> pointer) {
    return ComPtr<IUnknown>::Adopt(pointer.Detach());
}

TEST_F(FailureWalk, OfOnePacketLosesNoReference) {
    // A packet is probed for the kinds that it is not, which costs nothing; its own kind counts.
    Walk([] { return AsUnknown(Packet()); }, GUID_NULL, {"QueryInterface"});
}

TEST_F(FailureWalk, OfAListLosesNoReference) {
    Walk([] { return AsUnknown(List(Packet(), Packet(), Holder(nullptr, Packet()))); }, IID_ITTSObjectList,
         {"QueryInterface", "GetObject"});
}

TEST_F(FailureWalk, OfAMarkedStreamWithAVoiceLosesNoReference) {
    const auto input = [] {
        const auto voice = ComPtr<IUnknown>::Adopt(static_cast<ITTSVoice*>(new FakeVoice));
        return AsUnknown(Holder(voice.Get(), Packet(), Holder(nullptr, Packet()), Packet()));
    };
    Walk(input, IID_ITTSObjectList, {"QueryInterface", "GetObject", "source.Reset"});
}

TEST_F(FailureWalk, UnlocksTheInputListOnEveryPath) {
    Initialize();
    auto* list = new FakeList;
    const auto input = ComPtr<ITTSObjectList>::Adopt(list);
    const auto packet = Packet();
    list->Add(packet.Get());
    ComPtr<IUnknown> output;
    for (int n = 1; n < 60; ++n) {
        script = Script{};
        script.failAt = n;
        Calculate(input.Get(), IID_ITTSObjectList, output);
        EXPECT_EQ(list->locks, 0) << n;
    }
}

TEST_F(FailureWalk, OfInitializationKeepsWhatWasMade) {
    // The creations come in this order: source, cascade, parallel, aspiration, frication, filter.
    script.failAt = 5;
    EXPECT_EQ(process->Initialize(nullptr, GUID_NULL), script.code);
    ComPtr<IUnknown> output;
    const auto packet = Packet();
    EXPECT_EQ(Calculate(packet.Get(), GUID_NULL, output), E_FAIL);
    const int before = script.calls;
    EXPECT_EQ(process->Initialize(nullptr, GUID_NULL), S_OK);
    EXPECT_LT(script.calls - before, 12) << "only the missing components are made";
    EXPECT_EQ(Calculate(packet.Get(), GUID_NULL, output), S_OK);
}

}  // namespace
}  // namespace larynth::test
