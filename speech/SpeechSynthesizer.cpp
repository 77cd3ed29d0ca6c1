// SPDX-License-Identifier: MIT
#include "speech/SpeechSynthesizer.h"

#include <algorithm>
#include <optional>

#include <larynth/Classes.h>
#include <larynth/ComPtr.h>
#include <larynth/Packet.h>
#include <larynth/Streams.h>
#include <larynth/Synthesizer.h>

#include "speech/FramePlanner.h"

namespace larynth {
namespace {

using Zelvani::CheckResult;

std::array<int, kSpeechItems> ItemIndices(ITTSDoublePacket& packet) {
    std::array<int, kSpeechItems> indices{};
    for (std::size_t i = 0; i < indices.size(); ++i) {
        std::string name = SpeechItemName(i);
        CheckResult(packet.GetIndexFromName(name.data(), &indices[i]));
    }
    return indices;
}

// A marker in a stream: a holder without content. Which mark it is follows from the order.
ComPtr<ITTSSyncHolder> NewMarker() {
    ComPtr<ITTSSyncHolder> marker;
    CheckResult(marker.Create(CLSID_TTSStreamHolder));
    return marker;
}

constexpr std::size_t kChunkFrames = 10;

}  // namespace

class SpeechSynthesizer::Implementation {
  public:
    Implementation(const PhoneTable& table, const Speaker& speaker, const SpeechSettings& settings)
        : table_(table), speaker_(speaker), settings_(settings) {
        CheckResult(process_.Create(CLSID_Larynth));
        CheckResult(process_->Initialize(nullptr, GUID_NULL));
        CheckResult(input_.Create(CLSID_TTSObjectList));
        ComPtr<ITTSDoublePacket> packet;
        CheckResult(packet.Create(CLSID_LarynthParams));
        indices_ = ItemIndices(*packet.Get());
    }

    void Begin(const Utterance& utterance) { planner_.emplace(table_, speaker_, settings_, utterance); }

    bool Next(SpeechChunk& chunk) {
        if (!planner_) return false;
        marks_.clear();
        CheckResult(input_->Clear());
        std::size_t frames = 0;
        while (frames < kChunkFrames) {
            const bool isOver = !planner_->Next();
            AddMarks();
            if (isOver) {
                planner_.reset();
                break;
            }
            AddFrame();
            ++frames;
        }
        Render(chunk);
        return frames > 0 || !marks_.empty();
    }

  private:
    void AddMarks() {
        for (const Mark& mark : planner_->Marks()) {
            CheckResult(input_->Add(NewMarker().Get()));
            marks_.push_back(mark);
        }
    }

    // A packet of its own: a resonator that has been used no longer takes its items' values.
    void AddFrame() {
        ComPtr<ILarynthParams> packet;
        CheckResult(packet.Create(CLSID_LarynthParams));
        CheckResult(packet->SetSampleFreq(kSpeechSampleFreq));
        CheckResult(packet->SetFrameLen(settings_.frameLength));
        ComPtr<ITTSDoublePacket> items;
        items.Query(packet.Get());
        const SpeechFrame& frame = planner_->Frame();
        for (std::size_t i = 0; i < frame.size(); ++i) {
            CheckResult(items->SetItemValue(indices_[i], frame[i]));
        }
        CheckResult(input_->Add(packet.Get()));
    }

    // Packets become blocks of samples; a marker comes out as a block without any.
    void Render(SpeechChunk& chunk) {
        ComPtr<ITTSObjectList> output;
        CheckResult(process_->Calculate(input_.Get(), GUID_NULL, output.Id(), output.PutUnknown()));
        samples_.clear();
        chunk.marks.clear();
        int count = 0;
        CheckResult(output->GetCount(&count));
        for (int i = 0; i < count; ++i) {
            ComPtr<ITTSSoundData> block;
            CheckResult(output->GetItem(i, block.Id(), block.PutUnknown()));
            if (!AppendSamples(*block.Get())) {
                chunk.marks.push_back({samples_.size(), marks_[chunk.marks.size()]});
            }
        }
        chunk.samples = samples_;
    }

    // Whether there are any.
    bool AppendSamples(ITTSSoundData& block) {
        const short* samples = nullptr;
        int count = 0;
        CheckResult(block.GetSamples(&samples, &count));
        samples_.insert(samples_.end(), samples, samples + count);
        return count > 0;
    }

    const PhoneTable& table_;
    Speaker speaker_;
    SpeechSettings settings_;
    ComPtr<IACLIOProcess> process_;
    ComPtr<ITTSObjectList> input_;
    std::array<int, kSpeechItems> indices_{};
    std::optional<FramePlanner> planner_;  // of the utterance that is being spoken
    std::vector<Mark> marks_;              // of the chunk
    std::vector<std::int16_t> samples_;
};

SpeechSynthesizer::SpeechSynthesizer(const PhoneTable& table, const Speaker& speaker,
                                     const SpeechSettings& settings)
    : implementation_(std::make_unique<Implementation>(table, speaker, settings)) {}
SpeechSynthesizer::~SpeechSynthesizer() = default;

void SpeechSynthesizer::Begin(const Utterance& utterance) { implementation_->Begin(utterance); }
bool SpeechSynthesizer::Next(SpeechChunk& chunk) { return implementation_->Next(chunk); }

}  // namespace larynth
