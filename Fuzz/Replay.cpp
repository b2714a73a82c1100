// SPDX-License-Identifier: Apache-2.0
// Runs a fuzz target on the files of a folder, without libFuzzer.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

// libFuzzer's entry point.
// NOLINTNEXTLINE(readability-identifier-naming)
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int argc, char** argv) {
    int files = 0;
    for (int i = 1; i < argc; ++i) {
        for (const auto& entry : std::filesystem::directory_iterator{argv[i]}) {
            std::ifstream file{entry.path(), std::ios::binary};
            const std::string text{std::istreambuf_iterator<char>{file}, {}};
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
            ++files;
        }
    }
    std::printf("%d inputs replayed\n", files);
    return files > 0 ? 0 : 1;
}
