#include "Fuzz.h"

#include <random>
#include <vector>

// Runs a fuzz target without libFuzzer, on generated inputs that are the same in every run.
// usage: fuzz_<target> RUNS
int main(int, char **arguments)
{
    std::mt19937 random;
    for (int runs = std::atoi(arguments[1]); runs > 0; --runs) {
        std::vector<std::uint8_t> input(random() % (2U << random() % 9)); // short ones are frequent
        for (std::uint8_t &byte : input) {
            byte = static_cast<std::uint8_t>(random());
        }
        LLVMFuzzerTestOneInput(input.data(), input.size());
    }
}
