// SPDX-License-Identifier: MIT
#include <climits>
#include <gtest/gtest.h>
#include <vector>

#include "tests/companion/Companion.h"
#include "tests/support/Code.h"

namespace {

class SoundData : public testing::Test {
  protected:
    using Samples = std::vector<short>;

    Samples Content() const {
        const short* samples = nullptr;
        int count = -1;
        EXPECT_EQ(Code(Block->GetSamples(&samples, &count)), Code(S_OK));
        return Samples(samples, samples + count);
    }

    HRESULT Append(Samples samples) {
        return Block->AppendSamples(2, samples.data(), static_cast<int>(samples.size()));
    }

    ComPtr<ITTSSoundData> Block = New<ITTSSoundData>(CLSID_TTSSoundData);
};

TEST_F(SoundData, AppendsCopiesInOrder) {
    EXPECT_EQ(Content(), Samples{});
    EXPECT_EQ(Code(Append({1, -2, 32767})), Code(S_OK));
    EXPECT_EQ(Code(Append({})), Code(S_OK));
    EXPECT_EQ(Code(Append({-32768})), Code(S_OK));
    EXPECT_EQ(Content(), (Samples{1, -2, 32767, -32768}));
    EXPECT_EQ(Code(Append(Samples(1000, 7))), Code(S_OK));
    EXPECT_EQ(Content().size(), 1004U);
}

TEST_F(SoundData, ShowsItsSamplesWithoutCopying) {
    Append({5, 6});
    const short *first = nullptr, *second = nullptr;
    int count = 0;
    Block->GetSamples(&first, &count);
    Block->GetSamples(&second, &count);
    EXPECT_EQ(first, second);
    EXPECT_EQ(count, 2);
}

TEST_F(SoundData, KnowsOneFormat) {
    int format = -1;
    EXPECT_EQ(Code(Block->GetFormat(&format)), Code(S_OK));
    EXPECT_EQ(format, 0);
    EXPECT_EQ(Code(Block->SetFormat(2)), Code(S_OK));
    for (int other : {-2, 0, 1, 3}) EXPECT_EQ(Code(Block->SetFormat(other)), Code(E_FAIL)) << other;
    EXPECT_EQ(Code(Block->GetFormat(&format)), Code(S_OK));
    EXPECT_EQ(format, 2);
}

TEST_F(SoundData, RefusesWhatItCannotAppendAndStaysAsItWas) {
    Append({1, 2});
    short samples[4] = {};
    const struct {
        const char* Why;
        int Format;
        short* From;
        int Count;
        HRESULT Code;
    } rows[] = {
        {"another format", 1, samples, 4, E_FAIL},
        {"a negative count", 2, samples, -1, E_FAIL},
        {"the most negative count", 2, samples, INT_MIN, E_FAIL},
        {"more than an int counts", 2, samples, INT_MAX, E_FAIL},
        {"null", 2, nullptr, 1, E_POINTER},
        {"no such memory", 2, reinterpret_cast<short*>(64), 4, E_POINTER},
        {"memory that ends too soon", 2, samples, INT_MAX - 2, E_POINTER},
        {"no samples", 2, nullptr, 0, S_OK},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Code(Block->AppendSamples(row.Format, row.From, row.Count)), Code(row.Code)) << row.Why;
        EXPECT_EQ(Content(), (Samples{1, 2})) << row.Why;
    }
}

TEST_F(SoundData, RefusesBadPointersAndWritesNeither) {
    const short* samples = ReadOnly<short>();
    const short* const before = samples;
    int count = 99;
    EXPECT_EQ(Code(Block->GetSamples(&samples, nullptr)), Code(E_POINTER));
    EXPECT_EQ(Code(Block->GetSamples(&samples, ReadOnly<int>())), Code(E_POINTER));
    EXPECT_EQ(samples, before);
    EXPECT_EQ(Code(Block->GetSamples(nullptr, &count)), Code(E_POINTER));
    EXPECT_EQ(count, 99);
    EXPECT_EQ(Code(Block->GetFormat(nullptr)), Code(E_POINTER));
    EXPECT_EQ(Code(Block->GetFormat(ReadOnly<int>())), Code(E_POINTER));
}

TEST_F(SoundData, ServesAsAMarkerAndAsABlockAtOnce) {
    CountedObject packet;
    ComPtr<ITTSSyncHolder> marker;
    ASSERT_TRUE(marker.TryQuery(Block.Get()));
    EXPECT_EQ(Code(marker->SetObject(&packet)), Code(S_OK));
    Append({3});
    EXPECT_EQ(Content(), Samples{3});
    EXPECT_EQ(packet.References, 2U);
    marker.Release();
    EXPECT_EQ(Block.Detach()->Release(), 0U);
    EXPECT_EQ(packet.References, 1U);
}

}  // namespace
