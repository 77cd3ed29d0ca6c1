// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cstring>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <string>
#include <tuple>
#include <unistd.h>
#include <vector>

#include "tests/host/CommandFolder.h"

// The address sanitizer takes terabytes of addresses.
#ifdef __has_feature
#define LARYNTH_MEMORY_CAN_BE_LIMITED !__has_feature(address_sanitizer)
#elif defined(__SANITIZE_ADDRESS__)
#define LARYNTH_MEMORY_CAN_BE_LIMITED 0
#else
#define LARYNTH_MEMORY_CAN_BE_LIMITED 1
#endif

namespace larynth::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::StartsWith;

constexpr char kTable[] = "F0,AV,FrameLen,Marker\n100,700,200,one\n,,,\n120,,100,two\n";
constexpr std::size_t kTableBytes = 1000;  // of 500 samples
constexpr char kLarynth[] = LARYNTH_MODULE_DIR "/Larynth.so";
constexpr char kCompanion[] = LARYNTH_MODULE_DIR "/LarynthCompanion.so";

class Command : public testing::Test {
  protected:
    void SetUp() override { folder_.Write("t.csv", kTable); }

    CommandResult Run(const std::string& line, int status = 0) const {
        CommandResult result = folder_.Run(line);
        EXPECT_EQ(result.status, status) << line << '\n' << result.err;
        return result;
    }

    std::string Raw(const std::string& options) const {
        return Run("larynth render t.csv -o - " + options).out;
    }

    /// How many of the lines of `larynth classes` begin so.
    int CountClasses(const std::string& beginning) const {
        return std::stoi(folder_.Run("larynth classes | grep -c '^" + beginning + "'").out);
    }

    CommandFolder folder_;
};

TEST_F(Command, AFailureHasItsStatusAndOneClearLineAndLeavesNothing) {
    folder_.Write("text.so", "no module");
    folder_.Write("p.raw", std::string(82, '\0'));
    std::filesystem::create_symlink("t.csv", folder_.Path("l.raw"));
    std::filesystem::create_hard_link(folder_.Path("t.csv"), folder_.Path("h.raw"));
    const std::string longName(300, 'n');
    std::filesystem::create_directory(folder_.Path("d.wav"));
    const std::string render = "larynth render t.csv -o ", toWav = render + "o.wav ";
    const std::tuple<int, std::string, std::string> rows[] = {
        {2, "larynth", "render, plot, items, register, unregister, classes or completion"},
        {2, "larynth render t.csv", "output"},
        {2, "larynth render t.csv u.csv -o o.wav", "expected a folder for several inputs, found o.wav"},
        {2, "larynth render t.csv ./t.csv -o n/", "t.csv and ./t.csv would both become n/t.wav"},
        {2, "larynth render t.csv p.raw -o . --format raw", "./p.raw: expected another file than an input"},
        {2, "larynth render t.csv - -o n", "expected files for an output folder, found -"},
        {2, "larynth render t.csv -o n/ --labels -", "--labels: expected a folder, found -"},
        {2, "larynth render t.csv -o n/ --voice none.json", "none.json: cannot be opened"},
        {2, toWav + "--force", "--force: expected a folder as --output, found o.wav"},
        {1, "larynth render t.csv -o t.csv/", "t.csv/: cannot be made: "},
        {2, render + "o.mp3", "expected - or a name in .wav, .flac or .raw, found o.mp3"},
        {2, toWav + "--labels ./o.wav", "--labels: expected another file"},
        {2, toWav + "--labels t.csv", "--labels: expected another file than the input, found t.csv"},
        {2, "larynth render - -o o.wav --labels h.raw <t.csv",
         "--labels: expected another file than the input"},
        {2, render + "l.raw", "--output: expected another file than the input, found l.raw"},
        {2, render + "h.raw", "--output: expected another file than the input, found h.raw"},
        {2, render + "- >>t.csv", "--output: expected another file than the input, found /dev/stdout"},
        {2, "larynth render p.raw --input packets -o ./p.raw",
         "--output: expected another file than the input"},
        {2, toWav + "--labels - >>t.csv",
         "--labels: expected another file than the input, found /dev/stdout"},
        {2, render + "- --labels - >/dev/null", "--labels: expected another file than the output, found -"},
        {2, toWav + "--voice v --labels ./v", "--labels: expected another file than the voice, found ./v"},
        {2, toWav + "--sample-freq 1e-310",
         "--sample-freq: expected a number above 0 (from 2.2250738585072014"},
        {2, "larynth render \"$(printf 'a\\033[2J')\" -o o.wav", "larynth: a\\x1B[2J: cannot be opened"},
        {2, "larynth render /dev/zero -o o.wav", "/dev/zero:1:1: expected a line of at most 1000000 bytes"},
        {2, toWav + "--voice /dev/zero", "/dev/zero: expected at most 67108864 bytes, found more"},
        {1, "{ echo FrameLen; yes 1000000 | head -2148; } | larynth render - -o o.wav",
         "o.wav: expected at most 4 GiB in a WAV file (.raw and .flac hold more), found 2148000000 samples"},
        {2, "larynth render '' -o o.wav", "INPUT: expected the name of a file, found an empty text"},
        {2, toWav + "--labels ''", "--labels: expected the name of a file"},
        {1, toWav + "--labels " + longName, longName + ": cannot be created: File name too long"},
#if LARYNTH_MEMORY_CAN_BE_LIMITED
        {1, "ulimit -v 60000; " + toWav + "--voice /dev/zero", "larynth: out of memory"},
#endif
        {1, "larynth --help >/dev/full", "standard output: cannot be written"},
        {2, toWav + "--volume loud", "--volume: expected a number, found \"loud\""},
        {2, toWav + "--tract tube", "--tract: expected resonator or filter, found \"tube\""},
        {2, toWav + "--source wave:t.csv", "t.csv:1:1: expected a number"},
        {2, toWav + "--voice t.csv", "t.csv:1:1: expected JSON"},
        {2, "head -c 83 /dev/zero | larynth render - --input packets -o o.wav",
         "<stdin>: expected packets of 82 bytes each, found 83 bytes"},
        {2, "larynth render . -o o.wav", ".: cannot be read"},
        {2, toWav + "--input frames", "--input: expected table, targets or packets, found \"frames\""},
        {2, "echo 0,f1,1 | larynth render - --input targets -o o.wav",
         "<stdin>:1:3: expected the name of an item, the nearest is F1, found \"f1\""},
        {2, "echo 1,F1,1 | larynth render - --input targets --frame-len 0 -o o.wav",
         "frame length: expected a number of samples from 1"},
        {2, "larynth items --format xml", "--format: expected text, csv or json, found \"xml\""},
        {2, render + "o.flac --sample-freq 1e6", "sample frequency of 1e+06"},
        {2, "larynth register " + std::string(kCompanion) + " none.so", "none.so: expected a module"},
        {2, "larynth register .", ".: expected a module, found no regular file"},
        {2, "larynth register text.so", "expected a component module: "},
        {1, render + "- >/dev/full", "standard output: cannot be written: No space left"},
        {1, render + "- >&-", "standard output: cannot be written"},
        {1, render + "d.wav", "d.wav: cannot be written: Is a directory"},
        {1, toWav + "--labels none/l", "none/l: cannot be created"},
        {1, toWav + "--labels /dev/full", "/dev/full: cannot be written"},
        {1, "printf 'F0,FrameLen\\n1,0\\n' | larynth render - -o o.flac",
         "o.flac: expected a sound that is not empty in a FLAC file"},
        // More than a pipe holds, so that the reader is gone before all is written.
        {1,
         "{ printf 'FrameLen\\n1000000\\n' | larynth render - -o -; echo $? >status; } | true; "
         "read s <status; rm status; exit $s",
         "standard output: cannot be written: Broken pipe"},
    };
    for (const auto& [status, line, message] : rows) {
        const CommandResult result = Run(line, status);
        EXPECT_THAT(result.err, MatchesRegex("larynth: [ -~]*\n")) << line;
        EXPECT_THAT(result.err, HasSubstr(message)) << line;
        EXPECT_EQ(result.out, "") << line;
    }
    EXPECT_THAT(folder_.Names(), ElementsAre("d.wav", "h.raw", "l.raw", "p.raw", "t.csv", "text.so"));
    EXPECT_EQ(folder_.Read("t.csv"), kTable);
}

TEST_F(Command, AFailureLeavesAnExistingFileUntouched) {
    folder_.Write("o.wav", "old");
    for (const char* line :
         {"echo F0,Av,FrameLen | larynth render - -o o.wav", "larynth render t.csv -o o.wav --labels none/l",
          "ulimit -f 0; larynth render t.csv -o o.wav"}) {
        EXPECT_NE(folder_.Run(line).status, 0) << line;
        EXPECT_EQ(folder_.Read("o.wav"), "old") << line;
    }
    EXPECT_THAT(folder_.Names(), ElementsAre("o.wav", "t.csv"));
}

TEST_F(Command, EveryFormOfOutputHoldsTheSameSamples) {
    const std::string raw = Raw("");
    ASSERT_EQ(raw.size(), kTableBytes);
    EXPECT_EQ(Run("larynth render - -o o.raw <t.csv && larynth render ./t.csv -o o.wav").err, "");
    EXPECT_EQ(folder_.Read("o.raw"), raw);
    EXPECT_EQ(folder_.Read("o.wav").substr(44), raw);
    Run("mkfifo p.raw; timeout 10 cat p.raw >copy & larynth render t.csv -o p.raw && wait && test -p p.raw");
    EXPECT_EQ(folder_.Read("copy"), raw);
    Run("mkfifo p.flac; timeout 10 cat p.flac >copy & larynth render t.csv -o p.flac && wait && "
        "larynth render t.csv -o o.flac");
    EXPECT_EQ(folder_.Read("copy"), folder_.Read("o.flac"));
    Run("ln -s new.raw dangling.raw; cat t.csv | larynth render /dev/stdin -o dangling.raw && test -L "
        "dangling.raw");
    EXPECT_EQ(folder_.Read("new.raw"), raw);
}

TEST_F(Command, LabelsTellWhereTheMarkersCameOut) {
    Raw("--labels l.txt --sample-freq 10000.5");
    EXPECT_EQ(folder_.Read("l.txt"), "0.000000\t0.039998\tone\n0.039998\t0.049998\ttwo\n");
}

TEST_F(Command, OptionsReachTheSynthesizer) {
    const std::string plain = Raw("");
    EXPECT_EQ(Raw("--volume 1 --output-gain 1 --seed 1 --tract resonator --frame-len 7"), plain);
    EXPECT_NE(Raw("--seed 2"), plain);
    EXPECT_EQ(Raw("--volume -0.5 --output-gain 2"), Raw("--volume -1"));
    EXPECT_EQ(Raw("--volume 0"), std::string(kTableBytes, '\0'));
    // The same transfer function with another order of operations, which only low bits tell.
    EXPECT_NE(Raw("--tract filter --volume 1e12"), Raw("--volume 1e12"));
}

TEST_F(Command, ASourceThatIsNamedSoundsThroughTheVoicesFilters) {
    folder_.Write("w.txt", "0.5\n1\n0.25\n-1\n");
    folder_.Write("filter.json", R"({"pre_emphasis":0.5})");
    folder_.Write("both.json", R"({"pre_emphasis":0.5,"wave":[1,0,0,0]})");
    const std::string own = Raw("--voice both.json"), named = Raw("--voice both.json --source wave:w.txt");
    EXPECT_EQ(Raw("--voice both.json --source standard"), own);
    EXPECT_EQ(named, Raw("--voice filter.json --source wave:w.txt"));
    EXPECT_NE(named, Raw("--source wave:w.txt")) << "the voice's filter is there";
}

TEST_F(Command, PacketsHaveTheFrameLengthOfTheirConversion) {
    // A frame is 110 samples; an unvoiced packet of nothing but zeros is silent.
    const std::string line = "head -c 164 /dev/zero | larynth render - --input packets -o - ";
    EXPECT_EQ(Run(line).out, std::string(440, '\0'));
    const CommandResult result = Run(line + "--frame-len 50 --sample-freq 8000 --tract filter");
    EXPECT_EQ(result.out.size(), 2U * 110 * 2);
    EXPECT_EQ(result.err, "larynth: --frame-len does not apply to packets: their conversion sets it\n");

    const CommandResult none =
        Run("larynth render /dev/null --input packets -o o.raw --labels l && "
            "larynth render - --input packets -o o.wav </dev/null");
    EXPECT_EQ(none.err, "");
    EXPECT_THAT(folder_.Names(), ElementsAre("l", "o.raw", "o.wav", "t.csv"));
    EXPECT_EQ(folder_.Read("o.raw") + folder_.Read("l"), "");
    EXPECT_EQ(folder_.Read("o.wav").size(), 44U);
}

TEST_F(Command, TargetsSoundAsTheFramesBetweenThem) {
    folder_.Write("targets.csv", "time,item,value\n0,AV,700\n0,F0,100\n0.04,F0,180\n");
    folder_.Write("t.csv", "AV,F0,FrameLen\n700,100,100\n,120,\n,140,\n,160,\n");
    EXPECT_EQ(Run("larynth render targets.csv --input targets --sample-freq 1e4 --frame-len 100 -o -").out,
              Raw("--sample-freq 1e4"));
}

TEST_F(Command, SaysWhatWasMadeAndHowFarItIs) {
    EXPECT_EQ(Run("larynth render t.csv -o o.wav --sample-freq 10000.5").err,
              "larynth: the file says 10001 Hz for a sample frequency of 10000.5 Hz\n");
    EXPECT_THAT(Run("larynth render t.csv -o o.wav --sample-freq 1000 --verbose").err,
                MatchesRegex("o.wav: 0.50 s of sound at 1000 Hz, made in [0-9.]+ s, [0-9]+ times faster "
                             "than real time\n"));
    const CommandResult onTerminal =
        Run("{ echo FrameLen; seq 200 | sed 's/.*/10/'; } >long.csv; "
            "script -qec 'larynth render long.csv -o o.wav' /dev/null </dev/null");
    for (const char* said : {" 32 %", " 64 %", "100 %", "faster than real time"})
        EXPECT_THAT(onTerminal.out, HasSubstr(said));
    EXPECT_EQ(folder_.Read("o.wav").size(), 44U + 2 * 200 * 10);
    for (const char* line : {"larynth --help", "larynth render --help", "larynth --version"})
        EXPECT_NE(Run(line).out, "") << line;
}

TEST_F(Command, ManyInputsBecomeSoundsInAFolderAsEachAlone) {
    folder_.Write("bad.csv", "Av\n");
    folder_.Write("u.csv", "AV,AH,FrameLen,Marker\n0,500,700,noise\n");
    const std::string all = "larynth render t.csv u.csv -o out/ --format raw --labels labels --seed 5";
    EXPECT_THAT(Run(all + " --jobs 1").err, StartsWith("larynth: out/: 2 made, 0 skipped, 0 failed"));
    Run("larynth render u.csv -o alone.raw --labels alone.txt --seed 5");
    EXPECT_EQ(folder_.Read("out/u.raw"), folder_.Read("alone.raw"));
    EXPECT_EQ(folder_.Read("labels/u.txt"), folder_.Read("alone.txt"));

    Run("echo old >out/u.raw && touch -d '1 hour' t.csv && rm labels/u.txt");
    EXPECT_THAT(Run(all + " bad.csv", 2).err,
                MatchesRegex("larynth: bad.csv:1:1: .*\nlarynth: out/: 2 made, 0 skipped, 1 failed.*\n"));
    EXPECT_EQ(folder_.Read("out/u.raw"), folder_.Read("alone.raw"));
    Run("echo old >out/u.raw && touch out/gone.raw labels/gone.txt");
    EXPECT_THAT(Run(all + " gone.csv", 2).err, HasSubstr("1 made, 1 skipped, 1 failed"));
    EXPECT_EQ(folder_.Read("out/u.raw"), "old\n");
    EXPECT_THAT(Run(all + " --force").err, HasSubstr("2 made, 0 skipped"));
    EXPECT_EQ(folder_.Read("out/u.raw"), folder_.Read("alone.raw"));
    EXPECT_THAT(
        Run("mkdir out/t.wav; ln -s loop.csv loop.csv; larynth render t.csv u.csv loop.csv -o out", 1).err,
        HasSubstr("out: 1 made, 0 skipped, 2 failed"));
    EXPECT_THAT(Run("mkfifo p.csv; larynth render t.csv p.csv -o n", 2).err,
                HasSubstr("p.csv: expected a regular file"));
    Run("echo '{}' >v.json; larynth render t.csv -o v/ --voice v.json; sleep 0.02; touch v.json");
    EXPECT_THAT(Run("larynth render t.csv -o v/ --voice v.json").err, HasSubstr("1 made"));
}

TEST_F(Command, SaysAfterWhichFrameTheSoundIsNotFinite) {
    const std::string table = "F1,BW1,G1,AV,FrameLen\n500,60,1,700,100\n#\n,,,,\n,,1e308,1e308,\n,,1,700,\n";
    for (const char* tract : {"resonator", "filter"}) {
        folder_.Write("loud.csv", table);
        const std::string line = "larynth render loud.csv -o o.raw --tract " + std::string(tract);
        EXPECT_EQ(Run(line).err, "larynth: loud.csv:5: the sound is not finite at the end of this frame\n");
    }
    EXPECT_EQ(folder_.Read("o.raw").size(), 2U * 400);
    EXPECT_THAT(Run("larynth render t.csv -o o.raw --output-gain 1e200 --volume 1e200").err,
                HasSubstr("t.csv:2: "));
    folder_.Write("p", std::string(82, '\x7F'));
    EXPECT_EQ(Run("larynth render p --input packets -o o.raw").err, "");
}

TEST_F(Command, ItemsListsTheVocabularyWithUnitsAndMeanings) {
    const std::string text = Run("larynth items").out;
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 53);
    EXPECT_THAT(text, testing::Not(HasSubstr("?"))) << "an item without a meaning";
    for (const char* row : {"\n0 +0 +F0 +Hz +100 +fundamental", "\n7 +7 +AH +factor +30 ",
                            "\n13 +1027 +F1 +Hz +0 +frequency of a cascade formant\n",
                            "\n51 +3092 +PG6 +factor +0 +gain of a parallel resonator\n"})
        EXPECT_THAT(text, testing::ContainsRegex(row));
    EXPECT_THAT(Run("larynth items --format csv").out,
                HasSubstr("\n4,4,DI,factor,0,\"diplophonia, 0 (none) to 1\"\n"));
    EXPECT_THAT(
        Run("larynth items --format json").out,
        HasSubstr(",\n {\"index\": 13, \"ID\": 1027, \"name\": \"F1\", \"unit\": \"Hz\", \"initial\": 0, "
                  "\"meaning\": \"frequency of a cascade formant\"},\n"));
}

TEST_F(Command, TheExamplesRender) {
    for (const std::string nameBytesAndWord :
         {"word_married 12128 married", "sentence_female 73600 day", "sentence_male 88960 meters"}) {
        Run("set -- " + nameBytesAndWord +
            "; larynth render '" LARYNTH_EXAMPLES_DIR
            "'/$1.csv -o o.raw "
            "--labels l && test $(stat -c %s o.raw) = $2 && grep -q $3 l");
    }
    Run("larynth render '" LARYNTH_EXAMPLES_DIR "/utterances/'*.csv --input targets --format raw -o o/");
    for (const auto& sound : std::filesystem::directory_iterator(folder_.Path("o"))) {
        const std::string bytes = ContentOf(sound.path());
        std::vector<std::int16_t> samples(bytes.size() / 2);
        std::memcpy(samples.data(), bytes.data(), bytes.size());
        // Heard, and with room below 32768, where samples wrap.
        EXPECT_THAT(std::ranges::max(samples), testing::AllOf(testing::Gt(3000), testing::Lt(29000)))
            << sound;
    }
}

TEST_F(Command, ModulesAreRegisteredListedAndUnregistered) {
    EXPECT_THAT(Run("larynth classes").out,
                StartsWith("source  class                                   ProgID  "));
    EXPECT_EQ(
        CountClasses("loaded  {7856881E-0461-4F9D-8693-3030B63798FA}  Larynth.Larynth.1 \\+Larynth Class "
                     "\\+both \\+" +
                     std::string(kLarynth) + "$"),
        1);
    EXPECT_EQ(CountClasses("loaded"), 16);
    EXPECT_THAT(folder_.Names(), ElementsAre("t.csv")) << "looking creates no store";
    for (const std::string un : {"", "un"}) {
        const std::string done = un + "registered ";
        EXPECT_EQ(Run("larynth " + un + "register").out, done + kLarynth + "\n" + done + kCompanion + "\n");
        EXPECT_EQ(CountClasses("store"), un.empty() ? 16 : 0);
    }

    std::filesystem::copy_file(kCompanion, folder_.Path("other.so"));
    EXPECT_EQ(Run("larynth register ./other.so").out, "registered ./other.so\n");
    EXPECT_EQ(CountClasses("store .*TTSVoice Class .* both  .*/other.so$"), 1);
    EXPECT_THAT(Run("ulimit -f 1; larynth register", 1).err,
                HasSubstr("; a full disk, a limit on the size of files, or"));
    EXPECT_EQ(CountClasses("store .*/other.so$"), 4) << "a full disk leaves the store what it had";
    EXPECT_EQ(CountClasses("store"), 4);
    const int held = open(folder_.Path("store.db").c_str(), O_RDWR);
    struct flock lock {
        F_WRLCK, SEEK_SET, 0x40000000, 512, 0
    };  // where SQLite's locks are
    ASSERT_EQ(fcntl(held, F_SETLK, &lock), 0);
    EXPECT_THAT(Run("timeout 2 larynth register", 124).err, HasSubstr(": waits up to a minute"));
    close(held);
    Run("larynth unregister && larynth unregister other.so");
    EXPECT_EQ(CountClasses("store"), 0);

    folder_.Write("store.db", "a letter to a friend");
    for (const std::string deed : {"register", "unregister", "classes"}) {
        EXPECT_THAT(Run("larynth " + deed, 1).err, HasSubstr("store.db: is no registration store")) << deed;
        EXPECT_EQ(folder_.Read("store.db"), "a letter to a friend");
    }
}

TEST_F(Command, EachHelpHasExamplesThatWork) {
    folder_.Write("table.csv", kTable);
    folder_.Write("book.txt", "Hello.");
    // But for the one that plays, and the one that draws, for which Python's tests care.
    Run("for command in '' $(larynth --help | sed -n '/^Subc/,/^$/s/^  \\([a-z]*\\) .*/\\1/p'); do "
        "larynth $command --help >help; grep -q '^Left out' help || test \"$command\" = plot && continue; "
        "sed -n 's/^  larynth/larynth/p' help | grep -v 'world.\"$' >run; "
        "test -s run && bash -e run >out || { echo $command >&2; exit 1; }; done");
}

TEST_F(Command, BashCompletesWhatTheCommandHas) {
    const std::pair<std::string, std::string> rows[] = {
        {"re", "render register"},
        {"render --s", "--sample-freq --seed --source"},
        {"render --verbose t", "t.csv"},
        {"render --tract ''", "resonator filter"},
        {"plot --input ''", "table targets"},
        {"render --source ''", "standard wave:"},
        {"render t.csv -o t", "t.csv"},
        {"render --seed ''", ""},
        {"items t", ""},
        {"items -", "-h --help --format"},
        {"completion z", "zsh"},
    };
    for (const auto& [words, replies] : rows) {
        folder_.Write("ask",
                      "source <(larynth completion bash)\nCOMP_WORDS=(larynth " + words +
                          ")\nCOMP_CWORD=$((${#COMP_WORDS[@]} - 1))\n_larynth\necho \"${COMPREPLY[*]}\"");
        EXPECT_EQ(Run("bash ask").out, replies + '\n') << words;
    }
}

}  // namespace
}  // namespace larynth::test
