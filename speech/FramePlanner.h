// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <vector>

#include "speech/PhoneTable.h"
#include "speech/Speaker.h"
#include "speech/SpeechFrame.h"
#include "speech/SpeechSettings.h"
#include "speech/Utterance.h"

namespace larynth {

/// Makes the frames of an utterance, one after the other; a phone is worked out when its time comes.
class FramePlanner {
  public:
    /// The table must outlive this object. Raises BadInput for a phone that it does not have.
    FramePlanner(const PhoneTable& table, const Speaker& speaker, const SpeechSettings& settings,
                 const Utterance& utterance);
    FramePlanner(FramePlanner&&) noexcept;
    FramePlanner& operator=(FramePlanner&&) noexcept;
    ~FramePlanner();

    /// Moves to the next frame; false behind the last one.
    bool Next();

    const SpeechFrame& Frame() const noexcept;
    /// In front of the frame that Next moved to, or behind the last one.
    const std::vector<Mark>& Marks() const noexcept;

  private:
    class Implementation;
    std::unique_ptr<Implementation> implementation_;
};

}  // namespace larynth
