// What a fuzzer demands of any input, of some thousand that are the same each time: files that were cut, doubled and
// mixed.
#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <random>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace corvane::test {

inline std::string Mutated(const std::vector<std::string>& files, std::mt19937& random) {
    const auto below = [&](std::size_t end) { return random() % (end + 1); };
    std::string file = files[below(files.size() - 1)];
    for (std::size_t mutations = below(3) + 1; mutations > 0; --mutations) {
        const std::string& other = files[below(files.size() - 1)];
        const std::string piece = other.substr(below(other.size()), below(40));
        file.replace(below(file.size()), below(1) * below(40), piece); // put between, or in place of others
    }
    return file;
}

// The folders are below that of the sources.
inline void TryMutated(std::initializer_list<const char*> folders, int count) {
    std::vector<std::string> files;
    for (const char* folder : folders)
        for (const auto& entry : std::filesystem::directory_iterator(std::string(CORVANE_SOURCE "/") + folder)) {
            if (!entry.is_regular_file())
                continue;
            std::ifstream file(entry.path());
            files.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
        }
    ASSERT_GT(files.size(), 10U);
    std::mt19937 random(17);
    for (int i = 0; i < count; ++i) {
        const std::string file = Mutated(files, random);
        ASSERT_EQ(LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(file.data()), file.size()), 0);
    }
}

} // namespace corvane::test
