// SPDX-License-Identifier: MIT
#include "tests/support/StackObject.h"
#include "tests/synth/SynthFixture.h"

namespace larynth::test {
namespace {

/// A class object for blocks that counts what is asked of it.
class CountingBlocks final : public StackObject<IClassFactory> {
  public:
    HRESULT LARYNTH_CALL CreateInstance(IUnknown*, REFIID riid, void** ppv) noexcept override {
        ++made;
        *ppv = nullptr;
        return withhold ? S_OK : ComPtr<ITTSSoundData>::Adopt(new FakeBlock)->QueryInterface(riid, ppv);
    }
    HRESULT LARYNTH_CALL LockServer(BOOL) noexcept override { return S_OK; }

    void Register() {
        EXPECT_EQ(CoRegisterClassObject(CLSID_TTSSoundData, this, CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE,
                                        &number_),
                  S_OK);
    }
    void Revoke() { EXPECT_EQ(CoRevokeClassObject(number_), S_OK); }

    int made = 0;
    bool withhold = false;

  private:
    DWORD number_ = 0;
};

class BlockFactory : public SynthFixture {
  protected:
    HRESULT RenderOne() {
        ComPtr<IUnknown> output;
        return Calculate(Packet().Get(), GUID_NULL, output);
    }
    CountingBlocks first_, second_;
};

TEST_F(BlockFactory, UsesTheClassObjectThatIsOfferedNowAndHoldsNone) {
    Initialize();
    EXPECT_EQ(RenderOne(), S_OK);
    first_.Register();
    for (int i = 0; i < 3; ++i) EXPECT_EQ(RenderOne(), S_OK);
    EXPECT_EQ(first_.made, 3);
    second_.Register();
    EXPECT_EQ(RenderOne(), S_OK);
    EXPECT_EQ(second_.made, 1);
    EXPECT_EQ(first_.references, 1) << "that of the registration";
    second_.Revoke();
    EXPECT_EQ(second_.references, 0);
    EXPECT_EQ(RenderOne(), S_OK);
    EXPECT_EQ(first_.made, 4);
    first_.Revoke();
    EXPECT_EQ(first_.references, 0);
}

TEST_F(BlockFactory, TriesAgainAfterAFailure) {
    constexpr HRESULT kOdd = static_cast<HRESULT>(0x80041234);
    Initialize();
    first_.queryCode = kOdd;
    first_.Register();
    for (int i = 0; i < 2; ++i) EXPECT_EQ(RenderOne(), kOdd);
    first_.queryCode = S_OK;
    first_.withhold = true;
    EXPECT_EQ(RenderOne(), E_FAIL) << "success without a block";
    first_.withhold = false;
    EXPECT_EQ(RenderOne(), S_OK);
    first_.Revoke();
}

}  // namespace
}  // namespace larynth::test
