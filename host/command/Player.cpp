// SPDX-License-Identifier: MIT
#include "host/command/Player.h"

#include <stdexcept>
#include <string>

#if LARYNTH_HAS_PORTAUDIO
#include <algorithm>
#include <csetjmp>
#include <csignal>
#include <fcntl.h>
#include <portaudio.h>
#include <unistd.h>
#endif

namespace larynth {
namespace {

[[noreturn]] void RefuseToPlay(const std::string& reason) {
    throw std::runtime_error("cannot play: " + reason + "; write a file with -o FILE");
}

}  // namespace

#if LARYNTH_HAS_PORTAUDIO

namespace {

/// Standard error leads nowhere as long as this exists: the libraries below write about every device that
/// they do not find.
class QuietStandardError {
  public:
    QuietStandardError() : before_(fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1)) {
        const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
        if (before_ >= 0 && nowhere >= 0) dup2(nowhere, STDERR_FILENO);
        if (nowhere >= 0) close(nowhere);
    }
    QuietStandardError(const QuietStandardError&) = delete;
    QuietStandardError& operator=(const QuietStandardError&) = delete;
    ~QuietStandardError() {
        if (before_ < 0) return;
        dup2(before_, STDERR_FILENO);
        close(before_);
    }

  private:
    int before_;
};

thread_local sigjmp_buf beforeAbort;

// Where ALSA has no configuration the library aborts the process instead of finding no device.
PaError Initialize() {
    struct sigaction goBack {
    }, before{};
    goBack.sa_handler = [](int) { siglongjmp(beforeAbort, 1); };
    volatile PaError error = paDeviceUnavailable;  // which a jump leaves alone
    sigaction(SIGABRT, &goBack, &before);
    if (sigsetjmp(beforeAbort, 1) == 0) error = Pa_Initialize();
    sigaction(SIGABRT, &before, nullptr);
    return error;
}

// Between the first sound that is heard and the gaps that a busy machine makes, s.
constexpr double kLeastLatency = 0.02;

/// The stream, open and running.
PaError OpenDefaultStream(PaStream** stream, double sampleFreq) {
    PaStreamParameters output{};
    output.device = Pa_GetDefaultOutputDevice();
    if (output.device == paNoDevice) return paDeviceUnavailable;
    output.channelCount = 1;
    output.sampleFormat = paInt16;
    output.suggestedLatency =
        std::max(kLeastLatency, Pa_GetDeviceInfo(output.device)->defaultLowOutputLatency);
    const PaError error = Pa_OpenStream(stream, nullptr, &output, sampleFreq, paFramesPerBufferUnspecified,
                                        paNoFlag, nullptr, nullptr);
    return error == paNoError ? Pa_StartStream(*stream) : error;
}

void Check(PaError error) {
    if (error != paNoError && error != paOutputUnderflowed) RefuseToPlay(Pa_GetErrorText(error));
}

void CheckDevice(PaError error) {
    if (error == paDeviceUnavailable) RefuseToPlay("there is no sound device");
    Check(error);
}

}  // namespace

Player::Player(double sampleFreq) {
    const QuietStandardError quiet;
    CheckDevice(Initialize());
    const PaError error = OpenDefaultStream(&stream_, sampleFreq);
    if (error == paNoError) return;
    Pa_Terminate();
    CheckDevice(error);
}

Player::~Player() {
    const QuietStandardError quiet;
    Pa_Terminate();  // and closes what is open
}

void Player::Append(std::span<const short> samples) {
    Check(Pa_WriteStream(stream_, samples.data(), samples.size()));
}

void Player::Finish() {
    const QuietStandardError quiet;
    Check(Pa_StopStream(stream_));
}

#else

Player::Player(double) { RefuseToPlay("this program was built without PortAudio"); }
Player::~Player() = default;
void Player::Append(std::span<const short>) {}
void Player::Finish() {}

#endif

}  // namespace larynth
