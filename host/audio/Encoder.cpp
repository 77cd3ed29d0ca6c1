// SPDX-License-Identifier: MIT
#include "host/audio/Encoder.h"

#include <algorithm>
#include <exception>
#include <sndfile.h>
#include <stdexcept>

namespace larynth {

class Encoder::Implementation {
  public:
    Implementation(OutputFile* output, AudioFormat format, int headerRate) : output_(output) {
        SF_VIRTUAL_IO callbacks{Length, Seek, Read, Write, Tell};
        SF_INFO info{};
        info.samplerate = headerRate;
        info.channels = 1;
        info.format = (format == AudioFormat::Wav ? SF_FORMAT_WAV : SF_FORMAT_FLAC) | SF_FORMAT_PCM_16;
        file_.reset(sf_open_virtual(&callbacks, SFM_WRITE, &info, this));
        if (!file_) Fail(sf_strerror(nullptr));
    }

    void Append(std::span<const short> samples) {
        const auto count = static_cast<sf_count_t>(samples.size());
        if (sf_write_short(file_.get(), samples.data(), count) != count || failure_) {
            Fail(sf_strerror(file_.get()));
        }
    }

    void Finish() {
        const int error = sf_close(file_.release());
        if (error != SF_ERR_NO_ERROR || failure_) Fail(sf_error_number(error));
    }

  private:
    static Implementation& Of(void* user) { return *static_cast<Implementation*>(user); }
    static sf_count_t Length(void* user) { return Of(user).length_; }
    static sf_count_t Tell(void* user) { return Of(user).position_; }
    static sf_count_t Read(void*, sf_count_t, void*) { return 0; }  // nobody reads a file that is written

    static sf_count_t Seek(sf_count_t offset, int whence, void* user) {
        Implementation& encoder = Of(user);
        const sf_count_t from = whence == SEEK_SET   ? 0
                                : whence == SEEK_CUR ? encoder.position_
                                                     : encoder.length_;
        const sf_count_t target = std::max<sf_count_t>(0, from + offset);
        const bool moves = target != encoder.position_;
        encoder.Do([&](OutputFile& output) {
            if (moves) output.Seek(static_cast<std::uint64_t>(target));
        });
        encoder.position_ = target;
        return target;
    }

    static sf_count_t Write(const void* data, sf_count_t count, void* user) {
        Implementation& encoder = Of(user);
        encoder.Do([&](OutputFile& output) {
            output.Write({static_cast<const char*>(data), static_cast<std::size_t>(count)});
        });
        encoder.position_ += count;
        encoder.length_ = std::max(encoder.length_, encoder.position_);
        return encoder.failure_ ? 0 : count;
    }

    // libsndfile is C: exceptions go around it.
    template <class Deed>
    void Do(Deed deed) noexcept try {
        if (output_ != nullptr && !failure_) deed(*output_);
    } catch (...) {
        failure_ = std::current_exception();
    }

    [[noreturn]] void Fail(const char* message) const {
        if (failure_) std::rethrow_exception(failure_);
        throw std::runtime_error(message);
    }

    OutputFile* output_;
    sf_count_t position_ = 0, length_ = 0;
    std::exception_ptr failure_;
    std::unique_ptr<SNDFILE, decltype(&sf_close)> file_{nullptr, &sf_close};
};

Encoder::Encoder(OutputFile* output, AudioFormat format, int headerRate)
    : implementation_(std::make_unique<Implementation>(output, format, headerRate)) {}
Encoder::~Encoder() = default;

void Encoder::Append(std::span<const short> samples) { implementation_->Append(samples); }
void Encoder::Finish() { implementation_->Finish(); }

}  // namespace larynth
