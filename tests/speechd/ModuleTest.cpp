// SPDX-License-Identifier: MIT
#include <chrono>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace larynth::test {
namespace {

using testing::HasSubstr;

constexpr std::size_t kSamplesAhead = 4000;  // a quarter of a second

/// The module as the server runs it, at both ends of its pipes.
class Module : public testing::Test {
  protected:
    Module() {
        std::signal(SIGPIPE, SIG_IGN);
        int in[2], out[2];
        if (pipe2(in, O_CLOEXEC) != 0 || pipe2(out, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
        child_ = fork();
        if (child_ == 0) {
            dup2(in[0], STDIN_FILENO);
            dup2(out[1], STDOUT_FILENO);
            alarm(60);
            execl(LARYNTH_SPEECHD_MODULE, "sd_larynth", nullptr);
            _exit(127);
        }
        close(in[0]);
        close(out[1]);
        to_ = in[1];
        from_ = fdopen(out[0], "r");
    }
    ~Module() override {
        close(to_);
        std::fclose(from_);
        waitpid(child_, nullptr, 0);
    }

    void Send(const std::string& lines) const {
        ASSERT_EQ(write(to_, (lines + "\n").data(), lines.size() + 1), std::ssize(lines) + 1);
    }

    /// What comes up to a line that begins so; sound as one line "SOUND" however many blocks it has.
    std::string Until(const std::string& beginning) {
        std::string lines;
        for (std::string line = Line(); !line.empty(); line = Line()) {
            if (line != "SOUND\n" || !lines.ends_with("SOUND\n")) lines += line;
            if (line.starts_with(beginning)) break;
        }
        return lines;
    }

    std::size_t samples_ = 0;  // of all sound so far

  private:
    std::string Line() {
        char buffer[1 << 12] = "";
        if (std::fgets(buffer, sizeof(buffer), from_) == nullptr) return {};
        const std::string line = buffer;
        if (!line.starts_with("705-bits=16")) return line;
        return Sound();
    }

    // The rest of a block; its bytes are counted without their escapes.
    std::string Sound() {
        std::size_t announced = 0, bytes = 0;
        EXPECT_EQ(std::fscanf(from_,
                              "705-num_channels=1 705-sample_rate=16000 705-num_samples=%zu "
                              "705-big_endian=0 705-AUDIO",
                              &announced),
                  1);
        EXPECT_EQ(std::fgetc(from_), 0);
        for (int c = std::fgetc(from_); c != '\n' && c != EOF; c = std::fgetc(from_)) {
            const int meant = c == 0x7D ? std::fgetc(from_) ^ 0x20 : 0x7D;
            EXPECT_THAT(meant, testing::AnyOf(0x7D, '\n'));
            ++bytes;
        }
        EXPECT_EQ(bytes, 2 * announced);
        EXPECT_EQ(Line(), "705 AUDIO\n");
        samples_ += announced;
        return "SOUND\n";
    }

    pid_t child_;
    int to_;
    std::FILE* from_;
};

TEST_F(Module, AnswersAsTheProtocolSays) {
    const struct {
        const char *sent, *last, *answer;
    } rows[] = {
        {"SPEAK", "300", "300 ERR UNKNOWN COMMAND\n"},
        {"INIT", "299 ", "299-Larynth: formant synthesis, English\n299 OK LOADED SUCCESSFULLY\n"},
        {"AUDIO\naudio_output_method=server\n.", "203",
         "207 OK RECEIVING AUDIO SETTINGS\n203 OK AUDIO INITIALIZED\n"},
        {"AUDIO\naudio_output_method=alsa\n.", "300 ",
         "207 OK RECEIVING AUDIO SETTINGS\n300-expected audio_output_method=server\n300 MODULE ERROR\n"},
        {"LOGLEVEL\nlog_level=5\n.", "203", "207 OK RECEIVING LOGLEVEL SETTINGS\n203 OK LOGLEVEL SET\n"},
        {"SET\nrate=-100\npitch=0\npitch_range=100\nvolume=100\nvoice=female1\nsynthesis_voice=NULL\n"
         "language=c\npunctuation_mode=some\nspelling_mode=off\ncap_let_recogn=icon\n.",
         "203 OK SETTINGS", "203 OK RECEIVING SETTINGS\n203 OK SETTINGS RECEIVED\n"},
        {"SET\nrate=101\nvolume=5\n.", "303",
         "203 OK RECEIVING SETTINGS\n303 ERROR INVALID PARAMETER OR VALUE\n"},
        {"SET\nspelling_mode=maybe\n.", "303",
         "203 OK RECEIVING SETTINGS\n303 ERROR INVALID PARAMETER OR VALUE\n"},
        {"SET\nrate\n.", "302", "203 OK RECEIVING SETTINGS\n302 ERROR BAD SYNTAX\n"},
        {"LIST VOICES", "200 ",
         "200-man\ten-US\tnone\n200-woman\ten-US\tnone\n200-whisper\ten-US\tnone\n200 OK VOICE LIST SENT\n"},
        {"SING", "300", "300 ERR UNKNOWN COMMAND\n"},
        {"SET\nrate=100\n.", "203 OK SETTINGS", "203 OK RECEIVING SETTINGS\n203 OK SETTINGS RECEIVED\n"},
        {"SPEAK\n<speak>One <mark name=\"a\"/> two.</speak>\n.", "702",
         "202 OK RECEIVING MESSAGE\n200 OK SPEAKING\n701 BEGIN\nSOUND\n700-a\n700 INDEX MARK\nSOUND\n702 "
         "END\n"},
        {"SPEAK\n<speak></speak>\n.", "702",
         "202 OK RECEIVING MESSAGE\n200 OK SPEAKING\n701 BEGIN\n702 END\n"},
        {"CHAR\n.", "301", "202 OK RECEIVING MESSAGE\n301 ERROR CANT SPEAK\n"},
        {"CHAR\n..\n.", "702", "202 OK RECEIVING MESSAGE\n200 OK SPEAKING\n701 BEGIN\nSOUND\n702 END\n"},
        {"KEY\nshift_a\n.", "702", "202 OK RECEIVING MESSAGE\n200 OK SPEAKING\n701 BEGIN\nSOUND\n702 END\n"},
        {"KEY\na\nb\n.", "305", "202 OK RECEIVING MESSAGE\n305 DATA MORE THAN ONE LINE\n"},
        {"SOUND_ICON\nnew-line\n.", "702",
         "202 OK RECEIVING MESSAGE\n200 OK SPEAKING\n701 BEGIN\nSOUND\n702 END\n"},
        {"SPEAK\n<speak>One <b\n.", "702",
         "202 OK RECEIVING MESSAGE\n200 OK SPEAKING\n701 BEGIN\nSOUND\n702 END\n"},
        {"STOP\nPAUSE\nLIST VOICES\nQUIT", "210",
         "200-man\ten-US\tnone\n200-woman\ten-US\tnone\n200-whisper\ten-US\tnone\n200 OK VOICE LIST SENT\n"
         "210 OK QUIT\n"},
    };
    for (const auto& [sent, last, answer] : rows) {
        Send(sent);
        EXPECT_EQ(Until(last), answer) << sent;
    }
}

TEST_F(Module, StopsAtOnceAndPausesAtAMark) {
    Send("INIT\nSET\nrate=100\n.");
    Until("203 OK SETTINGS");
    const std::string text =
        "SPEAK\n<speak>One two three four five six. <mark name=\"a\"/> Seven "
        "eight nine ten eleven twelve. <mark name=\"b\"/> Thirteen fourteen.</speak>\n.";
    Send(text);
    Until("SOUND");
    const auto begin = std::chrono::steady_clock::now();
    Send("SPEAK\nMore.\n.\nSTOP");
    EXPECT_THAT(Until("703"), HasSubstr("301 ERROR CANT SPEAK\n"));
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
    EXPECT_LT(static_cast<double>(samples_), kSamplesAhead + 16000 * taken.count() + 1600);

    Send(text + "\nPAUSE");
    EXPECT_THAT(Until("704"), testing::EndsWith("SOUND\n700-a\n700 INDEX MARK\n704 PAUSE\n"));
    Send("SPEAK\nOn.\n.");
    EXPECT_THAT(Until("702"), HasSubstr("200 OK SPEAKING\n701 BEGIN\nSOUND\n"));
}

TEST_F(Module, MarksDoNotWaitForTheEndOfABlock) {
    Send("INIT\nSPEAK\n<speak>One <mark name=\"a\"/> two <mark name=\"b\"/> three.</speak>\n.");
    constexpr std::size_t kUsualBlock = 800;  // samples
    Until("700-a");
    const bool isWithin = samples_ % kUsualBlock != 0;
    Until("700-b");
    EXPECT_TRUE(isWithin || samples_ % kUsualBlock != 0) << samples_;
}

TEST_F(Module, SettingsReachTheVoice) {
    const auto length = [this](const std::string& setting) {
        Send("SET\n" + setting + "\n.\nSPEAK\nHi, you.\n.");
        const std::size_t before = samples_;
        Until("702");
        return samples_ - before;
    };
    Send("INIT");
    const std::size_t usual = length("rate=50");
    EXPECT_LT(length("rate=100"), usual * 4 / 5);
    const std::size_t slower = length("rate=0");
    EXPECT_GT(slower, usual * 6 / 5);
    EXPECT_GT(length("rate=-20"), slower);
    EXPECT_GT(length("rate=50\npunctuation_mode=all"), usual * 6 / 5);
    EXPECT_GT(length("punctuation_mode=none\nspelling_mode=on"), usual * 6 / 5);
}

}  // namespace
}  // namespace larynth::test
