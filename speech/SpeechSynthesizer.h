// SPDX-License-Identifier: MIT
/// From phones to sound, chunk by chunk.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "speech/PhoneTable.h"
#include "speech/Speaker.h"
#include "speech/SpeechSettings.h"
#include "speech/Utterance.h"

namespace larynth {

/// A mark, and how many samples of its chunk come before it.
struct ReachedMark {
    std::size_t sample = 0;
    Mark mark;
};

/// A stretch of sound of kSpeechSampleFreq, some tens of milliseconds.
struct SpeechChunk {
    std::span<const std::int16_t> samples;  ///< Valid until the next chunk.
    std::vector<ReachedMark> marks;
};

/// A speaker with a synthesizer of the process's modules, which must be loaded. All operations raise
/// Zelvani::CComException for what a component refuses.
class SpeechSynthesizer {
  public:
    /// The table must outlive this object.
    SpeechSynthesizer(const PhoneTable& table, const Speaker& speaker, const SpeechSettings& settings);
    SpeechSynthesizer(const SpeechSynthesizer&) = delete;
    SpeechSynthesizer& operator=(const SpeechSynthesizer&) = delete;
    ~SpeechSynthesizer();

    /// Begins an utterance; what is left of the one before is dropped. Raises BadInput for a phone that the
    /// table does not have.
    void Begin(const Utterance& utterance);

    /// The next stretch of its sound; false behind the last one.
    bool Next(SpeechChunk& chunk);

  private:
    class Implementation;
    std::unique_ptr<Implementation> implementation_;
};

}  // namespace larynth
