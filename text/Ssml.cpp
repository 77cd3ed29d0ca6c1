// SPDX-License-Identifier: MIT
#include "text/Ssml.h"

#include <array>
#include <exception>
#include <expat.h>
#include <functional>
#include <new>
#include <optional>
#include <utility>
#include <vector>

#include "input/Text.h"
#include "text/Characters.h"
#include "text/PhoneInput.h"
#include "text/SsmlValues.h"

namespace larynth {
namespace {

constexpr std::size_t kDeepest = 10'000;         // elements inside each other
constexpr std::int64_t kLongestTag = 1'000'000;  // bytes, of anything that must be read as a whole

using StylePointer = std::shared_ptr<const Style>;

struct DeleteParser {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
};

// Looks attributes up by their names.
class Attributes {
  public:
    explicit Attributes(const XML_Char** list) : list_(list) {}

    std::optional<std::string_view> Find(std::string_view name) const {
        for (const XML_Char** pair = list_; *pair != nullptr; pair += 2)
            if (name == pair[0]) return pair[1];
        return std::nullopt;
    }

    std::string_view Get(std::string_view name) const { return Find(name).value_or(std::string_view()); }

  private:
    const XML_Char** list_;
};

// Without the prefix of a namespace.
std::string_view LocalName(std::string_view name) { return name.substr(name.find_last_of(':') + 1); }

}  // namespace

class SsmlReader::Implementation {
  public:
    Implementation(std::istream& input, std::string name, double meanPitch)
        : characters_(input),
          name_(std::move(name)),
          meanPitch_(meanPitch),
          parser_(XML_ParserCreate("UTF-8")) {
        if (!parser_) throw std::bad_alloc();
        XML_SetUserData(parser_.get(), this);
        XML_SetElementHandler(
            parser_.get(),
            [](void* self, const XML_Char* element, const XML_Char** attributes) {
                Self(self).Guarded([&] { Self(self).Begin(LocalName(element), Attributes(attributes)); });
            },
            [](void* self, const XML_Char* element) {
                Self(self).Guarded([&] { Self(self).End(LocalName(element)); });
            });
        XML_SetCharacterDataHandler(parser_.get(), [](void* self, const XML_Char* text, int length) {
            Self(self).Guarded([&] { Self(self).Text({text, static_cast<std::size_t>(length)}); });
        });
        // Entities of its own could make a short document endless.
        XML_SetEntityDeclHandler(
            parser_.get(), [](void* self, const XML_Char*, int, const XML_Char*, int, const XML_Char*,
                              const XML_Char*, const XML_Char*, const XML_Char*) {
                Self(self).Guarded([&] { throw Self(self).Error("a document without entities of its own"); });
            });
    }

    bool Next(MarkedText& sentence) {
        while (!cutter_.HasSentence() && !ended_) Feed();
        if (cutter_.Take(sentence)) return true;
        if (failure_) std::rethrow_exception(std::exchange(failure_, nullptr));
        return false;
    }

  private:
    // An element that is open, and how text around it is said.
    struct Element {
        StylePointer around;
        bool isAlias = false;         // its text has been replaced
        std::string phones;           // of a phoneme element, as written
        std::int64_t textBefore = 0;  // characters in front of it
    };

    static Implementation& Self(void* self) { return *static_cast<Implementation*>(self); }

    // Exceptions must not pass through the parser.
    void Guarded(const std::function<void()>& action) {
        if (failure_) return;
        try {
            action();
        } catch (...) {
            failure_ = std::current_exception();
            XML_StopParser(parser_.get(), XML_FALSE);
        }
    }

    BadInput Error(const std::string& expected) {
        return BadInput({name_, static_cast<std::int64_t>(XML_GetCurrentLineNumber(parser_.get())),
                         static_cast<std::int64_t>(XML_GetCurrentColumnNumber(parser_.get())) + 1},
                        expected);
    }

    // Tag by tag, so that a sentence is given before more of a slow input is waited for.
    void Feed() {
        std::string bytes;
        bool more = false;
        while (bytes.size() < 1024 && (more = characters_.Next())) {
            AppendUtf8(bytes, characters_.Current());
            if (IsEnd(characters_.Current())) break;
        }
        fed_ += static_cast<std::int64_t>(bytes.size());
        const auto status =
            XML_Parse(parser_.get(), bytes.data(), static_cast<int>(bytes.size()), more ? 0 : 1);
        if (status != XML_STATUS_OK && !failure_) failure_ = std::make_exception_ptr(ParserError());
        if (status == XML_STATUS_OK && more && fed_ - XML_GetCurrentByteIndex(parser_.get()) > kLongestTag)
            failure_ = std::make_exception_ptr(Error("at most a million bytes in one tag or comment"));
        if (!more || failure_) ended_ = true, cutter_.Finish();
    }

    // Behind these something may be complete.
    static bool IsEnd(char32_t c) { return c == U'>' || c == U' ' || c == U'\n'; }

    BadInput ParserError() {
        const XML_Error code = XML_GetErrorCode(parser_.get());
        if (code == XML_ERROR_NO_ELEMENTS)
            return Error(begun_ ? "the end of every element" : "a document with a <speak> element");
        return Error(std::string("well-formed XML (") + XML_ErrorString(code) + ")");
    }

    void Begin(std::string_view name, const Attributes& attributes) {
        begun_ = true;
        if (open_.size() >= kDeepest)
            throw Error("at most " + std::to_string(kDeepest) + " elements inside each other");
        open_.push_back({style_, false, {}, characterCount_});
        if (name == "p" || name == "s")
            cutter_.EndSentence();
        else if (name == "mark")
            cutter_.Annotate({0, Annotation::Kind::Mark, std::string(attributes.Get("name")), 0.0, nullptr});
        else if (name == "break")
            Break(attributes);
        else if (name == "prosody")
            ChangeProsody(attributes);
        else if (name == "emphasis")
            Emphasize(attributes.Get("level"));
        else if (name == "say-as")
            ChangeSayAs(attributes);
        else if (name == "sub" && attributes.Find("alias"))
            Replace(attributes.Get("alias"));
        else if (name == "phoneme" && attributes.Find("ph"))
            Pronounce(attributes);
    }

    void End(std::string_view name) {
        if (name == "p" || name == "s") cutter_.EndSentence();
        if (open_.back().isAlias) --aliases_;
        if (open_.back().textBefore == characterCount_) Text(open_.back().phones);
        SetStyle(open_.back().around);
        open_.pop_back();
    }

    void Text(std::string_view text) {
        if (aliases_ > 0) return;
        for (; !text.empty(); ++characterCount_) cutter_.Add(TakeCharacter(text));
    }

    void SetStyle(StylePointer style) {
        if (style == style_) return;
        style_ = std::move(style);
        cutter_.Annotate({0, Annotation::Kind::Style, {}, 0.0, style_});
    }

    void Break(const Attributes& attributes) {
        std::optional<double> seconds = PauseOfStrength("medium");
        if (const auto strength = attributes.Find("strength")) seconds = PauseOfStrength(*strength);
        if (const auto time = attributes.Find("time")) seconds = ParseDuration(*time);
        if (!seconds) throw Error(R"(a break with a time like "250ms" or a strength like "strong")");
        cutter_.Annotate({0, Annotation::Kind::Break, {}, *seconds, nullptr});
    }

    void ChangeProsody(const Attributes& attributes) {
        Style changed = *style_;
        for (const std::string_view name : {"rate", "pitch", "range", "volume"}) {
            const auto value = attributes.Find(name);
            if (value && !ApplyProsody(name, *value, meanPitch_, changed.prosody))
                throw Error("a " + std::string(name) + R"( like "+10%" or "medium" instead of )" +
                            Quoted(*value));
        }
        SetStyle(std::make_shared<const Style>(changed));
    }

    void Emphasize(std::string_view level) {
        Style changed = *style_;
        const double degree = level == "strong"    ? 2.0
                              : level == "none"    ? 0.0
                              : level == "reduced" ? -1.0
                                                   : 1.0;
        changed.prosody.rate *= 1.0 - 0.08 * degree;
        changed.prosody.pitch *= 1.0 + 0.06 * degree;
        changed.prosody.volume *= 1.0 + 0.12 * degree;
        SetStyle(std::make_shared<const Style>(changed));
    }

    void ChangeSayAs(const Attributes& attributes) {
        Style changed = *style_;
        changed.sayAs = ParseSayAs(attributes.Get("interpret-as"));
        changed.format = attributes.Get("format");
        SetStyle(std::make_shared<const Style>(changed));
    }

    // Another text is said than the one inside.
    void Replace(std::string_view text) {
        Text(text);
        open_.back().isAlias = true;
        ++aliases_;
    }

    void Pronounce(const Attributes& attributes) {
        const std::string_view alphabet = attributes.Find("alphabet").value_or("ipa");
        const std::string_view ph = attributes.Get("ph");
        const bool isIpa = alphabet == "ipa";
        if (!isIpa && alphabet != "x-arpabet" && alphabet != "arpabet")
            throw Error(R"(the alphabet "ipa" or "x-arpabet" instead of )" + Quoted(alphabet));
        std::string bad;
        const auto phones = PhonesOfWord(ph, isIpa ? TextForm::Ipa : TextForm::Arpabet, bad);
        if (!phones) throw Error("phones instead of " + Quoted(bad.empty() ? std::string(ph) : bad));
        Style changed = *style_;
        changed.phones = *phones;
        SetStyle(std::make_shared<const Style>(changed));
        open_.back().phones = ph;
    }

    CharacterStream characters_;
    std::string name_;
    double meanPitch_;
    std::unique_ptr<XML_ParserStruct, DeleteParser> parser_;
    SentenceCutter cutter_;
    StylePointer style_ = std::make_shared<const Style>();
    std::vector<Element> open_;
    std::size_t aliases_ = 0;          // open elements whose text has been replaced
    std::int64_t characterCount_ = 0;  // of text
    std::int64_t fed_ = 0;             // bytes
    bool begun_ = false;               // an element
    bool ended_ = false;               // the input
    std::exception_ptr failure_;
};

SsmlReader::SsmlReader(std::istream& input, std::string name, double meanPitch)
    : implementation_(std::make_unique<Implementation>(input, std::move(name), meanPitch)) {}

SsmlReader::~SsmlReader() = default;

bool SsmlReader::Next(MarkedText& sentence) { return implementation_->Next(sentence); }

}  // namespace larynth
