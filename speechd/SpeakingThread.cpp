// SPDX-License-Identifier: MIT
#include "speechd/SpeakingThread.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <sstream>
#include <utility>

#include "input/Text.h"

namespace larynth::speechd {
namespace {

using Clock = std::chrono::steady_clock;

// What a busy machine may need to go on in time.
constexpr std::chrono::milliseconds kLead{250};

constexpr char kBegin[] = "701 BEGIN";
constexpr char kEnd[] = "702 END";
constexpr char kStop[] = "703 STOP";
constexpr char kPause[] = "704 PAUSE";

Clock::duration Duration(std::size_t samples) {
    return std::chrono::duration_cast<Clock::duration>(
        std::chrono::duration<double>(static_cast<double>(samples) / kSpeechSampleFreq));
}

}  // namespace

SpeakingThread::SpeakingThread(const PhoneTable& table, EventOutput& output)
    : table_(table), output_(output), thread_([this] { Run(); }) {}

SpeakingThread::~SpeakingThread() {
    AskFor(Wish::Stop);
    IsFree();
    {
        const std::lock_guard lock(mutex_);
        state_ = State::Quitting;
    }
    changed_.notify_all();
    thread_.join();
}

bool SpeakingThread::IsFree() {
    std::unique_lock lock(mutex_);
    if (state_ == State::Speaking && wish_ != Wish::Stop) return false;
    changed_.wait(lock, [this] { return state_ == State::Idle; });
    return true;
}

void SpeakingThread::Begin(Message message) {
    {
        const std::lock_guard lock(mutex_);
        message_ = std::move(message);
        state_ = State::Speaking;
        wish_ = Wish::GoOn;
    }
    changed_.notify_all();
}

void SpeakingThread::Stop() { AskFor(Wish::Stop); }
void SpeakingThread::Pause() { AskFor(Wish::Pause); }

void SpeakingThread::AskFor(Wish wish) {
    {
        const std::lock_guard lock(mutex_);
        wish_ = std::max(wish_, wish);
    }
    changed_.notify_all();
}

SpeakingThread::Wish SpeakingThread::CurrentWish() {
    const std::lock_guard lock(mutex_);
    return wish_;
}

void SpeakingThread::Run() {
    const auto enter = [this](State state) {
        {
            const std::lock_guard lock(mutex_);
            state_ = state;
        }
        changed_.notify_all();
    };
    while (true) {
        Message message;
        {
            std::unique_lock lock(mutex_);
            changed_.wait(lock, [this] { return state_ != State::Idle; });
            if (state_ == State::Quitting) return;
            message = std::move(message_);
        }
        const char* const ending = Say(message);
        enter(State::Ending);  // before the server hears of it and sends the next message
        output_.Send(ending);
        enter(State::Idle);
    }
}

// What a message says that cannot be said goes to the server's log.
const char* SpeakingThread::Say(const Message& message) try {
    output_.Send(kBegin);
    due_ = Clock::now();
    std::istringstream text(message.text);
    UtteranceReader reader(text, "message", message.options);
    SpeechSynthesizer synthesizer(table_, message.speaker, message.settings);
    const char* ending = nullptr;
    while (ending == nullptr && reader.Next()) ending = SayUtterance(synthesizer, reader.Current());
    return ending != nullptr ? ending : kEnd;
} catch (const std::exception& failure) {
    std::fprintf(stderr, "sd_larynth: %s\n", Printable(failure.what()).c_str());
    return kEnd;
}

// The event that ends the message here; null: it goes on.
const char* SpeakingThread::SayUtterance(SpeechSynthesizer& synthesizer, const Utterance& utterance) {
    synthesizer.Begin(utterance);
    for (SpeechChunk chunk; synthesizer.Next(chunk);) {
        if (!AwaitTurn()) return kStop;
        if (!SendReachedMarks(chunk)) return kPause;
    }
    return CurrentWish() == Wish::Stop ? kStop : nullptr;
}

// False where the message pauses: at a mark.
bool SpeakingThread::SendReachedMarks(const SpeechChunk& chunk) {
    constexpr int kSampleFreq = static_cast<int>(kSpeechSampleFreq);
    std::size_t sent = 0;
    const auto sendUpTo = [&](std::size_t sample) {
        output_.SendSound(chunk.samples.subspan(sent, sample - sent), kSampleFreq);
        due_ += Duration(sample - sent);
        sent = sample;
    };
    for (const auto& [sample, mark] : chunk.marks) {
        if (mark.kind != Mark::Kind::Named) continue;
        sendUpTo(sample);
        output_.SendMark(mark.name);
        if (CurrentWish() == Wish::Pause) return false;
    }
    sendUpTo(chunk.samples.size());
    return true;
}

// Waits until the next chunk is wanted; false when nothing more is.
bool SpeakingThread::AwaitTurn() {
    std::unique_lock lock(mutex_);
    return !changed_.wait_until(lock, due_ - kLead, [this] { return wish_ == Wish::Stop; });
}

}  // namespace larynth::speechd
