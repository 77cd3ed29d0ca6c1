// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include <larynth/Runtime.h>

#include "host/ItemMeaning.h"
#include "host/ItemsCommand.h"

namespace larynth {
namespace {

using testing::HasSubstr;
using testing::MatchesRegex;

class Items : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        for (const char* module :
             {LARYNTH_MODULE_DIR "/Larynth.so", LARYNTH_MODULE_DIR "/LarynthCompanion.so"}) {
            ASSERT_EQ(LarynthLoadModule(module), S_OK) << LarynthLastError();
        }
    }
};

TEST_F(Items, EveryOneHasAUnitAndAMeaning) {
    const ItemVocabulary vocabulary = ItemVocabulary::OfNewPacket();
    ASSERT_EQ(vocabulary.Items().size(), 52u);
    for (const Item& item : vocabulary.Items()) {
        const auto meaning = MeaningOfItem(item.id);
        ASSERT_TRUE(meaning) << item.name;
        EXPECT_STRNE(meaning->unit, "") << item.name;
        EXPECT_STRNE(meaning->text, "") << item.name;
    }
}

TEST_F(Items, AreListedWithIdNameUnitAndInitialValue) {
    const std::string text = ItemsText(ItemVocabulary::OfNewPacket());
    for (const char* row : {"\n0 +0 +F0 +Hz +100 ", "\n3 +3 +FLT +10us +0 ", "\n7 +7 +AH +factor +30 ",
                            "\n10 +1024 +FNP +Hz +300 +frequency of the nasal pole\n",
                            "\n13 +1027 +F1 +Hz +0 +frequency of a cascade formant\n",
                            "\n29 +2049 +BWNZ +Hz +90 +bandwidth of the nasal zero\n",
                            "\n51 +3092 +PG6 +factor +0 +gain of a parallel resonator\n"}) {
        EXPECT_THAT(text, testing::ContainsRegex(row));
    }
}

TEST_F(Items, AnIdOfNoGroupHasNoMeaning) {
    for (const int id : {-1, 10, 1023, 4096}) EXPECT_FALSE(MeaningOfItem(id)) << id;
}

}  // namespace
}  // namespace larynth
