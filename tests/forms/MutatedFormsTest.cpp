// Forms that were cut, doubled and mixed: what the fuzzer of forms demands holds for all of them.
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <random>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

std::string Mutated(const std::vector<std::string>& forms, std::mt19937& random) {
    const auto below = [&](std::size_t end) { return random() % (end + 1); };
    std::string form = forms[below(forms.size() - 1)];
    for (std::size_t mutations = below(3) + 1; mutations > 0; --mutations) {
        const std::string& other = forms[below(forms.size() - 1)];
        const std::string piece = other.substr(below(other.size()), below(40));
        form.replace(below(form.size()), below(1) * below(40), piece); // put between, or in place of others
    }
    return form;
}

TEST(FormReader, HoldsForMutatedForms) {
    std::vector<std::string> forms;
    for (const char* folder : {"tests/fuzz/corpus/forms", "samples/studies/app/Forms", "tests/forms/birds/Forms"})
        for (const auto& entry : std::filesystem::directory_iterator(std::string(CORVANE_SOURCE "/") + folder)) {
            std::ifstream file(entry.path());
            forms.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
        }
    ASSERT_GT(forms.size(), 10U);
    std::mt19937 random(17);
    for (int i = 0; i < 20000; ++i) {
        const std::string form = Mutated(forms, random);
        ASSERT_EQ(LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(form.data()), form.size()), 0);
    }
}

} // namespace
