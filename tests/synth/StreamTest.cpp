// SPDX-License-Identifier: MIT
#include "tests/synth/SynthFixture.h"

namespace larynth::test {
namespace {

class Stream : public SynthFixture {
  protected:
    /// The output as text: "n" a block of n samples, "name" a sync element with that object, "-" one
    /// without.
    std::string Shape(IUnknown* input, const std::vector<std::pair<std::string, IUnknown*>>& names) {
        ComPtr<IUnknown> output;
        EXPECT_EQ(Calculate(input, IID_ITTSObjectList, output), S_OK);
        ComPtr<ITTSObjectList> list;
        if (!list.TryQuery(output.Get())) return "no list";
        std::string shape;
        int count = 0;
        list->GetCount(&count);
        for (int i = 0; i < count; ++i) {
            ComPtr<ITTSSoundData> block;
            list->GetItem(i, block.Id(), block.PutUnknown());
            shape += Element(block.Get(), names) + " ";
        }
        return shape;
    }

  private:
    static std::string Element(ITTSSoundData* data,
                               const std::vector<std::pair<std::string, IUnknown*>>& names) {
        auto* block = static_cast<FakeBlock*>(data);
        if (block->format == 2) return std::to_string(block->samples.size());
        if (!block->attached) return "-";
        ComPtr<IUnknown> attached;
        attached.Query(block->attached.Get());
        for (const auto& [name, object] : names) {
            if (object == attached.Get()) return name;
        }
        return "?";
    }
};

ComPtr<IUnknown> Marker() { return ComPtr<IUnknown>::Adopt(new FakeTract<ITTSVocalTract>("marker", 0.0)); }

ComPtr<IUnknown> Voice() { return ComPtr<IUnknown>::Adopt(static_cast<ITTSVoice*>(new FakeVoice)); }

TEST_F(Stream, FlattensListsAndMarkersInInputOrder) {
    Initialize();
    const auto X = Marker(), Y = Marker();
    const std::vector<std::pair<std::string, IUnknown*>> names = {{"X", X.Get()}, {"Y", Y.Get()}};
    const auto nested = Holder(X.Get(), Packet(1), Holder(Y.Get(), Packet(3)), Packet(2));
    const auto list = List(Packet(1), Marker(), Packet(2), nested);
    EXPECT_EQ(Shape(List().Get(), names), "");
    EXPECT_EQ(Shape(List(Packet(4), Packet(0), Packet(5)).Get(), names), "4 0 5 ");
    EXPECT_EQ(Shape(Holder(X.Get(), Packet(1), Packet(2)).Get(), names), "X 1 2 ");
    EXPECT_EQ(Shape(Holder(nullptr).Get(), names), "- ");
    EXPECT_EQ(Shape(nested.Get(), names), "X 1 Y 3 2 ");
    EXPECT_EQ(Shape(list.Get(), names), "1 2 X 1 Y 3 2 ")
        << "the marker that is no packet is left out";
}

TEST_F(Stream, AnnouncesAVoiceSetDirectlyBeforeTheNextMarkerOnce) {
    Initialize();
    const auto voice = Voice(), X = Marker();
    const std::vector<std::pair<std::string, IUnknown*>> names = {{"X", X.Get()}, {"voice", voice.Get()}};
    ASSERT_EQ(attributes->SetVoice(voice.Get(), GUID_NULL), S_OK);
    Render(Packet(1));
    EXPECT_EQ(Shape(List(Packet(1)).Get(), names), "1 ") << "neither a packet nor a bare list announces";
    const auto list = List(Packet(1), Holder(X.Get(), Packet(2)), Holder(X.Get()));
    EXPECT_EQ(Shape(list.Get(), names), "1 voice X 2 X ");
    EXPECT_EQ(Shape(list.Get(), names), "1 X 2 X ");
}

TEST_F(Stream, TakesAVoiceFromAMarkerWithoutAnnouncingIt) {
    Initialize();
    const auto first = Voice(), second = Voice();
    const std::vector<std::pair<std::string, IUnknown*>> names = {{"first", first.Get()},
                                                                  {"second", second.Get()}};
    attributes->SetVoice(first.Get(), GUID_NULL);
    const auto holder = Holder(second.Get(), Packet(1));
    EXPECT_EQ(Shape(holder.Get(), names), "second 1 ") << "the marker replaces the voice that was pending";
    ComPtr<IUnknown> current;
    EXPECT_EQ(attributes->GetVoice(IID_IUnknown, current.Put()), S_OK);
    EXPECT_EQ(current.Get(), second.Get());
}

TEST_F(Stream, AFailedAnnouncementIsMadeUpForLater) {
    Initialize();
    const auto voice = Voice();
    attributes->SetVoice(voice.Get(), GUID_NULL);
    const auto holder = Holder(nullptr);
    const std::vector<std::pair<std::string, IUnknown*>> names = {{"voice", voice.Get()}};
    script = Script{};
    ComPtr<IUnknown> output;
    ASSERT_EQ(Calculate(holder.Get(), IID_ITTSObjectList, output), S_OK);
    const int announcement = CallNumber("CreateInstance", 2);  // the first one made the output list
    attributes->SetVoice(voice.Get(), GUID_NULL);
    script = Script{};
    script.failAt = announcement;
    EXPECT_EQ(Shape(holder.Get(), names), "- ");
    EXPECT_EQ(Shape(holder.Get(), names), "voice - ");
}

}  // namespace
}  // namespace larynth::test
