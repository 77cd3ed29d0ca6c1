// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

#include "speech/SpeechSynthesizer.h"
#include "speechd/ServerLine.h"
#include "text/UtteranceReader.h"

namespace larynth::speechd {

/// Something to be said.
struct Message {
    std::string text;
    TextOptions options;
    Speaker speaker;
    SpeechSettings settings;
};

/// Says one message at a time while its owner listens to the server. Tells the server of beginning, marks and
/// end, and keeps no more than a moment ahead of the time that the sound takes, whether the server plays it
/// at once or gathers it, so that a stop or a pause meets what is being heard.
class SpeakingThread {
  public:
    /// Table and output must outlive this object.
    SpeakingThread(const PhoneTable& table, EventOutput& output);
    SpeakingThread(const SpeakingThread&) = delete;
    SpeakingThread& operator=(const SpeakingThread&) = delete;
    ~SpeakingThread();  ///< Stops.

    /// Whether a message can be said; one that is ending is waited for.
    bool IsFree();
    /// Begins a message; only when free.
    void Begin(Message message);
    void Stop();   ///< As soon as possible; no effect in silence.
    void Pause();  ///< At the next mark.

  private:
    enum class State { Idle, Speaking, Ending, Quitting };
    enum class Wish { GoOn, Pause, Stop };

    void Run();
    const char* Say(const Message& message);
    const char* SayUtterance(SpeechSynthesizer& synthesizer, const Utterance& utterance);
    bool SendReachedMarks(const SpeechChunk& chunk);
    bool AwaitTurn();
    void AskFor(Wish wish);
    Wish CurrentWish();

    const PhoneTable& table_;
    EventOutput& output_;
    std::mutex mutex_;  // of state, wish and message
    std::condition_variable changed_;
    State state_ = State::Idle;
    Wish wish_ = Wish::GoOn;
    Message message_;
    std::chrono::steady_clock::time_point due_;  // when what was sent has been heard, at the earliest
    std::thread thread_;
};

}  // namespace larynth::speechd
