// SPDX-License-Identifier: MIT
#include "face/Targets.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "engine/Trigonometry.h"
#include "face/Failure.h"
#include "input/FieldLines.h"

namespace larynth {
namespace {

constexpr double kUsualFrame = 0.005;    // s
constexpr double kMostSamples = 0x1p53;  // up to which all whole numbers are doubles

/// What is wrong with a target: the field and what was expected there; nothing for a good one.
struct Fault {
    enum class Field { Time, Item, Value } field;
    std::string expected;
};

std::optional<Fault> FaultOf(const Target& target) {
    if (!(target.time >= 0.0) || !std::isfinite(target.time)) {
        return Fault{Fault::Field::Time, "a time in seconds from 0"};
    }
    if (FindFrameItem(target.item) == nullptr) {
        const std::string nearest(NearestFrameItem(target.item).name);
        return Fault{Fault::Field::Item, "the name of an item, the nearest is " + nearest};
    }
    if (!std::isfinite(target.value)) return Fault{Fault::Field::Value, "a finite number"};
    return std::nullopt;
}

std::string FieldText(const Target& target, Fault::Field field) {
    if (field == Fault::Field::Item) return Quoted(target.item);
    return ShortestText(field == Fault::Field::Time ? target.time : target.value);
}

void RequireTargets(std::span<const Target> targets) {
    for (std::size_t i = 0; i < targets.size(); ++i) {
        if (const std::optional<Fault> fault = FaultOf(targets[i])) {
            throw InputError("target " + std::to_string(i + 1) + ": expected " + fault->expected +
                             ", found " + FieldText(targets[i], fault->field));
        }
    }
}

double RequireSampleFreq(double sampleFreq) {
    if (std::isnormal(sampleFreq) && sampleFreq > 0.0) return sampleFreq;
    throw InputError(std::string("sample frequency: expected ") + kSampleFreqRange + ", found " +
                     ShortestText(sampleFreq));
}

int FrameLenOf(const FrameDefaults& defaults, double sampleFreq) {
    const double usual = std::clamp(std::round(kUsualFrame * sampleFreq), 1.0, double{kMaxFrameLen});
    const int length = defaults.frameLen.value_or(static_cast<int>(usual));
    if (length >= 1 && length <= kMaxFrameLen) return length;
    throw InputError("frame length: expected a number of samples from 1 to " + std::to_string(kMaxFrameLen) +
                     " between targets, found " + std::to_string(length));
}

Approach ReadApproach(const FieldLines& lines, std::string_view field) {
    if (field == "linear") return Approach::Linear;
    if (field == "cosine") return Approach::Cosine;
    lines.Fail(field, "linear or cosine");
}

double ReadNumber(const FieldLines& lines, std::string_view field, const std::string& expected) {
    const std::optional<double> number = ParseNumber(field);
    if (!number) lines.Fail(field, expected);
    return *number;
}

Target ReadTarget(const FieldLines& lines) {
    const auto& fields = lines.Fields();
    if (fields.size() < 3 || fields.size() > 4) {
        throw BadInput(lines.At(fields.size() > 4 ? fields[4] : lines.End()),
                       "time,item,value or time,item,value,linear|cosine, found " +
                           std::to_string(fields.size()) + " fields");
    }
    Target target{ReadNumber(lines, fields[0], "a time in seconds from 0"), std::string(fields[1]),
                  ReadNumber(lines, fields[2], "a number")};
    if (fields.size() == 4) target.approach = ReadApproach(lines, fields[3]);
    if (const std::optional<Fault> fault = FaultOf(target)) {
        lines.Fail(fields[static_cast<std::size_t>(fault->field)], fault->expected);
    }
    return target;
}

std::vector<Target> TargetsIn(std::istream& input, const std::string& fileName) {
    FieldLines lines(input, fileName, FieldLines::Separator::Comma);
    std::vector<Target> targets;
    bool isFirst = true;
    for (; lines.Next(); isFirst = false) {
        if (isFirst && lines.Fields().front() == "time") continue;
        targets.push_back(ReadTarget(lines));
    }
    if (targets.empty()) throw BadInput(lines.Beginning(), "a target, found the end");
    return targets;
}

}  // namespace

TargetFrames::TargetFrames(std::span<const Target> targets, const FrameDefaults& defaults, std::string name)
    : name_(std::move(name)),
      sampleFreq_(RequireSampleFreq(defaults.sampleFreq.value_or(kDefaultSampleFreq))),
      frameLen_(FrameLenOf(defaults, sampleFreq_)) {
    RequireTargets(targets);
    double end = 0.0;
    for (const FrameItem& item : FrameItems()) {
        Track track{item.value, {}};
        std::ranges::copy_if(targets, std::back_inserter(track.targets),
                             [&](const Target& target) { return target.item == item.name; });
        if (track.targets.empty()) continue;
        std::ranges::stable_sort(track.targets, {}, &Target::time);
        end = std::max(end, track.targets.back().time);
        tracks_.push_back(std::move(track));
    }
    const double samples = std::round(end * sampleFreq_);
    if (!(samples >= 1.0) || samples > kMostSamples) {
        throw InputError((name_.empty() ? "" : name_ + ": ") +
                         "expected a last target behind the first sample and not later than sample 2^53, "
                         "found one at " +
                         ShortestText(end) + " s");
    }
    length_ = static_cast<std::int64_t>(samples);
}

bool TargetFrames::Next() {
    if (position_ == length_) return false;
    const double time = static_cast<double>(position_) / sampleFreq_;
    for (Track& track : tracks_) frame_.*track.value = ValueAt(track, time);
    frame_.length = static_cast<int>(std::min<std::int64_t>(frameLen_, length_ - position_));
    position_ += frame_.length;
    ++number_;
    return true;
}

double TargetFrames::ValueAt(Track& track, double time) {
    const std::vector<Target>& targets = track.targets;
    while (track.next < targets.size() && targets[track.next].time <= time) ++track.next;
    if (track.next == 0) return targets.front().value;
    const Target& from = targets[track.next - 1];
    if (track.next == targets.size()) return from.value;
    const Target& to = targets[track.next];
    const double passed = (time - from.time) / (to.time - from.time);
    const double weight =
        to.approach == Approach::Cosine ? (1.0 - Cosine(std::numbers::pi * passed)) / 2.0 : passed;
    return std::lerp(from.value, to.value, weight);  // finite also where the difference is not
}

std::vector<Target> ReadTargets(std::istream& input, const std::string& fileName) {
    return Translated([&] { return TargetsIn(input, fileName); });
}

std::vector<Target> ReadTargets(const std::string& path) {
    return Translated([&] {
        InputFile file(path, InputFile::Use::Once);
        return TargetsIn(file.Stream(), path);
    });
}

KlattUtterance FramesFromTargets(std::span<const Target> targets, const FrameDefaults& defaults) {
    TargetFrames frames(targets, defaults, "");
    KlattUtterance utterance{frames.SampleFreq(), {}, {}, {}};
    utterance.frames.reserve(frames.Count());  // what is absurdly long fails here
    while (frames.Next()) utterance.frames.push_back(frames.Frame());
    return utterance;
}

}  // namespace larynth
