// SPDX-License-Identifier: MIT
#include "tests/host/CommandFolder.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <sys/wait.h>

namespace larynth::test {
namespace {

std::filesystem::path NewFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "larynth-test-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary folder");
    return pattern;
}

}  // namespace

CommandFolder::CommandFolder() : folder_(NewFolder()), streams_(NewFolder()) {}

CommandFolder::~CommandFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
    std::filesystem::remove_all(streams_, ignored);
}

CommandResult CommandFolder::Run(const std::string& line) const {
    const auto out = streams_ / "out";
    const auto err = streams_ / "err";
    std::ostringstream script;
    script << "cd " << folder_ << " && PATH='" LARYNTH_COMMAND_DIR "':\"$PATH\" && { " << line << "\n} >"
           << out << " 2>" << err;
    const int status = std::system(script.str().c_str());
    const int code = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    return {code, FileContent(out), FileContent(err)};
}

void CommandFolder::Write(const std::string& name, const std::string& content) const {
    std::ofstream(Path(name), std::ios::binary) << content;
}

std::string CommandFolder::Read(const std::string& name) const { return FileContent(Path(name)); }

std::vector<std::string> CommandFolder::Names() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder_)) {
        names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::string FileContent(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<int> SamplesOf(const std::string& bytes) {
    std::vector<int> samples;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const int low = static_cast<unsigned char>(bytes[i]);
        const int high = static_cast<signed char>(bytes[i + 1]);
        samples.push_back(high * 256 + low);
    }
    return samples;
}

}  // namespace larynth::test
