// SPDX-License-Identifier: MIT
/// From frames to sound without an interface pointer: link Larynth::Speech.
///
/// Failures are exceptions: InputError for what somebody wrote down or passed in, Error for everything else
/// that goes wrong, each with a status code and a sentence; std::bad_alloc when memory runs out. An object is
/// used by one thread at a time; values may be copied freely. The component modules that lie beside the
/// library are loaded by the first function that needs them.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <memory>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <larynth/Base.h>
#include <larynth/Classes.h>
#include <larynth/ComPtr.h>
#include <larynth/Packet.h>
#include <larynth/Sources.h>
#include <larynth/Synthesizer.h>
#include <larynth/Voice.h>

#define LARYNTH_SPEECH_API __attribute__((visibility("default")))

namespace larynth {

/// What failed, as a sentence, and its status code.
class LARYNTH_SPEECH_API Error : public std::runtime_error {
  public:
    Error(HRESULT status, const std::string& what);  ///< A failing status, and a sentence.
    ~Error() override;
    HRESULT Status() const noexcept { return status_; }  ///< Negative.

  private:
    HRESULT status_;
};

/// What somebody wrote or passed in cannot be used: E_INVALIDARG. In a text file the sentence begins with the
/// place, "FILE:LINE:COLUMN: expected …".
class LARYNTH_SPEECH_API InputError : public Error {
  public:
    explicit InputError(const std::string& what);  ///< No text file is to blame.
    InputError(const std::string& what, std::string file, std::int64_t line, std::int64_t column);
    ~InputError() override;

    const std::string& File() const noexcept { return file_; }  ///< Empty: no text file is to blame.
    std::int64_t Line() const noexcept { return line_; }        ///< From 1; 0: none.
    std::int64_t Column() const noexcept { return column_; }    ///< Characters, from 1; 0: none.

  private:
    std::string file_;
    std::int64_t line_ = 0, column_ = 0;
};

/// Raises Error for the failing status of an interface's method; `what` completes the sentence "cannot …".
LARYNTH_SPEECH_API void Require(HRESULT status, const char* what);
/// The same for a function of the component runtime, with the runtime's own text.
LARYNTH_SPEECH_API void RequireRuntime(HRESULT status);

/// The two component modules that come with the library, in a folder beside that of the runtime.
LARYNTH_SPEECH_API std::vector<std::string> ModulePaths();
/// Loads them, unless they are loaded: their classes are then found without any registration.
LARYNTH_SPEECH_API void LoadModules();

/// One frame of speech: its length and the 52 items of a packet, with the values of a new packet. Amplitudes
/// and gains are linear factors. No item has a range: what the model does with any value is defined, but nan
/// and infinities are refused when the frame is rendered.
struct LARYNTH_SPEECH_API KlattFrame {
    int length = 0;  ///< Samples, from 0.

    double F0 = 100.0;  ///< Fundamental frequency, Hz; 0 is unvoiced.
    double OQ = 0.5;    ///< Open quotient: open phase as a fraction of the period.
    double FL = 0.0;    ///< Flutter depth as a fraction of F0.
    double FLT = 0.0;   ///< Flutter time step of one sample, 10 µs; 100000 / sample frequency is real time.
    double DI = 0.0;    ///< Diplophonia, 0 (none) to 1.
    double TL = 0.0;    ///< Spectral tilt at 3 kHz, dB, 0 to 41; used truncated.
    double AV = 0.0;    ///< Amplitude of voicing.
    double AH = 30.0;   ///< Amplitude of aspiration.
    double AF = 1.0;    ///< Amplitude of frication.
    double AB = 0.0;    ///< Gain of the parallel branch's bypass.

    /// @name The cascade: frequency (Hz), bandwidth (Hz) and gain of nasal pole, formants 1 to 5, nasal zero
    /// @{
    double FNP = 300.0, BWNP = 90.0, GNP = 1.0;
    double F1 = 0.0, BW1 = 0.0, G1 = 1.0;
    double F2 = 0.0, BW2 = 0.0, G2 = 1.0;
    double F3 = 0.0, BW3 = 0.0, G3 = 1.0;
    double F4 = 0.0, BW4 = 0.0, G4 = 1.0;
    double F5 = 0.0, BW5 = 0.0, G5 = 1.0;
    double FNZ = 300.0, BWNZ = 90.0, GNZ = 1.0;
    /// @}

    /// @name The parallel branch: frequency (Hz), bandwidth (Hz) and gain of resonators 0 to 6
    /// @{
    double PF0 = 0.0, PBW0 = 0.0, PG0 = 1.0;
    double PF1 = 0.0, PBW1 = 0.0, PG1 = 1.0;
    double PF2 = 0.0, PBW2 = 200.0, PG2 = 0.0;
    double PF3 = 0.0, PBW3 = 200.0, PG3 = 0.0;
    double PF4 = 0.0, PBW4 = 350.0, PG4 = 0.0;
    double PF5 = 0.0, PBW5 = 200.0, PG5 = 0.0;
    double PF6 = 4900.0, PBW6 = 1500.0, PG6 = 0.0;
    /// @}

    /// An item by its name. Raises InputError, which suggests the nearest name, for a name that no item has.
    double& operator[](std::string_view name);
    double operator[](std::string_view name) const;  ///< Likewise.

    bool operator==(const KlattFrame&) const = default;
};

/// What there is to know about an item.
struct FrameItem {
    std::string_view name;
    std::string_view unit;      ///< "Hz", "dB", "10us" or "factor".
    std::string_view meaning;   ///< A sentence's part.
    double KlattFrame::*value;  ///< Where a frame has it.
};

inline constexpr std::size_t kFrameItems = 52;  ///< Their number.

/// The items in the order of a packet's indices; constant for the process's life.
LARYNTH_SPEECH_API std::span<const FrameItem, kFrameItems> FrameItems() noexcept;
/// The item of this name, compared byte for byte; null when none has it.
LARYNTH_SPEECH_API const FrameItem* FindFrameItem(std::string_view name) noexcept;
/// The item whose name is nearest to this one, upper and lower case taken as equal.
LARYNTH_SPEECH_API const FrameItem& NearestFrameItem(std::string_view name);

/// The two forms of the cascade tract: six resonators one behind the other, or one rational filter. The same
/// transfer function; low bits differ.
enum class TractForm { Resonator, Filter };

/// The open phase of one excitation period, equally spaced, at least one number.
using Waveform = std::vector<double>;

/// An output filter that raises one end of the spectrum.
struct Shelf {
    double F = 0.0;   ///< Corner frequency, Hz.
    double G = 1.0;   ///< Linear gain; 1 is off.
    double P3 = 0.0;  ///< Shape.
    double P4 = 0.0;  ///< Shape.
};

/// What a voice changes about the sound.
struct VoiceSettings {
    double preEmphasis = 0.0;   ///< Coefficient a of y[n] − a·y[n−1].
    double openQuotient = 0.5;  ///< For the wave-table source, at most 0.95.
    Shelf lowShelf{}, highShelf{};
    Waveform wave{};  ///< Empty: the voice has no source of its own.
};

/// Reads a voice from a JSON file; every key may be absent. InputError for the first thing that is wrong and
/// for a file that cannot be read.
LARYNTH_SPEECH_API VoiceSettings ReadVoice(const std::string& path);
/// The same from a file's text; `fileName` serves messages.
LARYNTH_SPEECH_API VoiceSettings ParseVoice(const std::string& text, const std::string& fileName);

/// Reads a waveform: one number a line, blank lines ignored. InputError as for a voice.
LARYNTH_SPEECH_API Waveform ReadWaveform(const std::string& path);
/// The same from a file that is open; `fileName` serves messages.
LARYNTH_SPEECH_API Waveform ParseWaveform(std::istream& input, const std::string& fileName);

/// A wave-table source for a synthesizer of sample frequency `sampleFreq` (Hz). The caller owns the object.
/// Error when a component refuses its values.
LARYNTH_SPEECH_API ComPtr<ITTSVoicingSource> MakeWaveSource(const Waveform& wave, double sampleFreq);
/// A voice, likewise.
LARYNTH_SPEECH_API ComPtr<ITTSVoice> MakeVoice(const VoiceSettings& settings, double sampleFreq);

/// Hz, of an utterance that says nothing else.
inline constexpr double kDefaultSampleFreq = 11025.0;
/// Samples; no file of frames or targets has longer frames.
inline constexpr int kMaxFrameLen = 1'000'000;

/// What holds where a file, or who calls, does not say it.
struct FrameDefaults {
    std::optional<int> frameLen{};       ///< Samples, 0 to kMaxFrameLen; from targets at least 1, else 5 ms.
    std::optional<double> sampleFreq{};  ///< Hz, above 0; else kDefaultSampleFreq.
};

/// A text in front of a frame: frames.size() stands for the end.
struct FrameMarker {
    std::size_t frame;
    std::string text;  ///< UTF-8 without control characters.
};

/// Frames one after the other, with markers in ascending order and, where it changes it, a voice.
struct KlattUtterance {
    double sampleFreq = kDefaultSampleFreq;  ///< Hz.
    std::vector<KlattFrame> frames{};
    std::vector<FrameMarker> markers{};
    std::optional<VoiceSettings> voice{};
};

/// How an item gets from the target before to a target: straight, or along half a period of a cosine, which
/// begins and ends without a slope.
enum class Approach { Linear, Cosine };

/// The value of one item at one time.
struct Target {
    double time;       ///< Seconds from the beginning, from 0.
    std::string item;  ///< Name.
    double value;      ///< Finite.
    Approach approach = Approach::Linear;
};

/// The frames that lead through the targets. They may stand in any order; of two for one item at one time the
/// later one holds from then on, which makes a jump. A frame has the values of its first sample; before an
/// item's first target and behind its last one the item stands still, without targets it is that of a new
/// packet. The utterance ends with the last target: its last frame may be shorter than the others.
/// InputError, which names the target (from 1), for an unknown item, a time or value that is no such number,
/// and targets that leave no time to sound.
LARYNTH_SPEECH_API KlattUtterance FramesFromTargets(std::span<const Target> targets,
                                                    const FrameDefaults& defaults = {});

/// Reads targets: a line each, time,item,value or time,item,value,linear|cosine; blank lines, lines that
/// begin with '#', and a first line whose first field is "time" are skipped. InputError with line and column.
LARYNTH_SPEECH_API std::vector<Target> ReadTargets(const std::string& path);
/// The same from a file that is open; `fileName` serves messages.
LARYNTH_SPEECH_API std::vector<Target> ReadTargets(std::istream& input, const std::string& fileName);

/// The two forms of a file of frames: a line each, or targets between which they lie.
enum class FrameForm { Table, Targets };

/// Reads a file of frames, frame by frame, in memory that does not grow with a table.
///
/// A table is UTF-8 text, one frame a line, fields separated by commas, blanks around a field ignored; '#'
/// begins a comment line. The first other line names the columns: items, SampleFreq, FrameLen, Marker. An
/// empty field repeats the value of the frame before, in the first frame that of a new packet; an empty
/// Marker is none.
class LARYNTH_SPEECH_API FrameReader {
  public:
    /// InputError when the file cannot be opened; targets are read at once.
    explicit FrameReader(const std::string& path, FrameForm form = FrameForm::Table,
                         const FrameDefaults& defaults = {});
    /// The input must live as long as the reader; `fileName` serves messages.
    FrameReader(std::istream& input, const std::string& fileName, FrameForm form = FrameForm::Table,
                const FrameDefaults& defaults = {});
    FrameReader(FrameReader&&) noexcept;
    FrameReader& operator=(FrameReader&&) noexcept;
    ~FrameReader();

    /// Moves to the next frame; false behind the last one, of which there is at least one. InputError for the
    /// first thing that is wrong, with its place.
    bool Next();

    /// The frame that Next moved to; this reference and the next hold until the next call of it.
    const KlattFrame& Frame() const noexcept;
    const std::string& Marker() const noexcept;  ///< In front of the frame; empty: none.
    double SampleFreq() const noexcept;          ///< Hz; the same for all frames, also behind the last one.
    std::string Place() const;                   ///< For messages, as "FILE:LINE".

    class [[gnu::visibility("hidden")]] Implementation;  ///< The library's own.

  private:
    std::unique_ptr<Implementation> implementation_;
};

/// All frames of a file, as FrameReader gives them.
LARYNTH_SPEECH_API KlattUtterance ReadUtterance(const std::string& path, FrameForm form = FrameForm::Table,
                                                const FrameDefaults& defaults = {});
/// The same from a file that is open; `fileName` serves messages.
LARYNTH_SPEECH_API KlattUtterance ReadUtterance(std::istream& input, const std::string& fileName,
                                                FrameForm form = FrameForm::Table,
                                                const FrameDefaults& defaults = {});

/// Where a marker came out.
struct SoundMarker {
    std::size_t sample;  ///< Samples in front of it.
    std::string text;
};

/// A sound of one channel.
struct LARYNTH_SPEECH_API Sound {
    double sampleFreq = kDefaultSampleFreq;  ///< Hz.
    std::vector<std::int16_t> samples{};
    std::vector<SoundMarker> markers{};  ///< In ascending order.

    /// Writes .wav, .flac or .raw (little-endian samples without header), by the path's extension, and the
    /// markers to `labelPath` unless that is empty: start, end (seconds), text, separated by tabs. Files
    /// appear whole, both or none; "-" is raw samples on standard output. A header has the nearest whole
    /// sample frequency. InputError for another extension, a frequency that the format cannot have, and one
    /// file for both; Error for what cannot be written.
    void Write(const std::string& path, const std::string& labelPath = "") const;
};

/// How a synthesizer is to sound.
struct SynthesizerSettings {
    double sampleFreq = kDefaultSampleFreq;  ///< Hz, above 0; of all frames.
    TractForm tract = TractForm::Resonator;
    double volume = 1.0;      ///< Linear, applied last.
    double outputGain = 1.0;  ///< Linear, on the sum of both tracts.
    std::optional<VoiceSettings> voice{};
    std::optional<Waveform> wave{};  ///< Of a wave-table source that displaces any other, also a voice's.
    /// State of the noise generator, which is one for the process, at the start; absent: as it stands.
    std::optional<std::uint32_t> seed{};
};

/// Gets samples as they are made, those of one frame a call; they are valid during the call. What it raises
/// ends the rendering.
using SampleSink = std::function<void(std::span<const std::int16_t>)>;

/// A synthesizer: its state runs on from frame to frame, whichever function renders them. All functions
/// raise Error for what the components refuse, and InputError, which names frame (from 0) and item, for a
/// number that is not finite, a negative length, another sample frequency than its own, or misplaced markers.
class LARYNTH_SPEECH_API Synthesizer {
  public:
    explicit Synthesizer(const SynthesizerSettings& settings = {});
    Synthesizer(Synthesizer&&) noexcept;
    Synthesizer& operator=(Synthesizer&&) noexcept;
    ~Synthesizer();

    double SampleFreq() const noexcept;  ///< Hz.

    void SetVolume(double factor);      ///< Linear, applied last, from the next sample on.
    void SetOutputGain(double factor);  ///< Linear, on the sum of both tracts, from the next sample on.
    /// From the next sample on, with its source, which displaces any other; nothing takes the voice away and
    /// brings back the standard source.
    void SetVoice(const std::optional<VoiceSettings>& voice);

    std::vector<std::int16_t> Render(const KlattFrame& frame);             ///< Samples of a frame.
    std::vector<std::int16_t> Render(std::span<const KlattFrame> frames);  ///< Of frames, in order.
    /// Hands the samples over frame by frame.
    void Render(std::span<const KlattFrame> frames, const SampleSink& sink);
    /// With the markers where they came out; its voice, if it has one, is set before.
    Sound Render(const KlattUtterance& utterance);

    /// As Render, without a copy: valid until the synthesizer renders again or goes.
    std::span<const std::int16_t> RenderChunk(const KlattFrame& frame);
    /// The same for any packet in resonator form, of its own length and sample frequency.
    std::span<const std::int16_t> RenderChunk(IUnknown* packet);

    /// Whether the last sample was a finite number before it became one of 16 bits, which does not tell: what
    /// both tracts gave, times output gain and volume. What a voice's output filters make of it is not asked.
    bool IsFinite() const;

    /// A new packet with the frame's values.
    ComPtr<ILarynthParams> MakePacket(const KlattFrame& frame) const;
    /// Puts a component into the role that its interface names; the synthesizer holds a reference.
    void PlugIn(IUnknown* component, REFIID role);
    /// The object inside, never null, from which every other interface can be asked; it lives at least as
    /// long as the synthesizer. Volume and output gain that are set past this class escape IsFinite.
    IACLIOProcess* Process() const noexcept;

  private:
    class [[gnu::visibility("hidden")]] Implementation;
    std::unique_ptr<Implementation> implementation_;
};

/// An utterance by a synthesizer of its own, at the utterance's sample frequency.
LARYNTH_SPEECH_API Sound Render(const KlattUtterance& utterance, SynthesizerSettings settings = {});

}  // namespace larynth
