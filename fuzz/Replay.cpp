// SPDX-License-Identifier: MIT
// Gives the files of a corpus to the fuzzer that this is linked with: each as it is, then cut off and with a
// wrong byte at some places. A finding ends the process.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int, char** argv) {
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(argv[1])) {
        std::ifstream file(entry.path(), std::ios::binary);
        std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
        std::printf("%s\n", entry.path().c_str());
        std::fflush(stdout);  // the last line names what it dies of
        const auto* const data = reinterpret_cast<const std::uint8_t*>(bytes.data());
        LLVMFuzzerTestOneInput(data, bytes.size());
        for (std::size_t at = 0; at < bytes.size(); at += std::max<std::size_t>(bytes.size() / 100, 1)) {
            LLVMFuzzerTestOneInput(std::vector<std::uint8_t>(data, data + at).data(),
                                   at);  // ends where it ends
            bytes[at] = static_cast<char>(~bytes[at]);
            LLVMFuzzerTestOneInput(data, bytes.size());
            bytes[at] = static_cast<char>(~bytes[at]);
        }
        ++count;
    }
    return count > 0 ? 0 : 1;
}
