#include "Fuzz.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <vector>

// Runs a target without libFuzzer: on the files of its corpus, then on inputs of pseudo-random bytes and on files of
// the corpus with some bytes replaced, the same ones each time.
// usage: fuzz_<target> CORPUS RUNS
int main(int, char **arguments)
{
    std::vector<std::vector<std::uint8_t>> corpus;
    for (const auto &file : std::filesystem::directory_iterator(arguments[1])) {
        std::ifstream stream(file.path(), std::ios::binary);
        corpus.emplace_back(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
        LLVMFuzzerTestOneInput(corpus.back().data(), corpus.back().size());
    }
    std::sort(corpus.begin(), corpus.end()); // a folder has no order of its own
    std::mt19937 random;
    for (int runs = std::atoi(arguments[2]); runs > 0; --runs) {
        auto input = corpus[random() % corpus.size()];
        auto replaced = random() % 4 + 1;
        if (runs % 4 > 0) {
            replaced = random() % (2U << random() % 9);
            input.resize(replaced);
        }
        for (; replaced > 0 && !input.empty(); --replaced) {
            input[random() % input.size()] = static_cast<std::uint8_t>(random());
        }
        LLVMFuzzerTestOneInput(input.data(), input.size());
    }
}
